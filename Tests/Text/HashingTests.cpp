#include "Text/Bytes.h"

namespace Data::tests {

namespace {

Ptr<IHashing> Hmac(std::uint32_t variant, IArray* key) {
  Ptr<IHashing> hashing;
  EXPECT_TRUE(Data_CreateHashingInstanceHmacSha2(variant, key, hashing.Receive(), nullptr));
  return hashing;
}

/// @param name  an algorithm as the data file names it
Ptr<IHashing> Create(std::string_view name, std::string_view key = "") {
  const std::uint32_t variant = name.ends_with("256") ? 0 : name.ends_with("384") ? 1 : 2;
  if (name == "MD5") return New(Data_CreateHashingInstanceMD5);
  if (name == "SHA-1") return New(Data_CreateHashingInstanceSha1);
  if (name.starts_with("HMAC")) return Hmac(variant, ArrayOf(key).Get());
  Ptr<IHashing> hashing;
  EXPECT_TRUE(Data_CreateHashingInstanceSha2(variant, hashing.Receive(), nullptr));
  return hashing;
}

std::string Digest(IHashing& hashing, std::string_view data) {
  Ptr<IArray> digest;
  EXPECT_TRUE(hashing.Hash(data.data(), data.size(), digest.Receive(), nullptr));
  std::string text;
  for (const char byte : BytesOf(*digest))
    for (const int digit : {(byte >> 4) & 0xF, byte & 0xF}) text += "0123456789abcdef"[digit];
  return text;
}

}  // namespace

TEST(Hashing, GivesThePublishedDigestsAgainAndAgain) {
  for (const Case& c : Cases("Text.txt", "digests")) {
    const auto hashing = Create(c[0], c[1]);
    EXPECT_EQ(Digest(*hashing, c[2]), c[3]) << c.where;
    EXPECT_NE(Digest(*hashing, "other"), c[3]) << c.where;
    EXPECT_FALSE(hashing->Hash("other", 5, nullptr, nullptr));
    EXPECT_EQ(Digest(*hashing, c[2]), c[3]) << c.where << ": after others and a failure";
  }
}

TEST(Hashing, NeedsDataEvenForNoBytes) {
  const auto hashing = Create("MD5");
  Ptr<IArray> digest;
  EXPECT_EQ(Failure([&](IErrorCode** error) {
              return hashing->Hash(nullptr, 0, digest.Receive(), error);
            }),
            "Pointer of void must not be null!");
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
    Ptr<IHashing> out;
    Ptr<IErrorCode> error;
    EXPECT_TRUE(Data_CreateHashingInstanceSha2(variant, out.Receive(), error.Receive()));
    EXPECT_FALSE(out);
    EXPECT_FALSE(error);
    for (IArray* const some : {key.Get(), static_cast<IArray*>(nullptr)})
      EXPECT_EQ(Failure([&](IErrorCode** failure) {
                  return Data_CreateHashingInstanceHmacSha2(variant, some, out.Receive(), failure);
                }),
                "Hashing method is not supported!");
  }
}

}  // namespace Data::tests
