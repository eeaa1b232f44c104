// Asks the conversion functions of Windows for every byte, every pair of lead
// and trail byte and every UTF-16 unit of each page and writes the answers as
// constant tables. A Windows program; generate.sh builds and runs it.

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "Platform/CodePageTables.h"

namespace {

using Data::Platform::DoubleBytePage;
using Data::Platform::SingleBytePage;

constexpr unsigned kSingleBytePageIds[] = {437,   850,   852,   866,   874,   1250,  1251,
                                           1252,  1253,  1254,  1255,  1256,  1257,  1258,
                                           20866, 28591, 28592, 28593, 28594, 28595, 28596,
                                           28597, 28598, 28599, 28603, 28605};
constexpr unsigned kDoubleBytePageIds[] = {932, 936, 949, 950};
constexpr unsigned kUnits = 0x10000;

/// The tables can only hold what they were designed for; a page that behaves
/// otherwise must not pass for converted.
void Expect(bool holds, unsigned page, const char* what) {
  if (!holds) throw std::runtime_error("Page " + std::to_string(page) + ": " + what);
}

std::u16string ToWide(unsigned page, const std::string& bytes) {
  wchar_t out[16];
  const int count =
      MultiByteToWideChar(page, 0, bytes.data(), static_cast<int>(bytes.size()), out, 16);
  return std::u16string(out, out + count);
}

/// The one byte of a unit, or its lead byte times 256 plus its trail byte.
unsigned CodeOfUnit(unsigned page, unsigned unit) {
  const auto text = static_cast<wchar_t>(unit);
  unsigned char out[16];
  const int count =
      WideCharToMultiByte(page, 0, &text, 1, reinterpret_cast<char*>(out), 16, nullptr, nullptr);
  Expect(count == 1 || count == 2, page, "a unit becomes neither one byte nor two");
  Expect(count == 1 || out[0] != 0, page, "a lead byte is zero");
  return count == 1 ? out[0] : out[0] * 256u + out[1];
}

std::string Text(unsigned byte) { return std::string(1, static_cast<char>(byte)); }

std::string Text(unsigned lead, unsigned trail) { return Text(lead) + Text(trail); }

class TableFile {
 public:
  TableFile(const std::string& directory, const std::string& name)
      : out_(directory + "/CodePageTables" + name + ".cpp", std::ios::binary) {
    out_.exceptions(std::ios::failbit | std::ios::badbit);
    out_ << "// clang-format off\n"
            "// Made by Tools/CodePages/generate.sh from the answers of the Windows conversion\n"
            "// functions. Run that again instead of editing this.\n\n"
            "#include \"Platform/CodePageTables.h\"\n\nnamespace Data::Platform {\n";
  }
  ~TableFile() { out_ << "\n}  // namespace Data::Platform\n"; }

  template <class Values>
  void Array(const std::string& declaration, const Values& values) {
    out_ << '\n' << declaration << "[] = {";
    std::size_t count = 0;
    for (const auto value : values) {
      char text[16];
      std::snprintf(text, sizeof text, "0x%X,", static_cast<unsigned>(value));
      out_ << (count++ % 16 == 0 ? "\n" : "") << text;
    }
    out_ << "\n};\n";
  }

  void Line(const std::string& line) { out_ << line << '\n'; }

 private:
  std::ofstream out_;
};

/// A table cut into blocks of equal size, equal blocks stored once.
class Blocks {
 public:
  explicit Blocks(unsigned bits) : size_(std::size_t{1} << bits) {}

  /// @return the number of the block that each part of the table became
  std::vector<unsigned> Add(const std::vector<unsigned>& table) {
    std::vector<unsigned> numbers;
    for (auto part = table.begin(); part != table.end(); part += static_cast<long>(size_)) {
      const std::vector<unsigned> block(part, part + static_cast<long>(size_));
      const auto [known, isNew] = numbers_.try_emplace(block, numbers_.size());
      if (isNew) values_.insert(values_.end(), block.begin(), block.end());
      numbers.push_back(static_cast<unsigned>(known->second));
    }
    return numbers;
  }

  std::size_t Count() const { return numbers_.size(); }
  const std::vector<unsigned>& Values() const { return values_; }

