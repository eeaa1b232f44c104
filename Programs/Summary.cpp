#include "Summary.h"

#include <LayerData/ColumnData.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <unordered_map>

namespace program {

namespace {

using layerdata::Column;
using layerdata::ColumnData;
using layerdata::Row;
using layerdata::Table;

constexpr std::size_t kRanges = 24, kMostTexts = 8;

std::string Rounded(double number, int digits) {
  char text[64];
  return {text,
          std::to_chars(text, std::end(text), number, std::chars_format::general, digits).ptr};
}

// -- Bars --

/// The values that have a place on a line: no Null, no infinity.
std::vector<double> Positions(const ColumnData& data) {
  std::vector<double> positions;
  positions.reserve(data.Size());
  const bool isReal = data.Format() == LD_COLUMN_FORMAT_DOUBLE;
  for (std::size_t i = 0; i < data.Size(); ++i) {
    if (data.IsNull(i)) continue;
    const double position = isReal ? data.Doubles()[i] : static_cast<double>(data.Integers()[i]);
    if (std::isfinite(position)) positions.push_back(position);
  }
  return positions;
}

std::string LabelOf(double position, bool isDate) {
  if (!isDate) return Rounded(position, 6);
  const std::chrono::microseconds time(static_cast<std::int64_t>(position));
  const std::string text = layerdata::DateTime(layerdata::DateTime::Time(time)).ToText();
  return text.substr(0, text.find('T'));
}

/// Equal parts of a line; single integers if they are few.
struct Ranges {
  double low, width;
  std::size_t count;

  Ranges(double least, double most, bool isInteger) : low(least), width(0), count(1) {
    if (most == least) return;
    const bool isEach = isInteger && most - least < static_cast<double>(kRanges);
    count = isEach ? static_cast<std::size_t>(most - least) + 1 : kRanges;
    width = isEach ? 1 : (most / 2 - least / 2) / static_cast<double>(kRanges) * 2;
  }
  std::size_t IndexOf(double position) const {
    if (width == 0) return 0;
    return std::min(static_cast<std::size_t>(position / width - low / width), count - 1);
  }
};

void AddRanges(const ColumnData& data, ColumnSummary& summary) {
  const std::vector<double> positions = Positions(data);
  summary.hasRanges = true;
  summary.otherCount = data.Size() - data.NullCount() - positions.size();
  if (positions.empty()) return;
  const auto [least, most] = std::ranges::minmax(positions);
  const bool isInteger = data.Format() == LD_COLUMN_FORMAT_INT64;
  const bool isDate = data.Format() == LD_COLUMN_FORMAT_DATE_TIME;
  const Ranges ranges(least, most, isInteger);
  summary.bars.resize(ranges.count);
  for (const double position : positions) ++summary.bars[ranges.IndexOf(position)].count;
  for (std::size_t i = 0; i < ranges.count; ++i) {
    const double begin = least + static_cast<double>(i) * ranges.width;
    const std::string from = LabelOf(begin, isDate);
    const std::string to = LabelOf(begin + ranges.width, isDate);
    const bool isOne = from == to || (isInteger && ranges.width == 1);
    summary.bars[i].label = isOne ? from : from + " to " + to;
  }
}

void KeepMostFrequent(std::vector<Bar>& bars, ColumnSummary& summary) {
  const auto isBefore = [](const Bar& left, const Bar& right) {
    return left.count != right.count ? left.count > right.count : left.label < right.label;
  };
  const std::size_t kept = std::min(bars.size(), kMostTexts);
  std::partial_sort(bars.begin(), bars.begin() + static_cast<std::ptrdiff_t>(kept), bars.end(),
                    isBefore);
  for (std::size_t i = kept; i < bars.size(); ++i) summary.otherCount += bars[i].count;
  bars.resize(kept);
  summary.bars = std::move(bars);
}

template <class KeyAt, class LabelOf>
void AddFrequencies(const ColumnData& data, ColumnSummary& summary, KeyAt&& keyAt,
                    LabelOf&& labelOf) {
  const auto values = data.Size() - data.NullCount();
  if (static_cast<std::size_t>(summary.distinct) == values && values > kMostTexts) return;
  std::unordered_map<decltype(keyAt(0)), std::uint64_t> counts;
  for (std::size_t i = 0; i < data.Size(); ++i)
    if (!data.IsNull(i)) ++counts[keyAt(i)];
  std::vector<Bar> bars;
  for (const auto& [key, count] : counts) bars.push_back({labelOf(key), count});
  KeepMostFrequent(bars, summary);
}

void AddBars(const ColumnData& data, ColumnSummary& summary) {
  switch (data.Format()) {
    case LD_COLUMN_FORMAT_INT64:
    case LD_COLUMN_FORMAT_DOUBLE:
    case LD_COLUMN_FORMAT_DATE_TIME:
      return AddRanges(data, summary);
    case LD_COLUMN_FORMAT_BOOL:
      return AddFrequencies(
          data, summary, [&](std::size_t i) { return data.Bools()[i] != 0; },
          [](bool truth) { return std::string(truth ? "true" : "false"); });
    default:
      return AddFrequencies(
          data, summary, [&](std::size_t i) { return data.Bytes(i); },
          [](std::string_view text) { return std::string(text); });
  }
}

// -- Statistics --

std::string Statistic(const layerdata::Cell& cell) {
  return cell.Type() == LD_VALUE_TYPE_DOUBLE ? Rounded(cell.As<double>(), 6) : cell.ToText();
}

/// Dates without a time are read as noon, and shown as they were written.
void ShortenDays(ColumnSummary& summary) {
  for (std::string* text :
       {&summary.min, &summary.q1, &summary.median, &summary.q3, &summary.max, &summary.mean})
    text->resize(std::min(text->find('T'), text->size()));
}

ColumnSummary SummaryOf(const Row& described) {
  ColumnSummary summary;
  summary.name = described["column"].ToText();
  summary.type = described["type"].ToText();
  summary.count = described["count"].As<std::int64_t>();
  summary.nulls = described["nulls"].As<std::int64_t>();
  summary.distinct = described["distinct"].As<std::int64_t>();
  summary.min = described["min"].ToText();
  summary.max = described["max"].ToText();
  summary.q1 = Statistic(described["q1"]);
  summary.median = Statistic(described["median"]);
  summary.q3 = Statistic(described["q3"]);
  summary.mean = Statistic(described["mean"]);
  return summary;
}

}  // namespace

std::vector<ColumnSummary> Summarize(const Table& table) {
  std::vector<ColumnSummary> summaries;
  const Table described = table.Describe();
  for (const Column column : table.Columns()) {
    const ColumnData data(column);
    ColumnSummary& summary = summaries.emplace_back(SummaryOf(described[column.Index()]));
    summary.holdsDays = data.HoldsDays();
    if (summary.holdsDays) ShortenDays(summary);
    AddBars(data, summary);
  }
  return summaries;
}

}  // namespace program
