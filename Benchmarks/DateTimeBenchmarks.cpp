#include <benchmark/benchmark.h>

#include <cstdint>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IDateTime.h"

// Reading, printing and shifting single date-times, including the object or string that an
// operation creates.

namespace {

using Core::Ptr;
using Data::Interfaces::IDateTime;
using Data::Interfaces::IString;

Ptr<IDateTime> Read(const char* text) {
  Ptr<IDateTime> value;
  Data_CreateDateTimeFromIso8601(text, value.Receive(), nullptr);
  return value;
}

void Parse(benchmark::State& state, const char* text) {
  for (auto _ : state) benchmark::DoNotOptimize(Read(text).Get());
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(Parse, Date, "2024-11-14");
BENCHMARK_CAPTURE(Parse, DateAndTime, "2024-11-14T10:20:30.123Z");
BENCHMARK_CAPTURE(Parse, WithOffset, "2024-11-14 10:20:30+02:00");
BENCHMARK_CAPTURE(Parse, UnusualShape, "2024-1-5T7:3:9");

void Print(benchmark::State& state, void (IDateTime::*print)(IString**)) {
  const auto value = Read("2024-11-14T10:20:30.123Z");
  for (auto _ : state) {
    Ptr<IString> text;
    ((*value).*print)(text.Receive());
    benchmark::DoNotOptimize(text.Get());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(Print, Whole, &IDateTime::ToIso8601);
BENCHMARK_CAPTURE(Print, Date, &IDateTime::ToIso8601Date);

void AddTicks(benchmark::State& state) {
  const auto value = Read("1601-1-1T0");
  for (auto _ : state) {
    value->AddTicks(864'000'000'123);
    benchmark::DoNotOptimize(value->GetYear());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(AddTicks);

void AddMonths(benchmark::State& state) {
  const auto value = Read("2024-01-31");
  for (auto _ : state) {
    value->AddMonths(1);
    benchmark::DoNotOptimize(value->GetFileTime());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(AddMonths);

void WeekOfYear(benchmark::State& state) {
  const auto value = Read("2021-01-01");
  for (auto _ : state) benchmark::DoNotOptimize(value->GetWeekOfYear());
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(WeekOfYear);

}  // namespace
