#include <array>
#include <bit>
#include <set>

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
  EXPECT_FALSE(Data_NewUuid(nullptr));
  std::array<std::uint64_t, 128> bits{};  // of 64 UUIDs
  for (int i = 0; i < 64; ++i) {
    _UUID uuid{};
    ASSERT_TRUE(Data_NewUuid(&uuid));
    EXPECT_EQ(uuid.data3 >> 12, 4);
    EXPECT_EQ(uuid.data4[0] >> 6, 2);
    for (std::size_t bit = 0; bit < bits.size(); ++bit)
      bits[bit] |=
          std::uint64_t{std::bit_cast<std::array<std::uint8_t, 16>>(uuid)[bit / 8] >> bit % 8 & 1u}
          << i;
  }
  // The other 122 bits vary, and none follows another.
  EXPECT_EQ(std::set(bits.begin(), bits.end()).size(), 122u + 2);
}

}  // namespace Data::tests
