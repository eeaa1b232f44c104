#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "Core/Variant.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IConfiguration.h"
#include "Data/Interfaces/IVariantDictionary.h"

namespace {

using Core::Ptr;
using Core::Variant;
using Data::Interfaces::IConfiguration;
using Data::Interfaces::IVariantDictionary;

/// Distinct keys in random order.
std::vector<std::uint64_t> Numbers(std::int64_t count) {
  std::mt19937_64 random(42);
  std::vector<std::uint64_t> numbers;
  for (std::int64_t i = 0; i < count; ++i) numbers.push_back(random());
  return numbers;
}

Variant IntegerKey(std::uint64_t number) { return Variant(static_cast<std::int64_t>(number)); }
Variant ShortTextKey(std::uint64_t number) {
  return Variant(std::to_string(number % 10'000'000'000));
}
/// As long as a text that the record itself holds can be.
Variant FullTextKey(std::uint64_t number) {
  std::string text = std::to_string(number % 10'000'000'000'000'000);
  return Variant(text.insert(0, 16 - text.size(), '0'));
}
Variant LongTextKey(std::uint64_t number) {
  return Variant("a key that does not fit into the record " + std::to_string(number));
}
Variant NullKey(std::uint64_t) { return Core::Null; }

std::vector<Variant> Keys(std::int64_t count, Variant (*make)(std::uint64_t)) {
  std::vector<Variant> keys;
  for (const std::uint64_t number : Numbers(count)) keys.push_back(make(number));
  return keys;
}

Ptr<IVariantDictionary> Filled(const std::vector<Variant>& keys) {
  Ptr<IVariantDictionary> dictionary;
  Data_CreateVariantDictionary(dictionary.Receive(), nullptr);
  const Variant value(1);
  for (const Variant& key : keys) dictionary->Set(&key, &value, nullptr);
  return dictionary;
}

void CountItems(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Insert(benchmark::State& state, Variant (*make)(std::uint64_t)) {
  const auto keys = Keys(state.range(0), make);
  for (auto _ : state) benchmark::DoNotOptimize(Filled(keys));
  CountItems(state);
}
BENCHMARK_CAPTURE(Insert, integers, IntegerKey)->Arg(1'000)->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(Insert, short_texts, ShortTextKey)->Arg(1'000)->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(Insert, full_texts, FullTextKey)->Arg(1'000)->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(Insert, long_texts, LongTextKey)->Arg(100'000);
BENCHMARK_CAPTURE(Insert, nulls, NullKey)->Range(1'000, 1'000'000);

void Find(benchmark::State& state, Variant (*make)(std::uint64_t)) {
  const auto keys = Keys(state.range(0), make);
  const auto dictionary = Filled(keys);
  Variant value;
  for (auto _ : state)
    for (const Variant& key : keys)
      benchmark::DoNotOptimize(dictionary->Get(&key, &value, nullptr));
  CountItems(state);
}
BENCHMARK_CAPTURE(Find, integers, IntegerKey)->Arg(1'000)->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(Find, short_texts, ShortTextKey)->Arg(1'000)->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(Find, full_texts, FullTextKey)->Arg(1'000)->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(Find, long_texts, LongTextKey)->Arg(100'000);

void ConfigurationSetAndEnumerate(benchmark::State& state) {
  std::vector<std::string> names;
  for (const std::uint64_t number : Numbers(state.range(0)))
    names.push_back(std::to_string(number));
  const Variant value(1);
  for (auto _ : state) {
    Ptr<IConfiguration> configuration;
    Data_CreateConfiguration(configuration.Receive(), nullptr);
    for (const std::string& name : names) {
      configuration->Set(name.c_str(), &value);
      benchmark::DoNotOptimize(configuration->GetNameAt(0));
    }
  }
  CountItems(state);
}
BENCHMARK(ConfigurationSetAndEnumerate)->Range(1'000, 100'000);

}  // namespace
