#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "LayerData/Handle.h"
#include "LayerData/Table.h"

namespace layerdata {

namespace detail {

/// A bit for each row of a table.
class Bitmap {
 public:
  explicit Bitmap(std::int64_t rows)
      : rows_(static_cast<std::uint64_t>(rows)), bytes_(rows_ / 8 + 1) {}

  void Set(std::size_t row) noexcept {
    bytes_[row / 8] = static_cast<std::uint8_t>(bytes_[row / 8] | 1u << row % 8);
  }
  Handle<ld_table> RowsOf(ld_table* table) const {
    return Receive<ld_table>(ld_table_filter, table, bytes_.data(), rows_);
  }

 private:
  std::uint64_t rows_;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace detail

template <std::predicate<Row> Keep>
Table Table::Filter(Keep&& keep) const {
  detail::Bitmap kept(RowCount());
  std::size_t index = 0;
  for (const Row row : Rows()) {
    if (std::invoke(keep, row)) kept.Set(index);
    ++index;
  }
  return Table(kept.RowsOf(Get()));
}

inline Table Table::Head(std::int64_t count) const {
  detail::Bitmap kept(RowCount());
  const std::int64_t end = std::clamp<std::int64_t>(count, 0, RowCount());
  for (std::int64_t row = 0; row < end; ++row) kept.Set(static_cast<std::size_t>(row));
  return Table(kept.RowsOf(Get()));
}

inline Table Table::Select(const std::vector<std::string>& columns) const {
  const auto names = detail::Names(columns);
  return Table(
      detail::Receive<ld_table>(ld_table_select, Get(), names.data(), std::uint64_t{names.size()}));
}

inline Table Table::SortBy(const std::vector<SortKey>& keys) const {
  std::vector<ld_sort_key> records;
  records.reserve(keys.size());
  for (const SortKey& key : keys)
    records.push_back({key.column.c_str(), static_cast<ld_sort_order>(key.order)});
  return Table(detail::Receive<ld_table>(ld_table_sort, Get(),
                                         static_cast<const ld_sort_key*>(records.data()),
                                         std::uint64_t{records.size()}));
}

inline Table Table::Join(const Table& right, const std::vector<JoinKey>& keys,
                         JoinKind kind) const {
  const auto leftNames = detail::Names(keys, &JoinKey::left);
  const auto rightNames = detail::Names(keys, &JoinKey::right);
  return Table(detail::Receive<ld_table>(ld_table_join, Get(), right.Get(), leftNames.data(),
                                         rightNames.data(), std::uint64_t{keys.size()},
                                         static_cast<ld_join_kind>(kind)));
}

inline Table Table::GroupBy(const std::vector<std::string>& keys,
                            const std::vector<Aggregate>& aggregates) const {
  const auto names = detail::Names(keys);
  std::vector<ld_aggregate> records;
  records.reserve(aggregates.size());
  for (const Aggregate& aggregate : aggregates)
    records.push_back({aggregate.function, aggregate.column.c_str(), aggregate.name.c_str()});
  return Table(detail::Receive<ld_table>(
      ld_table_group, Get(), names.data(), std::uint64_t{names.size()},
      static_cast<const ld_aggregate*>(records.data()), std::uint64_t{records.size()}));
}

}  // namespace layerdata
