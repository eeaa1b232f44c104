// Converts every single unit and 40,000 random texts of each code page with the library's strings,
// in both directions, and prints a digest of each batch. Builds for different systems must print
// the same.
//
//   CodePageDigest              the digests of all pages
//   CodePageDigest --full PAGE  the texts of one page, to find a difference

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IString.h"

namespace {

constexpr std::uint32_t kUtf8 = 65001;
// 0 and 1 are the ANSI and the OEM page.
constexpr std::uint32_t kPages[] = {437,   850,   852,   866,   874,   932,   936,   949,   950,
                                    1250,  1251,  1252,  1253,  1254,  1255,  1256,  1257,  1258,
                                    20866, 28591, 28592, 28593, 28594, 28595, 28596, 28597, 28598,
                                    28599, 28603, 28605, kUtf8, 0,     1};
constexpr std::uint32_t kUnknownPages[] = {12345, 28600};
constexpr int kBatches = 40;
constexpr int kTextsPerBatch = 1000;
constexpr unsigned kLongestText = 80;

std::u16string ToWide(std::uint32_t page, const std::string& bytes) {
  Core::Ptr<Data::Interfaces::IString> text;
  Data_CreateString(text.Receive());
  text->SetMultiByte(bytes.data(), bytes.size(), page);
  const char16_t* units = text->GetWide();
  return std::u16string(units, text->GetLength());
}

std::string ToBytes(std::uint32_t page, const std::u16string& units) {
  Core::Ptr<Data::Interfaces::IString> text;
  Data_CreateString(text.Receive());
  text->SetWide(units.data(), units.size());
  const char* bytes = text->GetMultiByte(page);
  return std::string(bytes, text->GetLength());
}

class Random {
 public:
  explicit Random(std::uint32_t seed) : engine_(seed) {}
  /// From 0 to `limit` - 1.
  unsigned Below(unsigned limit) { return static_cast<unsigned>(engine_() % limit); }
  unsigned Between(unsigned first, unsigned last) { return first + Below(last - first + 1); }

 private:
  std::mt19937_64 engine_;
};

/// Invalid double bytes and undefined bytes as often as valid text.
std::string RandomBytes(Random& random) {
  std::string text;
  const auto append = [&text](unsigned byte) { text += static_cast<char>(byte); };
  const unsigned kind = random.Below(3);
  for (unsigned left = random.Below(kLongestText); left > 0; --left) {
    if (kind == 0) {
      append(random.Between(1, 0xFF));
    } else if (kind == 1) {
      append(random.Below(30) ? random.Between(1, 0x7F) : random.Between(0x80, 0xFF));
    } else {
      append(random.Between(0x81, 0xFE));
      append(random.Below(20) ? random.Between(0x40, 0xFE) : random.Below(0x100));
    }
  }
  return text;
}

/// Any units, runs of ASCII long enough for any fast path, surrogate pairs and lone surrogates.
std::u16string RandomUnits(Random& random) {
  std::u16string text;
  const auto append = [&text](unsigned unit) { text += static_cast<char16_t>(unit); };
  const unsigned kind = random.Below(3);
  for (unsigned left = random.Below(kLongestText); left > 0; --left) {
    if (kind == 0) {
      append(random.Between(1, 0xFFFF));
    } else if (kind == 1) {
      append(random.Below(30) ? random.Between(1, 0x7F) : random.Between(0x80, 0xFFFF));
    } else {
      append(random.Between(0xD800, 0xDBFF));
      append(random.Below(5) ? random.Between(0xDC00, 0xDFFF) : random.Between(0xD700, 0xE0FF));
    }
  }
  return text;
}

/// UTF-8 is well-formed: Windows versions differ in what they make of other bytes.
std::string RandomTextOf(std::uint32_t page, Random& random) {
  return page == kUtf8 ? ToBytes(kUtf8, RandomUnits(random)) : RandomBytes(random);
}

/// The conversions of one page in one direction, digested (FNV-1a).
class Batch {
 public:
  Batch(std::uint32_t page, const char* name, bool full) : page_(page), name_(name), full_(full) {}

