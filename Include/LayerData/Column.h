#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "LayerData/Handle.h"
#include "LayerData/Indexes.h"
#include "LayerData/Row.h"

namespace layerdata {

namespace detail {

struct CellsOfColumn {
  ld_table* table = nullptr;
  std::int32_t column = 0;
  Cell At(std::int64_t index) const {
    return Cell(Receive<ld_row>(ld_table_get_row, table, index), column);
  }
};

}  // namespace detail

/// A column of a table: a range of its cells. Copying a column refers to the same one.
class Column : public detail::IndexRange<Column> {
 public:
  Column(detail::Handle<ld_table> table, detail::Handle<ld_column> column) noexcept
      : table_(std::move(table)), column_(std::move(column)) {}

  /// The name.
  std::string Name() const { return detail::Ask<const char*>(ld_column_get_name, Get()); }
  /// @throws Error if the table has another column of this name
  void SetName(const std::string& name) { detail::Call(ld_column_set_name, Get(), name.c_str()); }
  /// The position in the table.
  std::int32_t Index() const { return detail::Ask<std::int32_t>(ld_column_get_index, Get()); }
  /// The type of the value written last; Null if there was none.
  ld_value_type Type() const { return detail::Ask<ld_value_type>(ld_column_get_type, Get()); }
  /// Whether a Null was ever written to a cell of the column.
  bool HasSeenNull() const {
    return detail::Ask<std::uint8_t>(ld_column_has_seen_null, Get()) != 0;
  }

  /// Writes one value to all rows.
  void Fill(const Value& value) { detail::Call(ld_column_fill, Get(), &value.Record()); }
  /// All cells as C++ values, for instance `As<std::optional<double>>()`.
  /// @throws Error for the first cell that `Cell::As` refuses
  template <class T>
  std::vector<T> As() const {
    std::vector<T> values;
    values.reserve(static_cast<std::size_t>(end() - begin()));
    for (const Cell cell : *this) values.push_back(cell.template As<T>());
    return values;
  }

  using Iterator = detail::IndexIterator<detail::CellsOfColumn>;
  Iterator begin() const { return {{table_.Get(), Index()}, 0}; }
  Iterator end() const {
    return {{table_.Get(), Index()},
            detail::Ask<std::int64_t>(ld_table_get_row_count, table_.Get())};
  }

  ld_column* Get() const noexcept { return column_.Get(); }
  /// The table that the column belongs to, without a reference added.
  ld_table* GetTable() const noexcept { return table_.Get(); }

 private:
  detail::Handle<ld_table> table_;
  detail::Handle<ld_column> column_;
};

inline Cell Row::operator[](const Column& column) const { return Cell(row_, column.Index()); }

}  // namespace layerdata
