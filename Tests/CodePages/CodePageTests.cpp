#include "Prelude.h"

namespace Data::tests {

namespace {

constexpr std::uint32_t kUtf8 = 65001;

std::u16string ToWide(std::uint32_t page, std::string_view bytes) {
  Core::Ptr<Interfaces::IString> text;
  EXPECT_TRUE(Data_CreateString(text.Receive()));
  text->SetMultiByte(bytes.data(), bytes.size(), page);
  const char16_t* units = text->GetWide();
  return {units, text->GetLength()};
}

std::string ToBytes(std::uint32_t page, std::u16string_view units) {
  Core::Ptr<Interfaces::IString> text;
  EXPECT_TRUE(Data_CreateString(text.Receive()));
  text->SetWide(units.data(), units.size());
  const char* bytes = text->GetMultiByte(page);
  return {bytes, text->GetLength()};
}

}  // namespace

TEST(CodePages, WriteWhatTheyRead) {
  const struct {
    std::uint32_t page;
    std::string bytes;
    std::u16string wide;
  } cases[] = {
      {437, "\x82t\x82", u"été"},
      {850, "S\xE3o", u"SÒo"},
      {852, "\x9D\xA2\x88\xAB", u"Łółź"},
      {866, "\x8C\xA8\xE0", u"Мир"},
      {874, "\xE4\xB7\xC2", u"ไทย"},
      {932, "\x93\xFA\x96{\x8C\xEA \xB6\xC5", u"日本語 ｶﾅ"},
      {936, "\xD6\xD0\xCE\xC4 \x80", u"中文 €"},
      {949, "\xC7\xD1\xB1\xDB \x81\x41", u"한글 갂"},
      {950, "\xA4\xA4\xA4\xE5", u"中文"},
      {1250, "\x8Elut\xFD", u"Žlutý"},
      {1251, "\xCC\xE8\xF0", u"Мир"},
      {1252, "\x80 \x9C\xFC", u"€ œü"},
      {1253, "\xC1\xE8\xDE\xED\xE1", u"Αθήνα"},
      {1254, "\xDD\xFE", u"İş"},
      {1255, "\xF9\xEC\xE5\xED", u"שלום"},
      {1256, "\xDA\xD1\xC8", u"عرب"},
      {1257, "R\xEEga", u"Rīga"},
      {1258, "\xD0\xFE", u"Đ₫"},
      {20866, "\xED\xC9\xD2", u"Мир"},
      {28591, "\x80\xE9", u"\u0080é"},
      {28595, "\xBC\xD8\xE0", u"Мир"},
      {28603, "\xD0\xF0", u"Šš"},
      {28605, "\xA4", u"€"},
      {kUtf8, "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", u"é€\U0001F600"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ToWide(c.page, c.bytes), c.wide) << c.page;
    EXPECT_EQ(ToBytes(c.page, c.wide), c.bytes) << c.page;
  }
}

TEST(CodePages, MakeTheBestOfBytesThatMeanNothing) {
  const struct {
    const char* what;
    std::uint32_t page;
    std::string bytes;
    std::u16string wide;
  } cases[] = {
      {"an undefined byte is the control of its number", 1252, "a\x81z", u"a\u0081z"},
      {"or a private character", 1253, "\xAA", u"\uF8F9"},
      {"a lead byte at the end", 932, "a\x93", u"a\u30FB"},
      {"a lead byte takes an impossible trail byte with it", 932, "\x93 z", u"\u30FBz"},
      {"codes for users are private characters", 936, "\xA2\xA0z", u"\uE585z"},
      {"the other pages say so with a question mark", 949, "\xC7 z", u"?z"},
      {"one for each", 950, "\xA4 \xA4", u"??"},
      {"a beginning of a character is replaced as one", kUtf8, "\xF0\x9F\x98z", u"\uFFFDz"},
      {"bytes that begin nothing one by one", kUtf8, "\x80\xBF\xFFz", u"\uFFFD\uFFFD\uFFFDz"},
      {"also in the middle of a character", kUtf8, "\xE2\xE2\x82\xAC", u"\uFFFD€"},
  };
  for (const auto& c : cases) EXPECT_EQ(ToWide(c.page, c.bytes), c.wide) << c.what;
}

TEST(CodePages, WriteWhatComesClosest) {
  const struct {
    const char* what;
    std::uint32_t page;
    std::u16string wide;
    std::string bytes;
  } cases[] = {
      {"a letter without its accent", 1252, u"Āă", "Aa"},
      {"a wide letter", 1252, u"Ａｚ", "Az"},
      {"a sign of like shape", 1252, u"∞", "8"},
      {"nothing is close", 1252, u"日", "?"},
      {"each half of a pair on its own", 1252, u"\U0001F600", "??"},
      {"a sign that the page has elsewhere", 932, u"¥", "\\"},
      {"each half of a pair on its own", 950, u"\U00020000z", "??z"},
      {"a lone half cannot be written", kUtf8, std::u16string(1, char16_t{0xDC00}) + u"z",
       "\xEF\xBF\xBDz"},
  };
  for (const auto& c : cases) EXPECT_EQ(ToBytes(c.page, c.wide), c.bytes) << c.what;
}

// Runs of ASCII are converted in blocks; whatever stands at whatever place in one must not differ.
TEST(CodePages, ConvertEveryPlaceAlike) {
  const struct {
    std::uint32_t page;
    std::string bytes;
    std::u16string wide;
  } cases[] = {{1252, "\xE4", u"ä"},
               {932, "\x93\xFA", u"日"},
               {kUtf8, "\xC4\x80", u"Ā"},
               {kUtf8, "\xE8\x80\x80", u"\u8000"},
               {kUtf8, "\xF0\x90\x80\x80", u"\U00010000"}};
  for (const auto& c : cases) {
    for (std::size_t before = 0; before < 50; ++before) {
      const std::string bytes = std::string(before, '~') + c.bytes + std::string(50 - before, '~');
      const auto wide = std::u16string(before, u'~') + c.wide + std::u16string(50 - before, u'~');
      EXPECT_EQ(ToWide(c.page, bytes), wide) << c.page << " after " << before;
      EXPECT_EQ(ToBytes(c.page, wide), bytes) << c.page << " after " << before;
    }
  }
}

// Systems that count in 32 bits get a long text in pieces, which must not part a character.
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
