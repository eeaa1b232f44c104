#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <cstdint>
#include <random>
#include <vector>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IEncoding.h"

// The library's encoder, which creates an array each time, compared with OpenSSL's, which reuses
// one buffer. Both count plain bytes.

namespace {

using Core::Ptr;
using Data::Interfaces::IArray;
using Data::Interfaces::IEncoding;

std::vector<std::uint8_t> RandomBytes(std::size_t size) {
  std::mt19937 generator(1);
  std::vector<std::uint8_t> bytes(size);
  for (auto& byte : bytes) byte = static_cast<std::uint8_t>(generator());
  return bytes;
}

Ptr<IArray> ArrayOf(const std::vector<std::uint8_t>& bytes) {
  Ptr<IArray> array;
  Data_CreateArray(array.Receive());
  array->SetData(bytes.data(), 1, bytes.size());
  return array;
}

Ptr<IEncoding> Base64() {
  Ptr<IEncoding> encoding;
  Data_CreateEncodingInstanceBase64(encoding.Receive(), nullptr);
  return encoding;
}

void CountBytes(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * state.range(0));
}

void EncodeBase64(benchmark::State& state) {
  const auto encoding = Base64();
  const auto input = ArrayOf(RandomBytes(static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) {
    Ptr<IArray> text;
    encoding->Encode(input.Get(), text.Receive(), nullptr);
    benchmark::DoNotOptimize(text->GetData());
  }
  CountBytes(state);
}
BENCHMARK(EncodeBase64)->Arg(64)->Arg(1 << 20);

void EncodeBase64WithOpenSsl(benchmark::State& state) {
  const auto input = RandomBytes(static_cast<std::size_t>(state.range(0)));
  std::vector<std::uint8_t> text(input.size() / 3 * 4 + 5);
  for (auto _ : state) {
    EVP_EncodeBlock(text.data(), input.data(), static_cast<int>(input.size()));
    benchmark::DoNotOptimize(text.data());
  }
  CountBytes(state);
}
BENCHMARK(EncodeBase64WithOpenSsl)->Arg(64)->Arg(1 << 20);

void DecodeBase64(benchmark::State& state) {
  const auto encoding = Base64();
  Ptr<IArray> text;
  encoding->Encode(ArrayOf(RandomBytes(static_cast<std::size_t>(state.range(0)))).Get(),
                   text.Receive(), nullptr);
  for (auto _ : state) {
    Ptr<IArray> bytes;
    encoding->Decode(text.Get(), bytes.Receive(), nullptr);
    benchmark::DoNotOptimize(bytes->GetData());
  }
  CountBytes(state);
}
BENCHMARK(DecodeBase64)->Arg(64)->Arg(1 << 20);

void DecodeBase64WithOpenSsl(benchmark::State& state) {
  std::vector<std::uint8_t> bytes = RandomBytes(static_cast<std::size_t>(state.range(0)));
  std::vector<std::uint8_t> text(bytes.size() / 3 * 4 + 5);
  const int length = EVP_EncodeBlock(text.data(), bytes.data(), static_cast<int>(bytes.size()));
  bytes.resize(bytes.size() + 3);
  for (auto _ : state) {
    EVP_DecodeBlock(bytes.data(), text.data(), length);
    benchmark::DoNotOptimize(bytes.data());
  }
  CountBytes(state);
}
BENCHMARK(DecodeBase64WithOpenSsl)->Arg(64)->Arg(1 << 20);

}  // namespace
