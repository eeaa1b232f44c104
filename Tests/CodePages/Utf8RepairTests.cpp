#include "Prelude.h"

// Where two Windows systems may differ, and so only the library's own conversion is held to it.
namespace Data::tests {

TEST(CodePages, ReplaceWhatNoUtf8CanBeginWithByteByByte) {
  const struct {
    const char* what;
    std::string bytes;
    std::u16string wide;
  } cases[] = {
      {"two bytes that are too many for their character", "\xC0\xAFz", u"\uFFFD\uFFFDz"},
      {"three", "\xE0\x80\xAFz", u"\uFFFD\uFFFD\uFFFDz"},
      {"four", "\xF0\x80\x80\x80z", u"\uFFFD\uFFFD\uFFFD\uFFFDz"},
      {"a surrogate", "\xED\xA0\x80z", u"\uFFFD\uFFFD\uFFFDz"},
      {"past the last character", "\xF4\x90\x80\x80z", u"\uFFFD\uFFFD\uFFFD\uFFFDz"},
      {"the last character", "\xF4\x8F\xBF\xBFz", u"\U0010FFFFz"},
  };
  for (const auto& c : cases) {
    Core::Ptr<Interfaces::IString> text;
    EXPECT_TRUE(Data_CreateString(text.Receive()));
    text->SetUtf8(c.bytes.data(), c.bytes.size());
    EXPECT_EQ(std::u16string(text->GetWide()), c.wide) << c.what;
  }
}

}  // namespace Data::tests
