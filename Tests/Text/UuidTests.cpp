#include "Prelude.h"

namespace Data::tests {

namespace {

constexpr _UUID kSample = {
    0x6B29FC40, 0xCA47, 0x1067, {0xB3, 0x1D, 0x00, 0xDD, 0x01, 0x06, 0x62, 0xDA}};

bool AreEqual(const _UUID& left, const _UUID& right) {
  return std::memcmp(&left, &right, sizeof left) == 0;
}

}  // namespace

TEST(Uuid, PrintsLowercaseGroupsAsUtf16) {
  Ptr<IString> text;
  ASSERT_TRUE(Data_UuidToString(&kSample, text.Receive()));
  EXPECT_EQ(text->GetLength(), 36u);
  EXPECT_EQ(text->GetSize(), 74u);
  EXPECT_STREQ(text->GetUtf8(), "6b29fc40-ca47-1067-b31d-00dd010662da");
}

TEST(Uuid, ReadsExactlyThePrintedForm) {
  const struct {
    const char* what;
    const char* text;
    bool isRead;
  } cases[] = {
      {"lower case", "6b29fc40-ca47-1067-b31d-00dd010662da", true},
      {"upper case", "6B29FC40-CA47-1067-B31D-00DD010662DA", true},
      {"mixed case", "6B29fc40-CA47-1067-b31d-00DD010662da", true},
      {"one character short", "6b29fc40-ca47-1067-b31d-00dd010662d", false},
      {"one character more", "6b29fc40-ca47-1067-b31d-00dd010662da0", false},
      {"braces", "{6b29fc40-ca47-1067-b31d-00dd010662da}", false},
      {"a space in front", " 6b29fc40-ca47-1067-b31d-00dd010662d", false},
      {"no dashes", "6b29fc40ca471067b31d00dd010662da", false},
      {"a dash out of place", "6b29fc4-0ca47-1067-b31d-00dd010662da", false},
      {"a digit for a dash", "6b29fc400ca47-1067-b31d-00dd010662da", false},
      {"no digit", "6b29fc40-ca47-1067-b31d-00dd010662dg", false},
      {"a sign", "+b29fc40-ca47-1067-b31d-00dd010662da", false},
      {"empty", "", false},
  };
  for (const auto& c : cases) {
    _UUID uuid{1, 2, 3, {4}};
    const _UUID before = uuid;
    EXPECT_EQ(Data_UuidFromString(c.text, &uuid), c.isRead) << c.what;
    EXPECT_TRUE(AreEqual(uuid, c.isRead ? kSample : before)) << c.what;
  }
}

TEST(Uuid, NewOnesAreRandomOfVersion4AndReadBack) {
  _UUID first{}, second{}, readBack{};
  ASSERT_TRUE(Data_NewUuid(&first));
  ASSERT_TRUE(Data_NewUuid(&second));
  EXPECT_FALSE(AreEqual(first, second));
  EXPECT_EQ(first.data3 >> 12, 4);
  EXPECT_EQ(first.data4[0] >> 6, 2);
  Ptr<IString> text;
  ASSERT_TRUE(Data_UuidToString(&first, text.Receive()));
  ASSERT_TRUE(Data_UuidFromString(text->GetUtf8(), &readBack));
  EXPECT_TRUE(AreEqual(first, readBack));
}

TEST(Uuid, NullArgumentsGiveFalse) {
  Ptr<IString> text;
  _UUID uuid{};
  EXPECT_FALSE(Data_NewUuid(nullptr));
  EXPECT_FALSE(Data_UuidToString(nullptr, text.Receive()));
  EXPECT_FALSE(text);
  EXPECT_FALSE(Data_UuidToString(&uuid, nullptr));
  EXPECT_FALSE(Data_UuidFromString(nullptr, &uuid));
  EXPECT_FALSE(Data_UuidFromString("6b29fc40-ca47-1067-b31d-00dd010662da", nullptr));
}

}  // namespace Data::tests
