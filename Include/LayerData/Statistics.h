#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "LayerData/ColumnData.h"
#include "LayerData/Table.h"

namespace layerdata {

namespace detail {

/// The values of a column that are not Null, in ascending order.
template <class T, class ValueAt>
std::vector<T> Sorted(const ColumnData& data, ValueAt&& valueAt) {
  std::vector<T> values;
  values.reserve(data.Size() - data.NullCount());
  for (std::size_t i = 0; i < data.Size(); ++i)
    if (!data.IsNull(i)) values.push_back(valueAt(i));
  std::ranges::sort(values, [](const T& left, const T& right) {
    if constexpr (std::floating_point<T>)  // NaN is the largest
      return left < right || (std::isnan(right) && !std::isnan(left));
    else
      return left < right;
  });
  return values;
}

template <class T>
std::int64_t CountDistinct(const std::vector<T>& sorted) {
  std::int64_t count = sorted.empty() ? 0 : 1;
  for (std::size_t i = 1; i < sorted.size(); ++i) count += sorted[i - 1] < sorted[i];
  return count;
}

/// Between two values, the value at that part of the way from the one to the other.
template <class Number>
double Quantile(const std::vector<Number>& sorted, double part) {
  const double position = part * static_cast<double>(sorted.size() - 1);
  const auto below = static_cast<std::size_t>(position);
  const auto low = static_cast<double>(sorted[below]);
  if (below + 1 == sorted.size()) return low;
  return low +
         (position - static_cast<double>(below)) * (static_cast<double>(sorted[below + 1]) - low);
}

template <class Number>
double Mean(const std::vector<Number>& values) {
  long double sum = 0;
  for (const Number value : values) sum += static_cast<long double>(value);
  return static_cast<double>(sum / static_cast<long double>(values.size()));
}

/// What `Table::Describe` says of one column.
struct Description {
  std::int64_t distinct = 0;
  Value min, q1, median, q3, max, mean;

  template <class T, class ToValue>
  void AddRange(const std::vector<T>& sorted, ToValue&& toValue) {
    distinct = CountDistinct(sorted);
    if (sorted.empty()) return;
    min = toValue(sorted.front());
    max = toValue(sorted.back());
  }
  template <class Number, class ToValue>
  void AddNumbers(const std::vector<Number>& sorted, ToValue&& toValue) {
    AddRange(sorted, toValue);
    if (sorted.empty()) return;
    q1 = toValue(Quantile(sorted, 0.25));
    median = toValue(Quantile(sorted, 0.5));
    q3 = toValue(Quantile(sorted, 0.75));
    mean = toValue(Mean(sorted));
  }
};

inline Value MicrosecondsToValue(std::int64_t microseconds) {
  return DateTime(DateTime::Time(std::chrono::microseconds(microseconds)));
}
inline Value MicrosecondsToValue(double microseconds) {
  return MicrosecondsToValue(static_cast<std::int64_t>(std::llround(microseconds)));
}

inline Description Describe(const ColumnData& data) {
  Description description;
  const auto asItIs = [](const auto& value) { return Value(value); };
  switch (data.Format()) {
    case LD_COLUMN_FORMAT_INT64:
      description.AddNumbers(
          Sorted<std::int64_t>(data, [&](std::size_t i) { return data.Integers()[i]; }), asItIs);
      break;
    case LD_COLUMN_FORMAT_DOUBLE:
      description.AddNumbers(Sorted<double>(data, [&](std::size_t i) { return data.Doubles()[i]; }),
                             asItIs);
      break;
    case LD_COLUMN_FORMAT_BOOL:
      description.AddRange(
          Sorted<std::uint8_t>(data, [&](std::size_t i) { return data.Bools()[i]; }),
          [](std::uint8_t truth) { return Value(truth != 0); });
      break;
    case LD_COLUMN_FORMAT_DATE_TIME:
      description.AddNumbers(
          Sorted<std::int64_t>(data, [&](std::size_t i) { return data.Integers()[i]; }),
          [](auto value) { return MicrosecondsToValue(value); });
      break;
    default:
      description.AddRange(
          Sorted<std::string_view>(data, [&](std::size_t i) { return data.Bytes(i); }), asItIs);
  }
  return description;
}

}  // namespace detail

inline Table Table::Describe() const {
  Table described{"column", "type",   "count", "nulls", "distinct", "min",
                  "q1",     "median", "q3",    "max",   "mean"};
  for (const Column column : Columns()) {
    const ColumnData data(column, LD_COLUMN_FORMAT_AUTOMATIC, true);
    const detail::Description d = detail::Describe(data);
    described.AddRow({column.Name(), data.TypeName(), data.Size() - data.NullCount(),
                      data.NullCount(), d.distinct, d.min, d.q1, d.median, d.q3, d.max, d.mean});
  }
  return described;
}

}  // namespace layerdata
