#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "LayerData/Column.h"
#include "LayerData/Handle.h"
#include "LayerData/Json.h"
#include "LayerData/Row.h"
#include "LayerData/Text.h"
#include "LayerData/Value.h"

namespace layerdata {

namespace detail {

struct RowsOfTable {
  ld_table* table = nullptr;
  Row At(std::int64_t index) const { return Row(Receive<ld_row>(ld_table_get_row, table, index)); }
};

struct ColumnsOfTable {
  ld_table* table = nullptr;
  Column At(std::int64_t index) const {
    return Column(Handle<ld_table>::Share(table),
                  Receive<ld_column>(ld_table_get_column, table, static_cast<std::int32_t>(index)));
  }
};

/// The rows or the columns of a table, as a view that keeps the table.
template <class Source, auto count>
class TableRange : public IndexRange<TableRange<Source, count>> {
 public:
  explicit TableRange(Handle<ld_table> table) noexcept : table_(std::move(table)) {}

  using Iterator = IndexIterator<Source>;
  Iterator begin() const { return {{table_.Get()}, 0}; }
  Iterator end() const { return {{table_.Get()}, Ask<std::int64_t>(count, table_.Get())}; }

 private:
  Handle<ld_table> table_;
};

}  // namespace detail

/// A random-access view of the rows of a table.
using Rows = detail::TableRange<detail::RowsOfTable, ld_table_get_row_count>;
/// A random-access view of the columns of a table.
using Columns = detail::TableRange<detail::ColumnsOfTable, ld_table_get_column_count>;

/// Named columns and rows of cells. Copying a table refers to the same one; operations that select,
/// sort or join make new tables, which share texts and other objects with the old ones.
///
/// Not synchronised: threads may read at the same time, a change needs exclusive access.
class Table {
 public:
  /// An empty table with these columns.
  explicit Table(std::initializer_list<std::string_view> columns = {})
      : table_(detail::Receive<ld_table>(ld_create_table)) {
    for (const std::string_view name : columns) AddColumn(name);
  }
  /// Shares a table of the C interface.
  explicit Table(detail::Handle<ld_table> table) noexcept : table_(std::move(table)) {}

  /// A table of a JSON array of objects, of one object, or of one value.
  /// @throws Error as `ld_json_to_table` fails
  static Table FromJson(const Json& json) {
    return Table(detail::Receive<ld_table>(ld_json_to_table, json.Get()));
  }

  // -- Columns --

  /// The columns, as a random-access view.
  layerdata::Columns Columns() const { return layerdata::Columns(table_); }
  /// The number of columns.
  std::int64_t ColumnCount() const {
    return detail::Ask<std::int64_t>(ld_table_get_column_count, Get());
  }
  /// Whether there is a column of this name. Names are compared byte by byte.
  bool HasColumn(std::string_view name) const {
    return detail::Ask<bool>(ld_table_has_column, Get(), std::string(name).c_str());
  }
  /// The column of this name.
  /// @throws Error "There is no column 'name'!"
  Column operator[](std::string_view name) const {
    return Column(table_, detail::ColumnNamed(ld_table_get_column_by_name, Get(), name));
  }
  Column operator[](const char* name) const { return (*this)[std::string_view(name)]; }
  Column operator[](const std::string& name) const { return (*this)[std::string_view(name)]; }
  /// Appends a column of Null cells; a column of this name is given instead.
  Column AddColumn(std::string_view name) {
    return Column(
        table_, detail::Receive<ld_column>(ld_table_add_column, Get(), std::string(name).c_str()));
  }
  /// Appends a column and computes its cells: `AddColumn("area", [](Row row) { return ...; })`.
  template <std::invocable<Row> Compute>
  Column AddColumn(std::string_view name, Compute&& compute) {
    Column column = AddColumn(name);
    for (const Row row : Rows()) row[column] = Value(std::invoke(compute, row));
    return column;
  }
  /// Removes a column and its cells.
  void RemoveColumn(const std::string& name) {
    detail::Call(ld_table_remove_column, Get(), name.c_str());
  }

  // -- Rows --

  /// The rows, as a random-access view.
  layerdata::Rows Rows() const { return layerdata::Rows(table_); }
  /// The number of rows.
  std::int64_t RowCount() const { return detail::Ask<std::int64_t>(ld_table_get_row_count, Get()); }
  /// The row at a position.
  /// @throws Error "There is no row 7: there are 5."
  Row operator[](std::integral auto index) const {
    return Rows()[detail::CheckIndex(index, RowCount(), "row")];
  }
  /// Appends a row; cells without a value are Null.
  /// @throws Error "Error while setting cell value" for more values than columns
  Row AddRow(std::span<const Value> values) {
    static_assert(sizeof(Value) == sizeof(ld_variant));
    return Row(detail::Receive<ld_row>(ld_table_add_row, Get(),
                                       reinterpret_cast<const ld_variant*>(values.data()),
                                       std::uint64_t{values.size()}));
  }
  Row AddRow(std::initializer_list<Value> values) {
    return AddRow(std::span(values.begin(), values.size()));
  }
  /// Removes a row. The positions of the rows after it decrease by one.
  void RemoveRow(std::int64_t index) { detail::Call(ld_table_remove_row, Get(), index); }

  auto begin() const { return Rows().begin(); }
  auto end() const { return Rows().end(); }

  ld_table* Get() const noexcept { return table_.Get(); }

 private:
  detail::Handle<ld_table> table_;
};

}  // namespace layerdata
