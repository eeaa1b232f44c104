#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "Core/VariantConversions.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IString.h"

namespace {

using Core::Ptr;
using Data::Interfaces::IString;

constexpr std::size_t kLongText = 1 << 20;

std::string Repeat(const std::string& part, std::size_t size) {
  std::string text;
  while (text.size() + part.size() <= size) text += part;
  return text;
}

const std::string kAscii = "The quick brown fox jumps over the lazy dog. ";
const std::string kGerman = "Zwölf Boxkämpfer jagen Viktor quer über den Sylter Deich. ";
const std::string kGreek = "Ξεσκεπάζω την ψυχοφθόρα βδελυγμία. ";

/// UTF-8 to UTF-16 and back; bytes of UTF-8 per second, both ways counted once.
void ConvertAndBack(benchmark::State& state, const std::string& part) {
  const std::string text = Repeat(part, static_cast<std::size_t>(state.range(0)));
  const auto string = Core::MakeString(text);
  for (auto _ : state) {
    benchmark::DoNotOptimize(string->GetWide());
    benchmark::DoNotOptimize(string->GetUtf8());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK_CAPTURE(ConvertAndBack, ascii, kAscii)->Arg(64)->Arg(kLongText);
BENCHMARK_CAPTURE(ConvertAndBack, german, kGerman)->Arg(64)->Arg(kLongText);
BENCHMARK_CAPTURE(ConvertAndBack, greek, kGreek)->Arg(kLongText);

void ConvertToCodePageAndBack(benchmark::State& state) {
  const std::string text = Repeat(kGerman, kLongText);
  const auto string = Core::MakeString(text);
  string->GetWide();
  for (auto _ : state) {
    benchmark::DoNotOptimize(string->GetMultiByte(1252));
    benchmark::DoNotOptimize(string->GetWide());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(ConvertToCodePageAndBack);

void CreateSetAndRelease(benchmark::State& state) {
  const std::string text = Repeat("x", static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    Ptr<IString> string;
    Data_CreateString(string.Receive());
    string->SetUtf8(text.data(), text.size());
    benchmark::DoNotOptimize(string->GetData());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(CreateSetAndRelease)->Arg(20)->Arg(100);

void CompareWithoutCase(benchmark::State& state) {
  const std::string text = Repeat(kAscii, static_cast<std::size_t>(state.range(0)));
  const auto left = Core::MakeString(text), right = Core::MakeString(text);
  for (auto _ : state) benchmark::DoNotOptimize(left->Compare(right.Get(), false));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(CompareWithoutCase)->Arg(64)->Arg(kLongText);

}  // namespace
