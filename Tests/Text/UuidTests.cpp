#include "Prelude.h"

namespace Data::tests {

namespace {

std::string TextOf(const _UUID& uuid) {
  const auto text = Made<IString>(Data_UuidToString, &uuid);
  EXPECT_EQ(text->GetSize(), 74u) << "UTF-16";
  return text->GetUtf8();
}

}  // namespace

TEST(Uuid, ReadsExactlyThePrintedForm) {
  _UUID uuid{0x6B29FC40, 0xCA47, 0x1067, {0xB3, 0x1D, 0x00, 0xDD, 0x01, 0x06, 0x62, 0xDA}};
  const std::string printed = "6b29fc40-ca47-1067-b31d-00dd010662da";
  EXPECT_EQ(TextOf(uuid), printed);
  EXPECT_FALSE(Data_UuidToString(nullptr, Ptr<IString>().Receive()));
  EXPECT_FALSE(Data_UuidFromString(nullptr, &uuid));
  EXPECT_FALSE(Data_UuidFromString(printed.c_str(), nullptr));
  for (const Case& c : Cases("Text.txt", "uuids")) {
    uuid = {1, 2, 3, {4}};
    EXPECT_EQ(Data_UuidFromString(c.fields[0].c_str(), &uuid), c[1] == "yes") << c.where;
    EXPECT_EQ(TextOf(uuid), c[1] == "yes" ? printed : "00000001-0002-0003-0400-000000000000");
  }
}

TEST(Uuid, NewOnesAreRandomOfVersion4) {
  _UUID first{}, second{};
  EXPECT_FALSE(Data_NewUuid(nullptr));
  ASSERT_TRUE(Data_NewUuid(&first) && Data_NewUuid(&second));
  EXPECT_NE(TextOf(first), TextOf(second));
  EXPECT_EQ(first.data3 >> 12, 4);
  EXPECT_EQ(first.data4[0] >> 6, 2);
}

}  // namespace Data::tests
