#include <numeric>

#include "Text/TextSupport.h"

namespace Data::tests {

TEST(SecureString, GivesBackTheVeryBytes) {
  for (const std::size_t size : {0u, 1u, 15u, 16u, 17u, 257u, 100'001u}) {
    std::string text(size, '\0');
    std::iota(text.begin(), text.end(), '\1');  // zeros and bytes that are not valid UTF-8
    const auto secret = Protect(MakeString(text).Get());
    EXPECT_EQ(secret->GetLength(), size);
    for (const char* when : {"once", "again"})
      EXPECT_EQ(Core::Utf8View(*PlainText(*secret)), text) << size << " " << when;
  }
}

TEST(SecureString, ReadsItsSourceAsUtf8AndGivesNewStrings) {
  const auto source = New(Data_CreateString);
  EXPECT_EQ(Protect(source.Get())->GetLength(), 0u) << "a string never set";
  source->SetWide(u"Schlüssel", 9);
  const auto secret = Protect(source.Get());
  EXPECT_EQ(source->GetSize(), 11u) << "the source holds UTF-8 now";
  source->SetUtf8("changed", 7);
  const auto first = PlainText(*secret);
  first->SetUtf8("changed as well, and longer than before", 39);
  EXPECT_STREQ(first->GetUtf8(), "changed as well, and longer than before");
  const auto second = PlainText(*secret);
  EXPECT_EQ(second->GetSize(), 11u);
  EXPECT_STREQ(second->GetUtf8(), "Schl\xC3\xBCssel");
}

TEST(SecureString, TakesTextObjectsOfTheCaller) {
  EXPECT_EQ(Protect(Core::MakePtr<CallersText>(nullptr).Get())->GetLength(), 0u);
  auto text = Core::MakePtr<CallersText>("secret");
  text->onRead = [&] { text.Reset(); };
  EXPECT_STREQ(PlainText(*Protect(text.Get()))->GetUtf8(), "secret") << "released while it is read";
}

}  // namespace Data::tests