  void AddBytes(const std::string& bytes) {
    Add(bytes.data(), bytes.size(), sizeof bytes[0]);
    const auto wide = ToWide(page_, bytes);
    Add(wide.data(), wide.size(), sizeof wide[0]);
    if (full_) std::putchar('\n');
  }
  void AddUnits(const std::u16string& units) {
    Add(units.data(), units.size(), sizeof units[0]);
    const auto bytes = ToBytes(page_, units);
    Add(bytes.data(), bytes.size(), sizeof bytes[0]);
    if (full_) std::putchar('\n');
  }
  void Print() const {
    std::printf("%5u %s %016llx\n", static_cast<unsigned>(page_), name_,
                static_cast<unsigned long long>(digest_));
  }

 private:
  void Add(const void* text, std::size_t count, std::size_t unitSize) {
    Digest(&count, sizeof count);
    Digest(text, count * unitSize);
    if (full_) PrintUnits(static_cast<const unsigned char*>(text), count, unitSize);
  }
  void Digest(const void* data, std::size_t size) {
    const auto* bytes = static_cast<const unsigned char*>(data);
    for (std::size_t i = 0; i < size; ++i) digest_ = (digest_ ^ bytes[i]) * 0x100000001B3;
  }
  static void PrintUnits(const unsigned char* text, std::size_t count, std::size_t unitSize) {
    std::printf(" |");
    for (std::size_t i = 0; i < count; ++i) {
      std::putchar(' ');
      for (std::size_t byte = unitSize; byte > 0; --byte)
        std::printf("%02x", text[i * unitSize + byte - 1]);
    }
  }

  std::uint32_t page_;
  const char* name_;
  bool full_;
  std::uint64_t digest_ = 0xCBF29CE484222325;
};

std::string Bytes(unsigned first) { return std::string(1, static_cast<char>(first)); }

void PrintSingles(std::uint32_t page, bool full) {
  Batch bytes(page, "bytes, singles", full), units(page, "units, singles", full);
  const unsigned last = page == kUtf8 ? 0x7F : 0xFF;
  for (unsigned byte = 1; byte <= last; ++byte) bytes.AddBytes(Bytes(byte));
  for (unsigned unit = 1; unit <= 0xFFFF; ++unit)
    units.AddUnits(std::u16string(1, static_cast<char16_t>(unit)));
  bytes.Print();
  units.Print();
}

/// Every pair of bytes; for UTF-8 every character beyond the first plane.
void PrintPairs(std::uint32_t page, bool full) {
  Batch batch(page, "bytes, pairs", full);
  const bool isUtf8 = page == kUtf8;
  for (unsigned first = isUtf8 ? 0xD800 : 1; first <= (isUtf8 ? 0xDBFF : 0xFF); ++first)
    for (unsigned second = isUtf8 ? 0xDC00 : 1; second <= (isUtf8 ? 0xDFFF : 0xFF); ++second)
      batch.AddBytes(
          isUtf8 ? ToBytes(kUtf8, {static_cast<char16_t>(first), static_cast<char16_t>(second)})
                 : Bytes(first) + Bytes(second));
  batch.Print();
}

void PrintRandomTexts(std::uint32_t page, bool full) {
  Random random(page);
  for (int i = 0; i < kBatches; ++i) {
    Batch bytes(page, "bytes, random", full), units(page, "units, random", full);
    for (int text = 0; text < kTextsPerBatch; ++text) {
      bytes.AddBytes(RandomTextOf(page, random));
      units.AddUnits(text % 4 == 0 ? ToWide(page, RandomTextOf(page, random))
                                   : RandomUnits(random));
    }
    bytes.Print();
    units.Print();
  }
}

/// Nothing is converted, so a few texts suffice.
void PrintUnknownPage(std::uint32_t page) {
  Random random(page);
  Batch batch(page, "unknown", false);
  for (int text = 0; text < 20; ++text) {
    batch.AddBytes(RandomBytes(random));
    batch.AddUnits(RandomUnits(random));
  }
  batch.Print();
}

void PrintPage(std::uint32_t page, bool full) {
  PrintSingles(page, full);
  PrintPairs(page, full);
  PrintRandomTexts(page, full);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::strcmp(argv[1], "--full") == 0) {
    PrintPage(static_cast<std::uint32_t>(std::stoul(argv[2])), true);
    return 0;
  }
  for (const auto page : kPages) PrintPage(page, false);
  for (const auto page : kUnknownPages) PrintUnknownPage(page);
}
