#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "Core/Variant.h"
#include "Core/VariantComparison.h"

namespace {

using Core::Variant;

constexpr std::size_t kValues = 1024;

std::mt19937_64 Seeded() { return std::mt19937_64(42); }

std::vector<Variant> Integers() {
  auto random = Seeded();
  std::vector<Variant> values;
  for (std::size_t i = 0; i < kValues; ++i)
    values.emplace_back(static_cast<std::int64_t>(random()));
  return values;
}

std::vector<Variant> Doubles() {
  auto random = Seeded();
  std::vector<Variant> values;
  for (std::size_t i = 0; i < kValues; ++i)
    values.emplace_back(static_cast<double>(random()) / 1024.0);
  return values;
}

/// Texts that differ in their last digits, stored in the record or as objects.
std::vector<Variant> Texts(const char* prefix) {
  auto random = Seeded();
  std::vector<Variant> values;
  for (std::size_t i = 0; i < kValues; ++i)
    values.emplace_back(prefix + std::to_string(random() % 1'000'000));
  return values;
}

const char* const kLongPrefix = "a text that does not fit into the record ";

/// Compares neighbours.
void Compare(benchmark::State& state, const std::vector<Variant>& values) {
  for (auto _ : state)
    for (std::size_t i = 1; i < values.size(); ++i)
      benchmark::DoNotOptimize(Core::Compare(values[i - 1], values[i]));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size() - 1));
}
BENCHMARK_CAPTURE(Compare, integers, Integers());
BENCHMARK_CAPTURE(Compare, doubles, Doubles());
BENCHMARK_CAPTURE(Compare, short_texts, Texts("text "));
BENCHMARK_CAPTURE(Compare, long_texts, Texts(kLongPrefix));

void Copy(benchmark::State& state, const std::vector<Variant>& values) {
  Variant destination;
  for (auto _ : state) {
    for (const Variant& value : values) Core::CopyVariant(&value, &destination);
    benchmark::DoNotOptimize(destination);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}
BENCHMARK_CAPTURE(Copy, integers, Integers());
BENCHMARK_CAPTURE(Copy, long_texts, Texts(kLongPrefix));

void DisplayText(benchmark::State& state, const std::vector<Variant>& values) {
  for (auto _ : state)
    for (const Variant& value : values) benchmark::DoNotOptimize(Core::ToText(value));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}
BENCHMARK_CAPTURE(DisplayText, integers, Integers());
BENCHMARK_CAPTURE(DisplayText, doubles, Doubles());
BENCHMARK_CAPTURE(DisplayText, short_texts, Texts("text "));

}  // namespace
