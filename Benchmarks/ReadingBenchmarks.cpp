// Reading with the options of the C interface: on several threads, and with a report.

#include <LayerData/layerdata.h>
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "TableText.h"

namespace {

using Data::benchmarks::MakeTableText;
using Data::benchmarks::TableKind;

constexpr std::size_t kBytes = 50'000'000;
constexpr std::uint64_t kSeed = 20;

/// Bytes of text per second of real time, without the destruction of the table. The time of the
/// processors shows what the threads cost.
void ReadCsv(benchmark::State& state, TableKind kind, bool wantsReport) {
  const std::string text = MakeTableText(kind, kBytes, kSeed);
  ld_csv_read_options options{};
  options.size = sizeof options;
  options.thread_count = static_cast<std::uint32_t>(state.range(0));
  for (auto _ : state) {
    ld_table* table = nullptr;
    ld_read_report* report = nullptr;
    if (!ld_csv_read(text.data(), text.size(), &options, &table, wantsReport ? &report : nullptr,
                     nullptr))
      state.SkipWithError("The text was not read");
    state.PauseTiming();
    ld_release(table);
    ld_release(report);
    state.ResumeTiming();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
void OnThreads(benchmark::internal::Benchmark* benchmark) {
  benchmark->UseRealTime()->MeasureProcessCPUTime()->RangeMultiplier(2)->Range(1, 8);
}
BENCHMARK_CAPTURE(ReadCsv, mixed, TableKind::Mixed, false)->Apply(OnThreads);
BENCHMARK_CAPTURE(ReadCsv, numeric, TableKind::Numeric, false)->Apply(OnThreads);
BENCHMARK_CAPTURE(ReadCsv, mixed_reported, TableKind::Mixed, true)->Apply(OnThreads);

}  // namespace
