#include <benchmark/benchmark.h>
#include <rapidjson/document.h>

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

Ptr<ITable> MakeTable(std::size_t csvBytes = 5'000'000) {
  const std::string text =
      Data::benchmarks::MakeTableText(Data::benchmarks::TableKind::Mixed, csvBytes, 20);
  Ptr<ITable> table;
  Data_ParseCsv(text.data(), text.size(), table.Receive(), nullptr);
  return table;
}

Ptr<IJsonDocument> MakeDocument(std::size_t csvBytes = 5'000'000) {
  Ptr<IJsonDocument> document;
  Data_TableToJson(MakeTable(csvBytes).Get(), document.Receive(), nullptr);
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

/// The bytes of the table as CSV; as JSON it has twice as many.
constexpr std::int64_t kSmall = 200, kLarge = 25'000'000;

void JsonToTable(benchmark::State& state) {
  const auto document = MakeDocument(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    Ptr<ITable> table;
    Data_JsonToTable(document.Get(), table.Receive(), nullptr);
  }
  state.SetBytesProcessed(state.iterations() * BytesOf(document));
}
BENCHMARK(JsonToTable)->Arg(kSmall)->Arg(5'000'000)->Arg(kLarge);

/// For comparison: rapidjson's own tree of the same text.
void JsonTree(benchmark::State& state) {
  const auto document = MakeDocument(static_cast<std::size_t>(state.range(0)));
  const std::string text(document->GetContent()->GetUtf8());
  for (auto _ : state) {
    rapidjson::Document tree;
    benchmark::DoNotOptimize(tree.Parse(text.data(), text.size()));
  }
  state.SetBytesProcessed(state.iterations() * BytesOf(document));
}
BENCHMARK(JsonTree)->Arg(kSmall)->Arg(5'000'000)->Arg(kLarge);

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
