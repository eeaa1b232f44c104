#include "Prelude.h"

namespace Data::tests {

namespace {

constexpr std::uint32_t kUtf8 = 65001;

std::u16string ToWide(std::uint32_t page, std::string_view bytes) {
  const auto text = New(Data_CreateString);
  text->SetMultiByte(bytes.data(), bytes.size(), page);
  const char16_t* units = text->GetWide();
  return {units, text->GetLength()};
}

std::string ToBytes(std::uint32_t page, std::u16string_view units) {
  const auto text = New(Data_CreateString);
  text->SetWide(units.data(), units.size());
  const char* bytes = text->GetMultiByte(page);
  return {bytes, text->GetLength()};
}

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
}

// ASCII is converted in blocks, which must not change what is around it.
TEST(CodePages, ConvertEveryPositionAlike) {
  const struct {
    std::uint32_t page;
    std::string bytes;
    std::u16string wide;
  } cases[] = {{1252, "\xE4", u"ä"},
               {932, "\x93\xFA", u"日"},
               {kUtf8, "\xC4\x80", u"Ā"},
               {kUtf8, "\xC5\xAF", u"ů"},
               {kUtf8, "\xE8\x80\x80", u"\u8000"},
               {kUtf8, "\xEF\xBF\xBD", u"\uFFFD"},
               {kUtf8, "\xF0\x90\x80\x80", u"\U00010000"},
               {kUtf8, "\xF1\xB2\xA3\x97", u"\U000728D7"},
               {kUtf8, "\xF4\x8F\xBF\xBF", u"\U0010FFFF"}};
  for (const auto& c : cases) {
    for (std::size_t before = 0; before < 50; ++before) {
      const std::string bytes = std::string(before, '~') + c.bytes + std::string(50 - before, '~');
      const auto wide = std::u16string(before, u'~') + c.wide + std::u16string(50 - before, u'~');
      EXPECT_EQ(ToWide(c.page, bytes), wide) << c.page << " after " << before;
      EXPECT_EQ(ToBytes(c.page, wide), bytes) << c.page << " after " << before;
    }
  }
}

// Windows converts long texts in chunks, which must not split a character.
TEST(CodePages, ConvertTextsTooLongForOneCall) {
  constexpr std::size_t kCharacters = 9'000'000;
  const struct {
    std::uint32_t page;
    std::string bytes;
    std::u16string wide;
  } cases[] = {{932, "\x93\xFA", u"日"}, {kUtf8, "\xF0\x9F\x98\x80", u"\U0001F600"}};
  for (const auto& c : cases) {
    std::string bytes = "~";
    std::u16string wide = u"~";
    for (std::size_t i = 0; i < kCharacters; ++i) {
      bytes += c.bytes;
      wide += c.wide;
    }
    EXPECT_TRUE(ToWide(c.page, bytes) == wide) << c.page;
    EXPECT_TRUE(ToBytes(c.page, wide) == bytes) << c.page;
  }
}

}  // namespace Data::tests