 private:
  std::size_t size_;
  std::map<std::vector<unsigned>, std::size_t> numbers_;
  std::vector<unsigned> values_;
};

/// The unit of each byte; 0 for lead bytes.
std::vector<unsigned> UnitsOfBytes(unsigned page, const std::set<unsigned>& leads) {
  std::vector<unsigned> units;
  for (unsigned byte = 0; byte < 256; ++byte) {
    const auto wide = ToWide(page, Text(byte));
    Expect(wide.size() == 1, page, "a byte does not become one unit");
    Expect(byte >= 0x80 || wide[0] == byte, page, "ASCII reads otherwise");
    units.push_back(leads.contains(byte) ? 0 : wide[0]);
  }
  return units;
}

std::vector<unsigned> CodesOfUnits(unsigned page) {
  std::vector<unsigned> codes;
  for (unsigned unit = 0; unit < kUnits; ++unit) codes.push_back(CodeOfUnit(page, unit));
  for (unsigned unit = 0; unit < 0x80; ++unit)
    Expect(codes[unit] == unit, page, "ASCII is written otherwise");
  return codes;
}

void WriteSingleBytePages(const std::string& directory) {
  TableFile file(directory, "SingleByte");
  Blocks codes(SingleBytePage::kBlockBits);
  std::string pages;
  for (const unsigned page : kSingleBytePageIds) {
    const auto name = std::to_string(page);
    const auto table = CodesOfUnits(page);
    Expect(std::ranges::max(table) < 256, page, "a unit becomes two bytes");
    file.Array("constexpr char16_t kUnits" + name, UnitsOfBytes(page, {}));
    file.Array("constexpr std::uint8_t kBlocks" + name, codes.Add(table));
    Expect(codes.Count() <= 256, page, "more blocks than a byte can number");
    pages += "  {" + name + ", kUnits" + name + ", kBlocks" + name + "},\n";
  }
  file.Array("const std::uint8_t kSingleByteCodes", codes.Values());
  file.Line("\nconstexpr SingleBytePage kPages[] = {\n" + pages + "};\n");
  file.Line("const std::span<const SingleBytePage> kSingleBytePages{kPages};");
}

std::set<unsigned> LeadBytes(unsigned page) {
  std::set<unsigned> leads;
  for (unsigned byte = 0x80; byte < 256; ++byte)
    if (IsDBCSLeadByteEx(page, static_cast<BYTE>(byte))) leads.insert(byte);
  return leads;
}

/// The units of a lead byte's pairs, for the trail bytes that the tables hold.
void AppendPairs(unsigned page, unsigned lead, unsigned broken, std::vector<unsigned>& pairs) {
  for (unsigned trail = 0; trail < 256; ++trail) {
    const auto wide = ToWide(page, Text(lead, trail));
    const bool isHeld = trail - DoubleBytePage::kFirstTrail < DoubleBytePage::kTrailCount;
    Expect(wide.size() == (trail == 0 ? 2 : 1), page, "a lead byte takes a zero or no trail byte");
    Expect(isHeld || wide[0] == broken, page, "a trail byte outside the tables has a meaning");
    if (isHeld) pairs.push_back(wide[0]);
  }
}

void WriteDoubleBytePage(const std::string& directory, unsigned page) {
  const auto leads = LeadBytes(page);
  const unsigned broken = ToWide(page, Text(*leads.begin())).at(0);
  std::vector<unsigned> rows(256), pairs;
  for (const unsigned lead : leads) {
    Expect(ToWide(page, Text(lead)) == std::u16string(1, static_cast<char16_t>(broken)), page,
           "lead bytes alone differ");
    AppendPairs(page, lead, broken, pairs);
    rows[lead] = static_cast<unsigned>(pairs.size() / DoubleBytePage::kTrailCount);
  }
  Blocks codes(DoubleBytePage::kBlockBits);
  const auto blocks = codes.Add(CodesOfUnits(page));
  const auto name = std::to_string(page);
  TableFile file(directory, name);
  file.Array("constexpr char16_t kUnits", UnitsOfBytes(page, leads));
  file.Array("constexpr std::uint8_t kRows", rows);
  file.Array("constexpr char16_t kPairs", pairs);
  file.Array("constexpr std::uint16_t kBlocks", blocks);
  file.Array("constexpr std::uint16_t kCodes", codes.Values());
  file.Line("\nconst DoubleBytePage kPage" + name + " = {" + name + ", kUnits, kRows, kPairs, " +
            std::to_string(broken) + ", kBlocks, kCodes};");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "Usage: GenerateTables <directory>\n";
    return 2;
  }
  try {
    WriteSingleBytePages(argv[1]);
    for (const unsigned page : kDoubleBytePageIds) WriteDoubleBytePage(argv[1], page);
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
