#include "Prelude.h"

namespace Data::tests {

namespace {

constexpr _UUID kSample = {
    0x6B29FC40, 0xCA47, 0x1067, {0xB3, 0x1D, 0x00, 0xDD, 0x01, 0x06, 0x62, 0xDA}};

std::string BytesOf(const _UUID& uuid) {
  return {reinterpret_cast<const char*>(&uuid), sizeof uuid};
}

}  // namespace

TEST(Uuid, ReadsExactlyThePrintedForm) {
  for (const Case& c : Cases("Text.txt", "uuids")) {
    const bool isRead = c[1] == "yes";
    const _UUID before{1, 2, 3, {4}};
    _UUID uuid = before;
    EXPECT_EQ(Data_UuidFromString(c.fields[0].c_str(), &uuid), isRead) << c.where;
    EXPECT_EQ(BytesOf(uuid), BytesOf(isRead ? kSample : before)) << c.where;
  }
}

TEST(Uuid, NewOnesAreRandomOfVersion4AndReadBack) {
  _UUID first{}, second{}, readBack{};
  ASSERT_TRUE(Data_NewUuid(&first));
  ASSERT_TRUE(Data_NewUuid(&second));
  EXPECT_NE(BytesOf(first), BytesOf(second));
  EXPECT_EQ(first.data3 >> 12, 4);
  EXPECT_EQ(first.data4[0] >> 6, 2);
  Ptr<IString> text;
  ASSERT_TRUE(Data_UuidToString(&first, text.Receive()));
  ASSERT_TRUE(Data_UuidFromString(text->GetUtf8(), &readBack));
  EXPECT_EQ(BytesOf(first), BytesOf(readBack));
  ASSERT_TRUE(Data_UuidToString(&kSample, text.Receive()));
  EXPECT_EQ(text->GetSize(), 74u) << "UTF-16";
  EXPECT_STREQ(text->GetUtf8(), "6b29fc40-ca47-1067-b31d-00dd010662da");
}

TEST(Uuid, NullArgumentsGiveFalse) {
  Ptr<IString> text;
  _UUID uuid{};
  EXPECT_FALSE(Data_NewUuid(nullptr));
  EXPECT_FALSE(Data_UuidToString(nullptr, text.Receive()));
  EXPECT_FALSE(Data_UuidToString(&uuid, nullptr));
  EXPECT_FALSE(Data_UuidFromString(nullptr, &uuid));
  EXPECT_FALSE(Data_UuidFromString("6b29fc40-ca47-1067-b31d-00dd010662da", nullptr));
}

}  // namespace Data::tests
