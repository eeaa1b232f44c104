// Converts every unit and many random texts of each code page with the library's strings, in both
// directions, and prints digests. Builds for different systems must print the same.
//
//   CodePageDigest              the digests of all pages
//   CodePageDigest --full PAGE  the texts of one page, to find a difference

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>

#include "Conversions.h"

using namespace Data::tests;

namespace {

// 0 and 1 are the ANSI and the OEM page.
constexpr std::uint32_t kPages[] = {437,   850,   852,   866,   874,   932,   936,   949,   950,
                                    1250,  1251,  1252,  1253,  1254,  1255,  1256,  1257,  1258,
                                    20866, 28591, 28592, 28593, 28594, 28595, 28596, 28597, 28598,
                                    28599, 28603, 28605, kUtf8, 0,     1};
constexpr std::uint32_t kUnknownPages[] = {12345, 28600};
constexpr int kRandomTexts = 40'000;
// Each conversion makes the system search for the page.
constexpr int kTextsOfUnknownPage = 500;
constexpr unsigned kLongestText = 80;

class Random {
 public:
  explicit Random(std::uint32_t seed) : engine_(seed) {}
  /// From 0 to `limit` - 1.
  unsigned Below(unsigned limit) { return static_cast<unsigned>(engine_() % limit); }
  unsigned Between(unsigned first, unsigned last) { return first + Below(last - first + 1); }

 private:
  std::mt19937_64 engine_;
};

/// What random texts consist of: units up to the last, and pairs with a second unit that is mostly
/// valid.
struct Units {
  unsigned last, firstLead, lastLead, firstTrail, lastTrail, firstWild, lastWild;
};
constexpr Units kBytes = {0xFF, 0x81, 0xFE, 0x40, 0xFE, 0, 0xFF};
constexpr Units kWideUnits = {0xFFFF, 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xD700, 0xE0FF};

/// Any units, or runs of ASCII long enough for any fast path, or pairs and halves of pairs.
template <class Text>
Text RandomText(const Units& units, Random& random) {
  Text text;
  const auto append = [&](unsigned first, unsigned last) {
    text += static_cast<typename Text::value_type>(random.Between(first, last));
  };
  const unsigned kind = random.Below(3);
  for (unsigned left = random.Below(kLongestText); left > 0; --left) {
    if (kind < 2) {
      const bool isAscii = kind == 1 && random.Below(30) != 0;
      append(1, isAscii ? 0x7F : units.last);
    } else {
      append(units.firstLead, units.lastLead);
      if (random.Below(10) != 0)
        append(units.firstTrail, units.lastTrail);
      else
        append(units.firstWild, units.lastWild);
    }
  }
  return text;
}

std::u16string RandomUnits(Random& random) {
  return RandomText<std::u16string>(kWideUnits, random);
}

/// UTF-8 is well-formed: Windows versions differ in what they make of other bytes.
std::string RandomTextOf(std::uint32_t page, Random& random) {
  return page == kUtf8 ? ToBytes(kUtf8, RandomUnits(random))
                       : RandomText<std::string>(kBytes, random);
}

/// The conversions of one page in one direction; prints their digest (FNV-1a) at the end.
class Digest {
 public:
  Digest(std::uint32_t page, const char* name, bool full) : page_(page), name_(name), full_(full) {}
  Digest(const Digest&) = delete;
  ~Digest() {
    std::printf("%5u %s %016llx\n", unsigned{page_}, name_, static_cast<unsigned long long>(sum_));
  }

  void Add(const std::string& bytes) { AddBoth(bytes, ToWide(page_, bytes)); }
  void Add(const std::u16string& units) { AddBoth(units, ToBytes(page_, units)); }

 private:
  template <class Text, class Converted>
  void AddBoth(const Text& text, const Converted& converted) {
    AddText(text);
    AddText(converted);
    if (full_) std::putchar('\n');
  }
  template <class Text>
  void AddText(const Text& text) {
    AddNumber(text.size());
    if (full_) std::printf(" |");
    for (const auto unit : text) {
      const auto number = static_cast<std::make_unsigned_t<typename Text::value_type>>(unit);
      AddNumber(number);
      if (full_) std::printf(" %0*x", static_cast<int>(2 * sizeof unit), unsigned{number});
    }
  }
  void AddNumber(std::uint64_t number) { sum_ = (sum_ ^ number) * 0x100000001B3; }

  std::uint32_t page_;
  const char* name_;
  bool full_;
  std::uint64_t sum_ = 0xCBF29CE484222325;
};

/// Every byte and every pair of bytes; of UTF-8 ASCII and every character beyond the first plane.
void AddAllBytes(std::uint32_t page, Digest& bytes) {
  const bool isUtf8 = page == kUtf8;
  for (unsigned byte = 1; byte <= (isUtf8 ? 0x7F : 0xFF); ++byte)
    bytes.Add(std::string(1, static_cast<char>(byte)));
  for (unsigned first = isUtf8 ? 0xD800 : 1; first <= (isUtf8 ? 0xDBFF : 0xFF); ++first)
    for (unsigned second = isUtf8 ? 0xDC00 : 1; second <= (isUtf8 ? 0xDFFF : 0xFF); ++second) {
      const auto unit = static_cast<char16_t>(first), next = static_cast<char16_t>(second);
      bytes.Add(isUtf8 ? ToBytes(kUtf8, std::u16string{unit, next})
                       : std::string{static_cast<char>(unit), static_cast<char>(next)});
    }
}

void PrintPage(std::uint32_t page, bool full) {
  Digest bytes(page, "bytes", full), units(page, "units", full);
  const bool isKnown = std::ranges::find(kUnknownPages, page) == std::end(kUnknownPages);
  if (isKnown) {
    AddAllBytes(page, bytes);
    for (unsigned unit = 1; unit <= 0xFFFF; ++unit)
      units.Add(std::u16string(1, static_cast<char16_t>(unit)));
  }
  Random random(page);
  for (int i = 0; i < (isKnown ? kRandomTexts : kTextsOfUnknownPage); ++i) {
    bytes.Add(RandomTextOf(page, random));
    units.Add(i % 4 == 0 ? ToWide(page, RandomTextOf(page, random)) : RandomUnits(random));
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::strcmp(argv[1], "--full") == 0) {
    PrintPage(static_cast<std::uint32_t>(std::stoul(argv[2])), true);
    return 0;
  }
  for (const auto page : kPages) PrintPage(page, false);
  for (const auto page : kUnknownPages) PrintPage(page, false);
}
