#include "Prelude.h"

namespace Data::tests {

namespace {

Ptr<IArray> ArrayOf(std::string_view bytes) {
  Ptr<IArray> array;
  EXPECT_TRUE(Data_CreateArray(array.Receive()));
  array->SetData(bytes.data(), 1, bytes.size());
  return array;
}

Ptr<IHashing> Md5() {
  Ptr<IHashing> hashing;
  EXPECT_TRUE(Data_CreateHashingInstanceMD5(hashing.Receive(), nullptr));
  return hashing;
}

Ptr<IHashing> Sha1() {
  Ptr<IHashing> hashing;
  EXPECT_TRUE(Data_CreateHashingInstanceSha1(hashing.Receive(), nullptr));
  return hashing;
}

Ptr<IHashing> Sha2(std::uint32_t variant) {
  Ptr<IHashing> hashing;
  EXPECT_TRUE(Data_CreateHashingInstanceSha2(variant, hashing.Receive(), nullptr));
  return hashing;
}

Ptr<IHashing> Hmac(std::uint32_t variant, std::string_view key) {
  Ptr<IHashing> hashing;
  EXPECT_TRUE(
      Data_CreateHashingInstanceHmacSha2(variant, ArrayOf(key).Get(), hashing.Receive(), nullptr));
  return hashing;
}

std::string Hexadecimal(IArray& array) {
  EXPECT_EQ(array.GetStride(), 1u);
  const auto* bytes = static_cast<const std::uint8_t*>(array.GetData());
  std::string text;
  for (std::uint64_t i = 0; i < array.GetCount(); ++i)
    for (const int digit : {bytes[i] >> 4, bytes[i] & 0xF}) text += "0123456789abcdef"[digit];
  return text;
}

std::string Digest(IHashing& hashing, std::string_view data) {
  Ptr<IArray> digest;
  Ptr<IErrorCode> error;
  EXPECT_TRUE(hashing.Hash(data.data(), data.size(), digest.Receive(), error.Receive()))
      << MessageOf(error);
  return digest ? Hexadecimal(*digest) : "";
}

const std::string kMillion(1'000'000, 'a');
constexpr std::string_view kTwoBlocks =
    "abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmn"
    "hijklmnoijklmnopjklmnopqklmnopqrlmnopqrsmnopqrstnopqrstu";
constexpr std::string_view kOneBlock = "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq";

}  // namespace

// From RFC 1321 and FIPS 180-2.
TEST(Hashing, GivesThePublishedDigests) {
  const struct {
    const char* what;
    Ptr<IHashing> hashing;
    std::string_view data;
    const char* digest;
  } cases[] = {
      {"MD5", Md5(), "", "d41d8cd98f00b204e9800998ecf8427e"},
      {"MD5", Md5(), "abc", "900150983cd24fb0d6963f7d28e17f72"},
      {"MD5", Md5(), "message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
      {"MD5", Md5(),
       "12345678901234567890123456789012345678901234567890123456789012345678901234567890",
       "57edf4a22be3c955ac49da2e2107b67a"},
      {"MD5", Md5(), kMillion, "7707d6ae4e027c70eea2a935c2296f21"},
      {"SHA-1", Sha1(), "", "da39a3ee5e6b4b0d3255bfef95601890afd80709"},
      {"SHA-1", Sha1(), "abc", "a9993e364706816aba3e25717850c26c9cd0d89d"},
      {"SHA-1", Sha1(), kOneBlock, "84983e441c3bd26ebaae4aa1f95129e5e54670f1"},
      {"SHA-1", Sha1(), kMillion, "34aa973cd4c4daa4f61eeb2bdbad27316534016f"},
      {"SHA-256", Sha2(0), "", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
      {"SHA-256", Sha2(0), "abc",
       "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
      {"SHA-256", Sha2(0), kOneBlock,
       "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
      {"SHA-256", Sha2(0), kMillion,
       "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
      {"SHA-384", Sha2(1), "",
       "38b060a751ac96384cd9327eb1b1e36a21fdb71114be07434c0cc7bf63f6e1da"
       "274edebfe76f65fbd51ad2f14898b95b"},
      {"SHA-384", Sha2(1), "abc",
       "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed"
       "8086072ba1e7cc2358baeca134c825a7"},
      {"SHA-384", Sha2(1), kTwoBlocks,
       "09330c33f71147e83d192fc782cd1b4753111b173b3b05d22fa08086e3b0f712"
       "fcc7c71a557e2db966c3e9fa91746039"},
      {"SHA-384", Sha2(1), kMillion,
       "9d0e1809716474cb086e834e310a4a1ced149e9c00f248527972cec5704c2a5b"
       "07b8b3dc38ecc4ebae97ddd87f3d8985"},
      {"SHA-512", Sha2(2), "",
       "cf83e1357eefb8bdf1542850d66d8007d620e4050b5715dc83f4a921d36ce9ce"
       "47d0d13c5d85f2b0ff8318d2877eec2f63b931bd47417a81a538327af927da3e"},
      {"SHA-512", Sha2(2), "abc",
       "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
       "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f"},
      {"SHA-512", Sha2(2), kTwoBlocks,
       "8e959b75dae313da8cf4f72814fc143f8f7779c6eb9f7fa17299aeadb6889018"
       "501d289e4900f7e4331b99dec4b5433ac7d329eeb6dd26545e96e55b874be909"},
      {"SHA-512", Sha2(2), kMillion,
       "e718483d0ce769644e2e42c7bc15b4638e1f98b13b2044285632a803afa973eb"
       "de0ff244877ea60a4cb0432ce577c31beb009c5c2c49aa2e4eadb217ad8cc09b"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Digest(*c.hashing, c.data), c.digest) << c.what << ", " << c.data.substr(0, 20);
}

// From RFC 4231; the first one is widely published.
TEST(Hashing, GivesThePublishedKeyedDigests) {
  const std::string longKey(131, '\xAA');
  const std::string largerThanBlock = "Test Using Larger Than Block-Size Key - Hash Key First";
  const struct {
    std::uint32_t variant;
    std::string key, data;
    const char* digest;
  } cases[] = {
      {0, "key", "The quick brown fox jumps over the lazy dog",
       "f7bc83f430538424b13298e6aa6fb143ef4d59a14946175997479dbc2d1a3cd8"},
      {0, "Jefe", "what do ya want for nothing?",
       "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843"},
      {1, "Jefe", "what do ya want for nothing?",
       "af45d2e376484031617f78d2b58a6b1b9c7ef464f5a01b47e42ec3736322445e"
       "8e2240ca5e69e2c78b3239ecfab21649"},
      {2, "Jefe", "what do ya want for nothing?",
       "164b7a7bfcf819e2e395fbe73b56e0a387bd64222e831fd610270cd7ea250554"
       "9758bf75c05a994a6d034f65f8f0e6fdcaeab1a34d4a6b4b636e070a38bce737"},
      {0, std::string(20, '\x0B'), "Hi There",
       "b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7"},
      {0, std::string(20, '\xAA'), std::string(50, '\xDD'),
       "773ea91e36800e46854db8ebd09181a72959098b3ef8c122d9635514ced565fe"},
      {0, longKey, largerThanBlock,
       "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54"},
      {1, longKey, largerThanBlock,
       "4ece084485813e9088d2c63a041bc5b44f9ef1012a2b588f3cd11f05033ac4c6"
       "0c2ef6ab4030fe8296248df163f44952"},
      {2, longKey, largerThanBlock,
       "80b24263c7c1a3ebb71493c1dd7be8b49b46d1f41b4aeec1121b013783f8f352"
       "6b56d037e05f2598bd0fd2215d6a1e5295e64f73f63f0aec8b915a985d786598"},
      {0, "", "", "b613679a0814d9ec772f95d778c35fc5ff1697c493715653c6c712144292c5ad"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Digest(*Hmac(c.variant, c.key), c.data), c.digest) << c.variant << ", " << c.key;
}

TEST(Hashing, StartsOverWithEveryCall) {
  for (const auto& hashing : {Md5(), Sha2(0), Sha2(2), Hmac(0, "key"), Hmac(2, "key")}) {
    const std::string empty = Digest(*hashing, ""), abc = Digest(*hashing, "abc");
    EXPECT_NE(empty, abc);
    EXPECT_EQ(Digest(*hashing, "abc"), abc);
    Ptr<IErrorCode> error;
    EXPECT_FALSE(hashing->Hash("abc", 3, nullptr, error.Receive()));
    EXPECT_EQ(Digest(*hashing, "abc"), abc) << "after a failure";
    EXPECT_EQ(Digest(*hashing, ""), empty);
  }
}

TEST(Hashing, ReadsTheKeyOnceAndByItsElements) {
  const auto key = ArrayOf("keyX");
  key->SetData("keyX", 1, 3);
  Ptr<IHashing> hashing;
  ASSERT_TRUE(Data_CreateHashingInstanceHmacSha2(0, key.Get(), hashing.Receive(), nullptr));
  key->SetData("other", 1, 5);
  EXPECT_EQ(Digest(*hashing, "abc"), Digest(*Hmac(0, "key"), "abc"));

  key->SetData("keyX", 2, 2);
  ASSERT_TRUE(Data_CreateHashingInstanceHmacSha2(0, key.Get(), hashing.Receive(), nullptr));
  EXPECT_EQ(Digest(*hashing, "abc"), Digest(*Hmac(0, "ke"), "abc")) << "two elements, two bytes";
}

TEST(Hashing, WithoutAKeyIsAPlainHash) {
  Ptr<IHashing> hashing;
  ASSERT_TRUE(Data_CreateHashingInstanceHmacSha2(1, nullptr, hashing.Receive(), nullptr));
  EXPECT_EQ(Digest(*hashing, "abc"), Digest(*Sha2(1), "abc"));
  EXPECT_NE(Digest(*hashing, "abc"), Digest(*Hmac(1, ""), "abc"));
}

TEST(Hashing, UnknownVariantsFailOnlyWithAKey) {
  for (const std::uint32_t variant : {3u, 7u, UINT32_MAX}) {
    IHashing* out = nullptr;
    Ptr<IErrorCode> plain, keyed;
    EXPECT_TRUE(Data_CreateHashingInstanceSha2(variant, &out, plain.Receive()));
    EXPECT_EQ(out, nullptr);
    EXPECT_FALSE(plain);
    for (const auto& key : {Ptr<IArray>(), ArrayOf("key")}) {
      EXPECT_FALSE(Data_CreateHashingInstanceHmacSha2(variant, key.Get(), &out, keyed.Receive()));
      EXPECT_EQ(MessageOf(keyed), "Hashing method is not supported!");
      EXPECT_EQ(keyed->GetCode(), 2u);
      EXPECT_EQ(out, nullptr);
    }
  }
}

TEST(Hashing, ChecksItsArguments) {
  const auto hashing = Md5();
  const auto held = ArrayOf("held");
  const std::string array = "struct Data::Interfaces::IArray";
  const struct {
    const char* what;
    const void* data;
    bool hasOut;
    IArray* held;
    std::string message;
  } cases[] = {
      {"no data, and the data come first", nullptr, false, nullptr,
       "Pointer of void must not be null!"},
      {"no out-pointer", "", false, nullptr,
       "Pointer to a pointer of " + array +
           " must not be null! Address of return must be specified!"},
      {"an out-pointer in use", "", true, held.Get(),
       "Pointer of " + array + " must be null in order to avoid memory leaks!"},
  };
  for (const auto& c : cases) {
    IArray* out = c.held;
    Ptr<IErrorCode> error;
    EXPECT_FALSE(hashing->Hash(c.data, 0, c.hasOut ? &out : nullptr, error.Receive())) << c.what;
    EXPECT_EQ(MessageOf(error), c.message) << c.what;
    EXPECT_EQ(error->GetCode(), 2u) << c.what;
    EXPECT_EQ(out, c.held) << c.what;
  }
}

TEST(Hashing, FactoriesCheckTheOutPointer) {
  using Factory = std::function<bool(IHashing**, IErrorCode**)>;
  const Factory factories[] = {
      Data_CreateHashingInstanceMD5,
      Data_CreateHashingInstanceSha1,
      [](auto out, auto error) { return Data_CreateHashingInstanceSha2(0, out, error); },
      [](auto out, auto error) {
        return Data_CreateHashingInstanceHmacSha2(0, nullptr, out, error);
      },
  };
  for (const auto& create : factories) {
    Ptr<IErrorCode> noOut, inUse;
    EXPECT_FALSE(create(nullptr, noOut.Receive()));
    EXPECT_EQ(MessageOf(noOut),
              "Pointer to a pointer of struct Data::Interfaces::IHashing must not be null! Address "
              "of return must be specified!");
    const auto held = Md5();
    IHashing* out = held.Get();
    EXPECT_FALSE(create(&out, inUse.Receive()));
    EXPECT_EQ(MessageOf(inUse),
              "Pointer of struct Data::Interfaces::IHashing must be null in order to avoid memory "
              "leaks!");
    EXPECT_EQ(out, held.Get());
  }
}

}  // namespace Data::tests
