#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <cstdint>
#include <vector>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IHashing.h"

// The library's hash objects compared with OpenSSL's contexts, reused in the same way. The library
// also creates an array for each digest; its cost is measured separately.

namespace {

using Core::Ptr;
using Data::Interfaces::IArray;
using Data::Interfaces::IHashing;

constexpr std::int64_t kShort = 64, kLong = 1 << 20;

Ptr<IHashing> Sha256() {
  Ptr<IHashing> hashing;
  Data_CreateHashingInstanceSha2(0, hashing.Receive(), nullptr);
  return hashing;
}

Ptr<IHashing> Md5() {
  Ptr<IHashing> hashing;
  Data_CreateHashingInstanceMD5(hashing.Receive(), nullptr);
  return hashing;
}

Ptr<IHashing> HmacSha256() {
  Ptr<IArray> key;
  Data_CreateArray(key.Receive());
  key->SetData("secret", 1, 6);
  Ptr<IHashing> hashing;
  Data_CreateHashingInstanceHmacSha2(0, key.Get(), hashing.Receive(), nullptr);
  return hashing;
}

std::vector<std::uint8_t> Input(const benchmark::State& state) {
  return std::vector<std::uint8_t>(static_cast<std::size_t>(state.range(0)), 0x5A);
}

void CountBytes(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

void Hash(benchmark::State& state, Ptr<IHashing> (*create)()) {
  const auto hashing = create();
  const auto input = Input(state);
  for (auto _ : state) {
    Ptr<IArray> digest;
    hashing->Hash(input.data(), input.size(), digest.Receive(), nullptr);
    benchmark::DoNotOptimize(digest->GetData());
  }
  CountBytes(state);
}
BENCHMARK_CAPTURE(Hash, Md5, Md5)->Arg(kShort)->Arg(kLong);
BENCHMARK_CAPTURE(Hash, Sha256, Sha256)->Arg(kShort)->Arg(kLong);
BENCHMARK_CAPTURE(Hash, HmacSha256, HmacSha256)->Arg(kShort)->Arg(kLong);

void HashWithOpenSsl(benchmark::State& state, const char* name) {
  EVP_MD* algorithm = EVP_MD_fetch(nullptr, name, nullptr);
  EVP_MD_CTX* context = EVP_MD_CTX_new();
  const auto input = Input(state);
  std::uint8_t digest[EVP_MAX_MD_SIZE];
  EVP_DigestInit_ex2(context, algorithm, nullptr);
  for (auto _ : state) {
    EVP_DigestUpdate(context, input.data(), input.size());
    EVP_DigestFinal_ex(context, digest, nullptr);
    EVP_DigestInit_ex2(context, nullptr, nullptr);
    benchmark::DoNotOptimize(digest);
  }
  CountBytes(state);
  EVP_MD_CTX_free(context);
  EVP_MD_free(algorithm);
}
BENCHMARK_CAPTURE(HashWithOpenSsl, Md5, "MD5")->Arg(kShort)->Arg(kLong);
BENCHMARK_CAPTURE(HashWithOpenSsl, Sha256, "SHA256")->Arg(kShort)->Arg(kLong);

void HmacWithOpenSsl(benchmark::State& state) {
  EVP_MAC* algorithm = EVP_MAC_fetch(nullptr, "HMAC", nullptr);
  EVP_MAC_CTX* context = EVP_MAC_CTX_new(algorithm);
  char name[] = "SHA256";
  const OSSL_PARAM parameters[] = {OSSL_PARAM_construct_utf8_string("digest", name, 0),
                                   OSSL_PARAM_construct_end()};
  const auto input = Input(state);
  std::uint8_t digest[EVP_MAX_MD_SIZE];
  EVP_MAC_init(context, reinterpret_cast<const std::uint8_t*>("secret"), 6, parameters);
  for (auto _ : state) {
    std::size_t size = 0;
    EVP_MAC_update(context, input.data(), input.size());
    EVP_MAC_final(context, digest, &size, sizeof digest);
    EVP_MAC_init(context, nullptr, 0, nullptr);
    benchmark::DoNotOptimize(digest);
  }
  CountBytes(state);
  EVP_MAC_CTX_free(context);
  EVP_MAC_free(algorithm);
}
BENCHMARK(HmacWithOpenSsl)->Arg(kShort)->Arg(kLong);

/// The cost of the result array alone.
void CreateArrayOfDigest(benchmark::State& state) {
  const std::uint8_t digest[32] = {};
  for (auto _ : state) {
    Ptr<IArray> array;
    Data_CreateArray(array.Receive());
    array->SetData(digest, 1, sizeof digest);
    benchmark::DoNotOptimize(array->GetData());
  }
}
BENCHMARK(CreateArrayOfDigest);

}  // namespace
