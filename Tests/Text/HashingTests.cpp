#include "Text/TextSupport.h"

namespace Data::tests {

namespace {

Ptr<IHashing> Hmac(std::uint32_t variant, IArray* key) {
  return Made<IHashing>(Data_CreateHashingInstanceHmacSha2, variant, key);
}

/// @param name  an algorithm as the data file names it
Ptr<IHashing> Create(std::string_view name, std::string_view key = "") {
  const std::uint32_t variant = name.ends_with("256") ? 0 : name.ends_with("384") ? 1 : 2;
  if (name == "MD5") return New(Data_CreateHashingInstanceMD5);
  if (name == "SHA-1") return New(Data_CreateHashingInstanceSha1);
  if (name.starts_with("HMAC")) return Hmac(variant, ArrayOf(key).Get());
  return Made<IHashing>(Data_CreateHashingInstanceSha2, variant);
}

std::string Digest(IHashing& hashing, std::string_view data) {
  std::string text;
  for (const char byte :
       BytesOf(*Made<IArray>(&IHashing::Hash, &hashing, data.data(), data.size())))
    for (const int digit : {(byte >> 4) & 0xF, byte & 0xF}) text += "0123456789abcdef"[digit];
  return text;
}

}  // namespace

TEST(Hashing, GivesThePublishedDigestsAgainAndAgain) {
  for (const Case& c : Cases("Text.txt", "digests")) {
    const auto hashing = Create(c[0], c[1]);
    EXPECT_EQ(Digest(*hashing, c[2]), c[3]) << c.where;
    EXPECT_NE(Digest(*hashing, "other"), c[3]) << c.where;
    EXPECT_EQ(
        Failure([&](auto e) { return hashing->Hash(nullptr, 0, Ptr<IArray>().Receive(), e); }),
        "Pointer of void must not be null!");
    EXPECT_EQ(Digest(*hashing, c[2]), c[3]) << c.where << ": after others and a failure";
  }
}

TEST(Hashing, ReadsTheKeyOnceAndByItsElements) {
  const auto key = ArrayOf("");
  key->SetData("keyX", 2, 2);
  const auto hashing = Hmac(0, key.Get());
  key->SetData("other", 1, 5);
  EXPECT_EQ(Digest(*hashing, "abc"), Digest(*Create("HMAC-256", "ke"), "abc"));

  auto own = Core::MakePtr<CallersArray>("key");
  own->onRead = [&] { own.Reset(); };
  EXPECT_EQ(Digest(*Hmac(0, own.Get()), "abc"), Digest(*Create("HMAC-256", "key"), "abc"));
  EXPECT_EQ(Digest(*Hmac(1, nullptr), "abc"), Digest(*Create("SHA-384"), "abc"))
      << "no key, no HMAC";
}

TEST(Hashing, UnknownVariantsFailOnlyForHmac) {
  const auto key = ArrayOf("key");
  for (const std::uint32_t variant : {3u, 7u, UINT32_MAX}) {
    EXPECT_FALSE(Made<IHashing>(Data_CreateHashingInstanceSha2, variant));
    Ptr<IHashing> out;
    for (IArray* const some : {key.Get(), static_cast<IArray*>(nullptr)}) {
      const auto create = [&](auto error) {
        return Data_CreateHashingInstanceHmacSha2(variant, some, out.Receive(), error);
      };
      EXPECT_EQ(Failure(create), "Hashing method is not supported!");
    }
    EXPECT_FALSE(out);
  }
}

}  // namespace Data::tests
