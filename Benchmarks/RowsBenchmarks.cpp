// Columns and rows through the C interface: a million rows of seven columns.

#include <LayerData/layerdata.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::int64_t kRows = 1'000'000;

/// The arrays that the table is made of.
class Columns {
 public:
  Columns() {
    std::mt19937_64 random(7);
    ids_.resize(kRows);
    std::iota(ids_.begin(), ids_.end(), 0);
    std::shuffle(ids_.begin(), ids_.end(), random);
    for (std::int64_t i = 0; i < kRows; ++i) {
      categories_.push_back(static_cast<std::int64_t>(random() % 1000));
      prices_.push_back(static_cast<double>(random() % 1'000'000) / 100);
      dates_.push_back(static_cast<std::int64_t>(random() % 1'000'000'000) * 1'000'000);
      flags_.push_back(random() % 2);
      AddText(names_, "name " + std::to_string(random() % 100'000));
      AddText(remarks_, "a remark that is too long for a cell " + std::to_string(random()));
    }
    Add(LD_COLUMN_FORMAT_INT64, ids_.data());
    Add(LD_COLUMN_FORMAT_INT64, categories_.data());
    Add(LD_COLUMN_FORMAT_DOUBLE, prices_.data());
    Add(LD_COLUMN_FORMAT_DATE_TIME, dates_.data());
    Add(LD_COLUMN_FORMAT_BOOL, flags_.data());
    AddTexts(names_);
    AddTexts(remarks_);
  }

  ld_table* MakeTable(std::uint64_t count) const {
    std::vector<const ld_column_data*> columns;
    for (const ld_column_data& column : data_) columns.push_back(&column);
    ld_table* table = nullptr;
    if (!ld_create_table_from_columns(names, columns.data(), count, &table, nullptr)) std::abort();
    return table;
  }

  const ld_column_data& operator[](std::size_t column) const { return data_[column]; }

  static constexpr const char* names[] = {"id",   "category", "price", "date",
                                          "flag", "name",     "remark"};

 private:
  struct Texts {
    std::string bytes;
    std::vector<std::int64_t> offsets = {0};
  };

  static void AddText(Texts& texts, const std::string& text) {
    texts.bytes += text;
    texts.offsets.push_back(static_cast<std::int64_t>(texts.bytes.size()));
  }
  ld_column_data& Add(ld_column_format format, const void* values) {
    ld_column_data& column = data_.emplace_back();
    column.size = sizeof column;
    column.format = format;
    column.length = kRows;
    column.values = values;
    return column;
  }
  void AddTexts(const Texts& texts) {
    ld_column_data& column = Add(LD_COLUMN_FORMAT_TEXT, nullptr);
    column.offsets = texts.offsets.data();
    column.bytes = texts.bytes.data();
    column.byte_count = texts.bytes.size();
  }

  std::vector<std::int64_t> ids_, categories_, dates_;
  std::vector<double> prices_;
  std::vector<std::uint8_t> flags_;
  Texts names_, remarks_;
  std::vector<ld_column_data> data_;
};

const Columns& TheColumns() {
  static const Columns columns;
  return columns;
}
ld_table* TheTable() {
  static ld_table* const table = TheColumns().MakeTable(7);
  return table;
}

/// Times a function that makes a table; freeing the table is not timed.
template <class Make>
void TimeTable(benchmark::State& state, Make&& make) {
  TheTable();
  for (auto _ : state) {
    ld_table* table = nullptr;
    if (!make(&table)) std::abort();
    state.PauseTiming();
    ld_release(table);
    state.ResumeTiming();
  }
}

void CreateTable(benchmark::State& state) {
  TimeTable(state, [](ld_table** out) { return (*out = TheColumns().MakeTable(7)) != nullptr; });
}
BENCHMARK(CreateTable)->Unit(benchmark::kMillisecond);

void GetColumn(benchmark::State& state) {
  state.SetLabel(Columns::names[state.range(0)]);
  for (auto _ : state) {
    const ld_column_data* data = nullptr;
    ld_object* owner = nullptr;
    if (!ld_table_get_column_data(TheTable(), static_cast<std::int32_t>(state.range(0)), 0, -1,
                                  nullptr, &data, &owner, nullptr))
      std::abort();
    ld_release(owner);
  }
}
BENCHMARK(GetColumn)->DenseRange(0, 6)->Unit(benchmark::kMillisecond);

void SetColumn(benchmark::State& state) {
  state.SetLabel(Columns::names[state.range(0)]);
  const auto column = static_cast<std::size_t>(state.range(0));
  for (auto _ : state)
    if (!ld_table_set_column_data(TheTable(), static_cast<std::int32_t>(column), 0,
                                  &TheColumns()[column], nullptr))
      std::abort();
}
BENCHMARK(SetColumn)->Arg(0)->Arg(5)->Arg(6)->Unit(benchmark::kMillisecond);

void Filter(benchmark::State& state) {
  const std::vector<std::uint8_t> bitmap(kRows / 8, 0x55);
  TimeTable(state, [&](ld_table** out) {
    return ld_table_filter(TheTable(), bitmap.data(), kRows, out, nullptr);
  });
}
BENCHMARK(Filter)->Unit(benchmark::kMillisecond);

void Select(benchmark::State& state) {
  const char* const names[] = {"remark", "id", "price"};
  TimeTable(state,
            [&](ld_table** out) { return ld_table_select(TheTable(), names, 3, out, nullptr); });
}
BENCHMARK(Select)->Unit(benchmark::kMillisecond);

void Sort(benchmark::State& state) {
  const std::vector<std::vector<ld_sort_key>> keys = {
      {{"id", 0}}, {{"price", 1}}, {{"name", 0}}, {{"remark", 0}}, {{"category", 0}, {"date", 1}}};
  const auto& used = keys[static_cast<std::size_t>(state.range(0))];
  state.SetLabel(std::string(used[0].column) + (used.size() > 1 ? " and another" : ""));
  TimeTable(state, [&](ld_table** out) {
    return ld_table_sort(TheTable(), used.data(), used.size(), out, nullptr);
  });
}
BENCHMARK(Sort)->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

/// With a table of each value of a column and the number of its rows.
void Join(benchmark::State& state) {
  const char* const names[] = {Columns::names[state.range(0)]};
  state.SetLabel(names[0]);
  const ld_aggregate count = {LD_AGGREGATE_FUNCTION_COUNT, nullptr, "count"};
  ld_table* counts = nullptr;
  if (!ld_table_group(TheTable(), names, 1, &count, 1, &counts, nullptr)) std::abort();
  TimeTable(state, [&](ld_table** out) {
    return ld_table_join(TheTable(), counts, names, nullptr, 1, LD_JOIN_KIND_FULL, out, nullptr);
  });
  ld_release(counts);
}
BENCHMARK(Join)->Arg(0)->Arg(1)->Arg(5)->Arg(6)->Unit(benchmark::kMillisecond);

void Group(benchmark::State& state) {
  const char* const names[] = {Columns::names[state.range(0)]};
  state.SetLabel(names[0]);
  const ld_aggregate aggregates[] = {{LD_AGGREGATE_FUNCTION_COUNT, nullptr, "n"},
                                     {LD_AGGREGATE_FUNCTION_SUM, "price", "s"},
                                     {LD_AGGREGATE_FUNCTION_MEAN, "id", "m"},
                                     {LD_AGGREGATE_FUNCTION_MIN, "date", "low"},
                                     {LD_AGGREGATE_FUNCTION_MAX, "name", "high"}};
  TimeTable(state, [&](ld_table** out) {
    return ld_table_group(TheTable(), names, 1, aggregates, 5, out, nullptr);
  });
}
BENCHMARK(Group)->Arg(0)->Arg(1)->Arg(5)->Arg(6)->Unit(benchmark::kMillisecond);

}  // namespace
