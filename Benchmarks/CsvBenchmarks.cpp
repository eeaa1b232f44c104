#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <string>

#include "Core/Variant.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"
#include "Data/Ranges.h"
#include "TableText.h"

namespace {

using Core::Ptr;
using Data::benchmarks::MakeTableText;
using Data::benchmarks::TableKind;
using Data::Interfaces::ITable;

constexpr std::size_t kMegabyte = 1'000'000;
constexpr std::uint64_t kSeed = 20;

std::string TextOf(const benchmark::State& state, TableKind kind) {
  return MakeTableText(kind, static_cast<std::size_t>(state.range(0)) * kMegabyte, kSeed);
}

Ptr<ITable> Read(const std::string& text) {
  Ptr<ITable> table;
  Data_ParseCsv(text.data(), text.size(), table.Receive(), nullptr);
  return table;
}

/// The memory that the records of a table need by themselves: object headers (interface, lock,
/// count), 24 bytes a cell, the members of rows, texts and date-times, and the characters of texts
/// that do not fit into a cell.
std::size_t RecordBytes(const Ptr<ITable>& table) {
  constexpr std::size_t kObject = 8 + 40 + 4, kRow = kObject + 8 + 8 + 24 + 24 + 4 + 1;
  constexpr std::size_t kText = kObject + 4 + 24 + 4, kDateTime = kObject + 8 + 32 + 16;
  std::size_t bytes = 0;
  for (const Data::Row& row : Data::Rows(table)) {
    bytes += kRow + sizeof(void*);
    for (const auto& cell : row.Cells()) {
      bytes += sizeof cell;
      if (!Core::HasForm(cell, Core::StorageForm::Reference)) continue;
      const bool isText = Core::TypeOf(cell) == Core::ValueType::String;
      bytes += isText ? kText + Core::GetStringView(cell).size() + 1 : kDateTime;
    }
  }
  return bytes;
}

/// Bytes of text per second, without the destruction of the table.
void ReadCsv(benchmark::State& state, TableKind kind) {
  const std::string text = TextOf(state, kind);
  for (auto _ : state) {
    auto table = Read(text);
    state.PauseTiming();
    table.Reset();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK_CAPTURE(ReadCsv, mixed, TableKind::Mixed)->Arg(1)->Arg(10)->Arg(50)->Arg(100);
BENCHMARK_CAPTURE(ReadCsv, numeric, TableKind::Numeric)->Arg(10);
BENCHMARK_CAPTURE(ReadCsv, dates, TableKind::Dates)->Arg(10);
BENCHMARK_CAPTURE(ReadCsv, text, TableKind::Text)->Arg(10);

std::size_t ResidentBytes() {
  std::size_t virtualPages = 0, residentPages = 0;
  std::ifstream("/proc/self/statm") >> virtualPages >> residentPages;
  return residentPages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

/// The memory of a table as a multiple of what its records need by themselves.
void MemoryOfTable(benchmark::State& state) {
  const std::string text = TextOf(state, TableKind::Mixed);
  double ratio = 0;
  for (auto _ : state) {
    const std::size_t before = ResidentBytes();
    const auto table = Read(text);
    const std::size_t held = ResidentBytes() - before;
    ratio = static_cast<double>(held) / static_cast<double>(RecordBytes(table));
  }
  state.counters["held/records"] = ratio;
}
BENCHMARK(MemoryOfTable)->Arg(50)->Iterations(1);

void FreeTable(benchmark::State& state) {
  const std::string text = TextOf(state, TableKind::Mixed);
  for (auto _ : state) {
    state.PauseTiming();
    auto table = Read(text);
    state.ResumeTiming();
    table.Reset();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(FreeTable)->Arg(10);

void WriteCsv(benchmark::State& state, TableKind kind) {
  const auto table = Read(TextOf(state, kind));
  std::int64_t bytes = 0;
  for (auto _ : state) {
    Ptr<Data::Interfaces::IString> text;
    Data_ConvertTableToCsv(table.Get(), ",", text.Receive(), false, nullptr);
    bytes += static_cast<std::int64_t>(text->GetLength());
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK_CAPTURE(WriteCsv, mixed, TableKind::Mixed)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK_CAPTURE(WriteCsv, numeric, TableKind::Numeric)->Arg(10);
BENCHMARK_CAPTURE(WriteCsv, dates, TableKind::Dates)->Arg(10);
BENCHMARK_CAPTURE(WriteCsv, text, TableKind::Text)->Arg(10);

}  // namespace
