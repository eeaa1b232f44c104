#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"
#include "TableText.h"

namespace {

using Core::Ptr;
using Data::Interfaces::IJsonDocument;
using Data::Interfaces::IString;
using Data::Interfaces::ITable;

Ptr<ITable> MakeTable() {
  const std::string text =
      Data::benchmarks::MakeTableText(Data::benchmarks::TableKind::Mixed, 5'000'000, 20);
  Ptr<ITable> table;
  Data_ParseCsv(text.data(), text.size(), table.Receive(), nullptr);
  return table;
}

Ptr<IJsonDocument> MakeDocument() {
  Ptr<IJsonDocument> document;
  Data_TableToJson(MakeTable().Get(), document.Receive(), nullptr);
  return document;
}

std::int64_t BytesOf(const Ptr<IJsonDocument>& document) {
  return static_cast<std::int64_t>(document->GetContent()->GetLength());
}

void TableToJson(benchmark::State& state) {
  const auto table = MakeTable();
  std::int64_t bytes = 0;
  for (auto _ : state) {
    Ptr<IJsonDocument> document;
    Data_TableToJson(table.Get(), document.Receive(), nullptr);
    bytes += BytesOf(document);
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(TableToJson);

void JsonToTable(benchmark::State& state) {
  const auto document = MakeDocument();
  for (auto _ : state) {
    Ptr<ITable> table;
    Data_JsonToTable(document.Get(), table.Receive(), nullptr);
  }
  state.SetBytesProcessed(state.iterations() * BytesOf(document));
}
BENCHMARK(JsonToTable);

void CheckJson(benchmark::State& state) {
  const auto document = MakeDocument();
  const std::string text(document->GetContent()->GetUtf8());
  for (auto _ : state) document->SetContent(text.data(), text.size());
  state.SetBytesProcessed(state.iterations() * BytesOf(document));
}
BENCHMARK(CheckJson);

void CompactJson(benchmark::State& state) {
  const auto document = MakeDocument();
  for (auto _ : state) {
    Ptr<IString> text;
    document->ToCompactString(text.Receive(), nullptr);
  }
  state.SetBytesProcessed(state.iterations() * BytesOf(document));
}
BENCHMARK(CompactJson);

void CompareJson(benchmark::State& state) {
  const auto left = MakeDocument(), right = MakeDocument();
  for (auto _ : state) benchmark::DoNotOptimize(left->Equals(right.Get()));
  state.SetBytesProcessed(state.iterations() * (BytesOf(left) + BytesOf(right)));
}
BENCHMARK(CompareJson);

}  // namespace
