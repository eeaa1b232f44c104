#include "Prelude.h"

namespace Data::tests {

namespace {

Ptr<ISecureString> Protect(IString& text) {
  Ptr<ISecureString> secret;
  Ptr<IErrorCode> error;
  EXPECT_TRUE(Data_CreateSecureString(&text, secret.Receive(), error.Receive()))
      << MessageOf(error);
  return secret;
}

std::string PlainText(ISecureString& secret) {
  Ptr<IString> text;
  Ptr<IErrorCode> error;
  EXPECT_TRUE(secret.GetText(text.Receive(), error.Receive())) << MessageOf(error);
  return std::string(Core::Utf8View(*text));
}

}  // namespace

TEST(SecureString, GivesBackTheVeryBytes) {
  const struct {
    const char* what;
    std::string text;
  } cases[] = {
      {"empty", ""},
      {"short", "x"},
      {"just below a block", "123456789012345"},
      {"a block", "1234567890123456"},
      {"just above a block", "12345678901234567"},
      {"zeros inside and at the end", "pass\0word\0\0"s},
      {"bytes that are no text", "\xFF\xFE\x80"},
      {"long", std::string(100'001, 's')},
  };
  for (const auto& c : cases) {
    const auto secret = Protect(*MakeString(c.text));
    EXPECT_EQ(secret->GetLength(), c.text.size()) << c.what;
    EXPECT_EQ(PlainText(*secret), c.text) << c.what;
    EXPECT_EQ(PlainText(*secret), c.text) << c.what << ", again";
  }
}

TEST(SecureString, GivesNewStringsOfItsOwnText) {
  const auto source = MakeString("secret");
  const auto secret = Protect(*source);
  source->SetUtf8("changed", 7);
  Ptr<IString> first, second;
  ASSERT_TRUE(secret->GetText(first.Receive(), nullptr));
  first->SetUtf8("changed as well, and longer than before", 39);
  ASSERT_TRUE(secret->GetText(second.Receive(), nullptr));
  EXPECT_EQ(second->GetSize(), 7u);
  EXPECT_STREQ(second->GetUtf8(), "secret");
}

TEST(SecureString, ReadsTheSourceAsUtf8WhichConvertsIt) {
  Ptr<IString> source;
  Data_CreateString(source.Receive());
  EXPECT_EQ(Protect(*source)->GetLength(), 0u) << "a string never set";
  source->SetWide(u"Schlüssel", 9);
  const auto secret = Protect(*source);
  EXPECT_EQ(secret->GetLength(), 10u);
  EXPECT_EQ(source->GetSize(), 11u) << "the source holds UTF-8 now";
  EXPECT_EQ(PlainText(*secret), "Schl\xC3\xBCssel");
}

TEST(SecureString, ThreadsShareOne) {
  const std::string text(1000, 't');
  const auto secret = Protect(*MakeString(text));
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i)
    threads.emplace_back([&] {
      for (int round = 0; round < 50; ++round) EXPECT_EQ(PlainText(*secret), text);
    });
  for (auto& thread : threads) thread.join();
}

TEST(SecureString, ChecksItsArguments) {
  const auto text = MakeString("secret");
  const auto held = Protect(*text);
  ISecureString* inUse = held.Get();
  ISecureString* none = nullptr;
  const struct {
    const char* what;
    IString* text;
    ISecureString** out;
    const char* message;
  } cases[] = {
      {"the text comes first", nullptr, nullptr,
       "Pointer of struct Data::Interfaces::IString must not be null!"},
      {"no text", nullptr, &none, "Pointer of struct Data::Interfaces::IString must not be null!"},
      {"no out-pointer", text.Get(), nullptr,
       "Pointer to a pointer of struct Data::Interfaces::ISecureString must not be null! Address "
       "of return must be specified!"},
      {"an out-pointer in use", text.Get(), &inUse,
       "Pointer of struct Data::Interfaces::ISecureString must be null in order to avoid memory "
       "leaks!"},
  };
  for (const auto& c : cases) {
    Ptr<IErrorCode> error;
    EXPECT_FALSE(Data_CreateSecureString(c.text, c.out, error.Receive())) << c.what;
    EXPECT_EQ(MessageOf(error), c.message) << c.what;
    EXPECT_EQ(error->GetCode(), 2u) << c.what;
  }
  EXPECT_EQ(inUse, held.Get());
  EXPECT_EQ(none, nullptr);
}

TEST(SecureString, GetTextChecksTheOutPointer) {
  const auto text = MakeString("in use");
  const auto secret = Protect(*text);
  IString* inUse = text.Get();
  Ptr<IErrorCode> noOut, error;
  EXPECT_FALSE(secret->GetText(nullptr, noOut.Receive()));
  EXPECT_EQ(MessageOf(noOut),
            "Pointer to a pointer of struct Data::Interfaces::IString must not be null! Address of "
            "return must be specified!");
  EXPECT_FALSE(secret->GetText(&inUse, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer of struct Data::Interfaces::IString must be null in order to avoid memory "
            "leaks!");
  EXPECT_EQ(inUse, text.Get());
}

}  // namespace Data::tests
