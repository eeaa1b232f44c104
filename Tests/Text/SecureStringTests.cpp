#include "CallersText.h"
#include "Prelude.h"

namespace Data::tests {

namespace {

Ptr<ISecureString> Protect(IString* text) {
  Ptr<ISecureString> secret;
  EXPECT_TRUE(Data_CreateSecureString(text, secret.Receive(), nullptr));
  return secret;
}

std::string PlainText(ISecureString& secret) {
  Ptr<IString> text;
  EXPECT_TRUE(secret.GetText(text.Receive(), nullptr));
  return std::string(Core::Utf8View(*text));
}

}  // namespace

TEST(SecureString, GivesBackTheVeryBytes) {
  const struct {
    const char* what;
    std::string text;
  } cases[] = {
      {"empty", ""},
      {"just below a block", "123456789012345"},
      {"a block", "1234567890123456"},
      {"just above a block", "12345678901234567"},
      {"zeros inside and at the end", "pass\0word\0\0"s},
      {"bytes that are no text", "\xFF\xFE\x80"},
      {"long", std::string(100'001, 's')},
  };
  for (const auto& c : cases) {
    const auto secret = Protect(MakeString(c.text).Get());
    EXPECT_EQ(secret->GetLength(), c.text.size()) << c.what;
    EXPECT_EQ(PlainText(*secret), c.text) << c.what;
    EXPECT_EQ(PlainText(*secret), c.text) << c.what << ", again";
  }
}

TEST(SecureString, GivesNewStringsOfItsOwnText) {
  const auto source = MakeString("secret");
  const auto secret = Protect(source.Get());
  source->SetUtf8("changed", 7);
  Ptr<IString> first, second;
  ASSERT_TRUE(secret->GetText(first.Receive(), nullptr));
  first->SetUtf8("changed as well, and longer than before", 39);
  EXPECT_STREQ(first->GetUtf8(), "changed as well, and longer than before");
  ASSERT_TRUE(secret->GetText(second.Receive(), nullptr));
  EXPECT_EQ(second->GetSize(), 7u);
  EXPECT_STREQ(second->GetUtf8(), "secret");
}

TEST(SecureString, ReadsTheSourceAsUtf8WhichConvertsIt) {
  const auto source = New(Data_CreateString);
  EXPECT_EQ(Protect(source.Get())->GetLength(), 0u) << "a string never set";
  source->SetWide(u"Schlüssel", 9);
  const auto secret = Protect(source.Get());
  EXPECT_EQ(secret->GetLength(), 10u);
  EXPECT_EQ(source->GetSize(), 11u) << "the source holds UTF-8 now";
  EXPECT_EQ(PlainText(*secret), "Schl\xC3\xBCssel");
}

TEST(SecureString, TakesTextObjectsOfTheCaller) {
  EXPECT_EQ(PlainText(*Protect(Core::MakePtr<CallersText>(nullptr).Get())), "");
  auto text = Core::MakePtr<CallersText>("secret");
  text->onRead = [&] { text.Reset(); };
  EXPECT_EQ(PlainText(*Protect(text.Get())), "secret") << "released while it is read";
}

}  // namespace Data::tests
