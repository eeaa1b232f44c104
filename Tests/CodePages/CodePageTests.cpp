#include "CodePages/Conversions.h"
#include "Prelude.h"

namespace Data::tests {

namespace {

std::u16string Wide(std::string_view text) { return ToWide(kUtf8, text); }

std::uint32_t PageOf(const Case& c) { return static_cast<std::uint32_t>(std::stoul(c.fields[0])); }

}  // namespace

TEST(CodePages, ConvertAsWindowsDoes) {
  for (const Case& c : Cases("CodePages.txt", "both ways")) {
    EXPECT_EQ(ToWide(PageOf(c), c[1]), Wide(c[2])) << c.where;
    EXPECT_EQ(ToBytes(PageOf(c), Wide(c[2])), c[1]) << c.where;
  }
  for (const Case& c : Cases("CodePages.txt", "reading"))
    EXPECT_EQ(ToWide(PageOf(c), c[1]), Wide(c[2])) << c.where;
  for (const Case& c : Cases("CodePages.txt", "writing"))
    EXPECT_EQ(ToBytes(PageOf(c), Wide(c[1])), c[2]) << c.where;
  EXPECT_EQ(ToBytes(kUtf8, std::u16string(1, char16_t{0xDC00}) + u"z"), "\xEF\xBF\xBDz");
  EXPECT_EQ(Wide("aĀů\u8000\uFFFD\U00010000\U000728D7\U0010FFFF"),
            u"aĀů\u8000\uFFFD\U00010000\U000728D7\U0010FFFF");
}

// ASCII is converted in blocks, which must not change what is around it.
TEST(CodePages, ConvertEveryPositionAlike) {
  for (const Case& c : Cases("CodePages.txt", "both ways"))
    for (std::size_t before = 0; before < 50; ++before) {
      const auto between = [&](auto text, auto tilde) {
        return decltype(text)(before, tilde) + text + decltype(text)(50 - before, tilde);
      };
      const auto bytes = between(c.fields[1], '~');
      const auto wide = between(Wide(c[2]), u'~');
      EXPECT_EQ(ToWide(PageOf(c), bytes), wide) << c.where << " after " << before;
      EXPECT_EQ(ToBytes(PageOf(c), wide), bytes) << c.where << " after " << before;
    }
}

// Windows converts long texts in chunks, which must not split a character.
TEST(CodePages, ConvertTextsTooLongForOneCall) {
  for (const auto& [page, character] : {std::pair{932u, "\x93\xFA"}, {kUtf8, "\xF0\x9F\x98\x80"}}) {
    std::string bytes = "~";
    std::u16string wide = u"~";
    const std::u16string wideCharacter = ToWide(page, character);
    for (int i = 0; i < 9'000'000; ++i) {
      bytes += character;
      wide += wideCharacter;
    }
    EXPECT_TRUE(ToWide(page, bytes) == wide) << page;
    EXPECT_TRUE(ToBytes(page, wide) == bytes) << page;
  }
}

}  // namespace Data::tests
