#include "Prelude.h"

namespace Data::tests {

using namespace Core;

namespace {

/// `Compare` of whatever makes a variant.
int Order(const Variant& left, const Variant& right) { return Compare(left, right); }

}  // namespace

/// A text stored in the record compares as a string object of it would.
TEST(VariantComparison, OfShortTextsAgreesWithStringObjects) {
  const std::string_view texts[] = {
      "",  "a",        "A",        "b", "ab", "aB", "abc",  "@",  "[",        "`",
      "{", "\xC3\xA9", "\xFF\xFE", "z", "Z",  "0z", "0Z\t", "\n", "zzzzzzzz", "16 Bytes of it!!"};
  const auto sign = [](int result) { return result < 0 ? -1 : result > 0; };
  for (const auto left : texts) {
    for (const auto right : texts) {
      const int expected = sign(MakeString(left)->Compare(MakeString(right).Get(), false));
      EXPECT_EQ(Order(left, right), expected) << left << " " << right;
      EXPECT_EQ(Order(left, MakeString(right)), expected) << left << " " << right;
      EXPECT_EQ(Order(MakeString(left), right), expected) << left << " " << right;
    }
  }
}

TEST(VariantComparison, OfTextsGoesByTheLeftEncoding) {
  const auto wide = New(Data_CreateString);
  wide->SetWide(u"\uFF21", 1);
  const Variant emoji("\xF0\x9F\x98\x80");
  EXPECT_EQ(Order(wide, emoji), 1) << "U+FF21 against U+1F600 by 16-bit units";
  EXPECT_EQ(Order(emoji, wide), 1) << "and by bytes";
}

TEST(VariantComparison, OfObjectsGoesByAddress) {
  auto less = New(Data_CreateObjectList), greater = New(Data_CreateObjectList);
  if (std::less<>()(greater.Get(), less.Get())) std::swap(less, greater);
  EXPECT_EQ(Order(less, less), 0);
  EXPECT_EQ(Order(less, greater), -1);
  EXPECT_EQ(Order(greater, less), 1);
  EXPECT_EQ(Order(Ptr<IObject>(less), Ptr<IObject>(greater)), -1);
  EXPECT_EQ(Order(Variant::StringList(greater), Variant::StringList(less)), 1);
}

TEST(VariantComparison, NeverFollowsAnUndefinedReference) {
  const Variant undefined = Record(static_cast<ValueType>(200), StorageForm::Reference, 0xBAD);
  EXPECT_EQ(ThrownBy([&] { Compare(undefined, undefined); }),
            "Compare is not implemented for specified value types: Left type is , Right type is ");
}

}  // namespace Data::tests
