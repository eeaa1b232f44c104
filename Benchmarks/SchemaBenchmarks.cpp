#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "Core/Variant.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IAllowedValue.h"
#include "Data/Interfaces/ISchema.h"

// A layer schema with 20 allowed values in each column. The time to read, write or copy it is
// proportional to the number of its columns; the time of a setter does not depend on it.

namespace {

using Core::Ptr;
using Data::Interfaces::IAllowedValue;
using Data::Interfaces::IJsonDocument;
using Data::Interfaces::ISchema;
using Data::Structures::ComparisonOperator;
using Data::Structures::ValueType;

constexpr int kAllowedValues = 20;

std::string ColumnName(std::int64_t index) { return "column " + std::to_string(index); }

Ptr<ISchema> SchemaOf(std::int64_t columns) {
  const Data::Structures::_UUID uuid{};
  Ptr<ISchema> schema;
  Data_CreateSchema(&uuid, "Roads", "", schema.Receive(), nullptr);
  for (std::int64_t i = 0; i < columns; ++i) {
    const std::string name = ColumnName(i);
    schema->AddColumn(name.c_str(), ValueType::Int64, 9, 0, nullptr);
    for (int k = 0; k < kAllowedValues; ++k) {
      const Core::Variant value = k;
      Ptr<IAllowedValue> allowed;
      Data_CreateAllowedValue(&value, ComparisonOperator::Equal, "The shown text", "", "none", "",
                              allowed.Receive(), nullptr);
      schema->AddAllowedValue(name.c_str(), allowed.Get(), nullptr);
    }
  }
  return schema;
}

Ptr<IJsonDocument> DocumentOf(ISchema& schema) {
  Ptr<IJsonDocument> document;
  schema.ToJson(document.Receive(), 0, 0, nullptr);
  return document;
}

void CountBytes(benchmark::State& state, IJsonDocument& document) {
  const auto bytes = static_cast<std::int64_t>(document.GetContent()->GetLength());
  state.SetBytesProcessed(state.iterations() * bytes);
  state.SetComplexityN(state.range(0));
}

void ReadSchema(benchmark::State& state) {
  const auto document = DocumentOf(*SchemaOf(state.range(0)));
  for (auto _ : state) {
    Ptr<ISchema> schema;
    Data_ParseSchema(document.Get(), schema.Receive(), nullptr);
    benchmark::DoNotOptimize(schema.Get());
  }
  CountBytes(state, *document);
}
BENCHMARK(ReadSchema)->Arg(1)->Arg(100)->Arg(10'000)->Unit(benchmark::kMillisecond);

void WriteSchema(benchmark::State& state) {
  const auto schema = SchemaOf(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(DocumentOf(*schema).Get());
  CountBytes(state, *DocumentOf(*schema));
}
BENCHMARK(WriteSchema)->Arg(1)->Arg(100)->Arg(10'000)->Unit(benchmark::kMillisecond);

void CloneSchema(benchmark::State& state) {
  const auto schema = SchemaOf(state.range(0));
  for (auto _ : state) {
    Ptr<ISchema> clone;
    schema->Clone(clone.Receive(), nullptr);
    benchmark::DoNotOptimize(clone.Get());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(CloneSchema)->Arg(100)->Arg(10'000)->Unit(benchmark::kMicrosecond);

void SetWidth(benchmark::State& state) {
  const auto schema = SchemaOf(state.range(0));
  const std::string name = ColumnName(state.range(0) / 2);
  for (auto _ : state) schema->SetWidth(name.c_str(), 7, nullptr);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(SetWidth)->Arg(100)->Arg(10'000);

}  // namespace
