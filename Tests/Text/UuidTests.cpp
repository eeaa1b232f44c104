#include "Prelude.h"

namespace Data::tests {

namespace {

constexpr _UUID kSample = {
    0x6B29FC40, 0xCA47, 0x1067, {0xB3, 0x1D, 0x00, 0xDD, 0x01, 0x06, 0x62, 0xDA}};

constexpr const char* kText = "6b29fc40-ca47-1067-b31d-00dd010662da";

std::string BytesOf(const _UUID& uuid) {
  return {reinterpret_cast<const char*>(&uuid), sizeof uuid};
}

}  // namespace

TEST(Uuid, ReadsExactlyThePrintedForm) {
  _UUID uuid{};
  EXPECT_FALSE(Data_UuidFromString(nullptr, &uuid) || Data_UuidFromString(kText, nullptr));
  for (const Case& c : Cases("Text.txt", "uuids")) {
    const bool isRead = c[1] == "yes";
    const _UUID before{1, 2, 3, {4}};
    uuid = before;
    EXPECT_EQ(Data_UuidFromString(c.fields[0].c_str(), &uuid), isRead) << c.where;
    EXPECT_EQ(BytesOf(uuid), BytesOf(isRead ? kSample : before)) << c.where;
  }
}

TEST(Uuid, ArePrintedInLowerCase) {
  Ptr<IString> text;
  EXPECT_FALSE(Data_UuidToString(nullptr, text.Receive()));
  ASSERT_TRUE(Data_UuidToString(&kSample, text.Receive()));
  EXPECT_EQ(text->GetSize(), 74u) << "UTF-16";
  EXPECT_STREQ(text->GetUtf8(), kText);
}

TEST(Uuid, NewOnesAreRandomOfVersion4) {
  _UUID first{}, second{};
  EXPECT_FALSE(Data_NewUuid(nullptr));
  ASSERT_TRUE(Data_NewUuid(&first) && Data_NewUuid(&second));
  EXPECT_NE(BytesOf(first), BytesOf(second));
  EXPECT_EQ(first.data3 >> 12, 4);
  EXPECT_EQ(first.data4[0] >> 6, 2);
}

}  // namespace Data::tests
