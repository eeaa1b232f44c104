#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "Core/Variant.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IColumn.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/ITable.h"
#include "Data/Ranges.h"

namespace {

using Core::Ptr;
using Core::Variant;
using Data::Interfaces::ITable;
using Data::Structures::MergeMode;

/// A row's values: integers, or texts too long to be stored in a cell.
enum class Values { Integers, Texts };

Variant MakeKey(Values values, std::uint64_t number) {
  if (values == Values::Integers) return static_cast<std::int64_t>(number);
  return "the key of row " + std::to_string(number);
}

Ptr<ITable> MakeColumns(std::int64_t count) {
  Ptr<ITable> table;
  Data_CreateTable(table.Receive(), nullptr);
  for (std::int64_t i = 0; i < count; ++i) table->AddColumn(("column" + std::to_string(i)).c_str());
  return table;
}

/// Rows of a key and a number. The keys ascend by random steps.
Ptr<ITable> MakeKeyed(Values values, std::int64_t rows) {
  const auto table = MakeColumns(2);
  std::mt19937_64 random(7);
  for (std::int64_t i = 0; i < rows; ++i) {
    const auto number = static_cast<std::uint64_t>(i) << 32 | random() >> 32;
    const Variant cells[] = {MakeKey(values, number), i};
    table->AddRow(cells, 2);
  }
  return table;
}

void AppendRows(benchmark::State& state) {
  const auto columns = static_cast<std::size_t>(state.range(0));
  const std::vector<Variant> cells(columns, Variant(7));
  constexpr int kRows = 100000;
  for (auto _ : state) {
    auto table = MakeColumns(state.range(0));
    for (int i = 0; i < kRows; ++i) table->AddRow(cells.data(), columns);
    state.PauseTiming();
    table.Reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(AppendRows)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);

void FreeRows(benchmark::State& state) {
  const auto columns = static_cast<std::size_t>(state.range(0));
  const std::vector<Variant> cells(columns, Variant(7));
  constexpr int kRows = 100000;
  for (auto _ : state) {
    state.PauseTiming();
    auto table = MakeColumns(state.range(0));
    for (int i = 0; i < kRows; ++i) table->AddRow(cells.data(), columns);
    state.ResumeTiming();
    table.Reset();
  }
  state.SetItemsProcessed(state.iterations() * kRows);
}
BENCHMARK(FreeRows)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);

/// Adds columns one by one to a table that has rows.
void AddColumnsToRows(benchmark::State& state) {
  constexpr int kRows = 20000;
  for (auto _ : state) {
    state.PauseTiming();
    auto table = MakeColumns(1);
    for (int i = 0; i < kRows; ++i) table->AddRow(nullptr, 0);
    state.ResumeTiming();
    for (std::int64_t i = 0; i < state.range(0); ++i)
      table->AddColumn(("later" + std::to_string(i)).c_str());
    state.PauseTiming();
    table.Reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kRows * state.range(0));
}
BENCHMARK(AddColumnsToRows)->Arg(8)->Arg(64)->Unit(benchmark::kMillisecond);

void WriteCellsByName(benchmark::State& state) {
  const auto table = MakeKeyed(Values::Integers, 1000);
  const Variant value(3.5);
  for (auto _ : state)
    for (Data::Row row : Data::Rows(table)) row->SetCellByName("column1", &value);
  state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(WriteCellsByName);

void SumAColumn(benchmark::State& state) {
  const auto table = MakeKeyed(Values::Integers, 100000);
  auto* column = table->GetColumn(1);
  for (auto _ : state) {
    double total = 0;
    for (const Data::Row row : Data::Rows(table)) total += row.Get<double>(column);
    benchmark::DoNotOptimize(total);
  }
  state.SetItemsProcessed(state.iterations() * 100000);
}
BENCHMARK(SumAColumn);

void BuildIndex(benchmark::State& state, Values values) {
  const auto table = MakeKeyed(values, state.range(0));
  for (auto _ : state) table->BuildIndex(0, table->GetColumn(0), nullptr);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(BuildIndex, integers, Values::Integers)->Arg(1000)->Arg(1000000);
BENCHMARK_CAPTURE(BuildIndex, texts, Values::Texts)->Arg(1000)->Arg(100000);

/// Every key once, in an order unrelated to that of the rows.
void FindRow(benchmark::State& state, Values values) {
  const auto table = MakeKeyed(values, state.range(0));
  table->BuildIndex(0, table->GetColumn(0), nullptr);
  std::vector<Variant> keys;
  for (const Data::Row row : Data::Rows(table)) keys.emplace_back(row[0]);
  std::shuffle(keys.begin(), keys.end(), std::mt19937_64(3));
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(table->FindRow(&keys[next]));
    if (++next == keys.size()) next = 0;
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(FindRow, integers, Values::Integers)->Arg(1000)->Arg(1000000);
BENCHMARK_CAPTURE(FindRow, texts, Values::Texts)->Arg(1000)->Arg(100000);

/// Each row finds one partner.
void Merge(benchmark::State& state, Values values) {
  const auto left = MakeKeyed(values, state.range(0)), right = MakeKeyed(values, state.range(0));
  for (auto _ : state) {
    Ptr<ITable> merged;
    left->Merge(right.Get(), "column0", MergeMode::Matching, merged.Receive(), nullptr);
    state.PauseTiming();
    merged.Reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(Merge, integers, Values::Integers)
    ->Arg(1000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Merge, texts, Values::Texts)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
