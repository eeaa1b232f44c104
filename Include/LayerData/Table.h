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
#include "LayerData/Csv.h"
#include "LayerData/Handle.h"
#include "LayerData/Json.h"
#include "LayerData/JsonTables.h"
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
                  Receive<ld_column>(ld_table_get_column, table, Index32(index)));
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

/// The direction of sorting, and where Null stands.
enum class Order : std::uint32_t {
  Ascending = LD_SORT_ORDER_ASCENDING,    ///< Null last
  Descending = LD_SORT_ORDER_DESCENDING,  ///< Null last, too
  AscendingNullsFirst = LD_SORT_ORDER_ASCENDING_NULLS_FIRST,
  DescendingNullsFirst = LD_SORT_ORDER_DESCENDING_NULLS_FIRST,
};

/// A column to sort by: `"name"`, or `{"name", Order::Descending}`.
struct SortKey {
  /// A column by its name.
  SortKey(std::string name, Order by = Order::Ascending) : column(std::move(name)), order(by) {}
  SortKey(const char* name, Order by = Order::Ascending) : column(name), order(by) {}

  std::string column;  ///< its name
  Order order;         ///< in which direction
};

/// Which rows without a partner a join keeps.
enum class JoinKind : std::uint32_t {
  Inner = LD_JOIN_KIND_INNER,  ///< none
  Left = LD_JOIN_KIND_LEFT,    ///< those of the left table
  Right = LD_JOIN_KIND_RIGHT,  ///< those of the right table
  Full = LD_JOIN_KIND_FULL,    ///< those of both
};

/// A pair of columns to join on: `"id"`, or `{"id", "station"}` if the names differ. So
/// `Join(other, {"year", "id"})` joins on two columns, `Join(other, {{"id", "station"}})` on one.
struct JoinKey {
  /// A column with the same name in both tables.
  JoinKey(const char* name) : left(name), right(name) {}
  JoinKey(const std::string& name) : left(name), right(name) {}
  /// A column of each table.
  JoinKey(std::string leftName, std::string rightName)
      : left(std::move(leftName)), right(std::move(rightName)) {}

  std::string left;   ///< of this table
  std::string right;  ///< of the other table
};

/// A column of the result of grouping; made by `Count`, `Sum` and their like.
struct Aggregate {
  ld_aggregate_function function;  ///< what is computed
  std::string column;              ///< of which column; empty for the number of rows
  std::string name;                ///< of the new column
};
/// The number of rows.
inline Aggregate Count(std::string name = "count") {
  return {LD_AGGREGATE_FUNCTION_COUNT, {}, std::move(name)};
}
/// The number of values that are not Null.
inline Aggregate CountValues(const std::string& column, const std::string& name = {}) {
  return {LD_AGGREGATE_FUNCTION_COUNT_VALUES, column, name.empty() ? column + "_count" : name};
}
/// The sum of the numbers; see `LD_AGGREGATE_FUNCTION_SUM`.
inline Aggregate Sum(const std::string& column, const std::string& name = {}) {
  return {LD_AGGREGATE_FUNCTION_SUM, column, name.empty() ? column + "_sum" : name};
}
/// The mean of the numbers; see `LD_AGGREGATE_FUNCTION_MEAN`.
inline Aggregate Mean(const std::string& column, const std::string& name = {}) {
  return {LD_AGGREGATE_FUNCTION_MEAN, column, name.empty() ? column + "_mean" : name};
}
/// The first of the least values; Null without any.
inline Aggregate Min(const std::string& column, const std::string& name = {}) {
  return {LD_AGGREGATE_FUNCTION_MIN, column, name.empty() ? column + "_min" : name};
}
/// The first of the greatest values; Null without any.
inline Aggregate Max(const std::string& column, const std::string& name = {}) {
  return {LD_AGGREGATE_FUNCTION_MAX, column, name.empty() ? column + "_max" : name};
}

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

  /// Reads a file of delimited text.
  /// @param path    UTF-8
  /// @param report  receives what was found and lost; null if it is not wanted, which is faster
  /// @throws Error `Cannot read "PATH": ` and the reason, and as `ld_csv_read_file` fails
  static Table ReadCsv(const std::string& path, const CsvOptions& options = {},
                       ReadReport* report = nullptr) {
    return Table(detail::ReadCsv(options, report, [&](auto... arguments) {
      return ld_csv_read_file(path.c_str(), arguments...);
    }));
  }
  /// Reads delimited text.
  static Table ParseCsv(std::string_view text, const CsvOptions& options = {},
                        ReadReport* report = nullptr) {
    return Table(detail::ReadCsv(options, report, [&](auto... arguments) {
      return ld_csv_read(text.data(), text.size(), arguments...);
    }));
  }
  /// Reads a file of JSON: an array of objects, one object, one value, or JSON lines.
  /// @param path    UTF-8
  /// @param report  receives what was found and lost; null if it is not wanted
  /// @throws Error `Cannot read "PATH": ` and the reason, and as `ld_json_read` fails
  static Table ReadJson(const std::string& path, const JsonOptions& options = {},
                        ReadReport* report = nullptr) {
    return Table(detail::ReadJson(options, report, [&](auto... arguments) {
      return ld_json_read_file(path.c_str(), arguments...);
    }));
  }
  /// Reads a text of JSON.
  static Table ParseJson(std::string_view text, const JsonOptions& options = {},
                         ReadReport* report = nullptr) {
    return Table(detail::ReadJson(options, report, [&](auto... arguments) {
      return ld_json_read(text.data(), text.size(), arguments...);
    }));
  }
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

  // -- New tables --

  /// The rows for which a function answers true: `Filter([](Row row) { return ...; })`.
  template <std::predicate<Row> Keep>
  Table Filter(Keep&& keep) const;
  /// The first rows.
  Table Head(std::int64_t count = 10) const;
  /// These columns, in this order.
  Table Select(const std::vector<std::string>& columns) const;
  /// The rows sorted by the first key, equal ones by the second, and so on; stable. The order of
  /// values of different types is stated in layerdata_rows.h.
  Table SortBy(const std::vector<SortKey>& keys) const;
  Table SortBy(SortKey key) const { return SortBy(std::vector{std::move(key)}); }
  /// Every row with every row of another table whose keys are equal. The other's columns follow
  /// without its keys; "_right" is appended to a name that this table has, too.
  Table Join(const Table& right, const std::vector<JoinKey>& keys,
             JoinKind kind = JoinKind::Inner) const;
  Table Join(const Table& right, const char* key, JoinKind kind = JoinKind::Inner) const {
    return Join(right, std::vector{JoinKey(key)}, kind);
  }
  /// A row for each group of rows with equal keys: `GroupBy({"state"}, {Count(), Sum("area")})`.
  Table GroupBy(const std::vector<std::string>& keys,
                const std::vector<Aggregate>& aggregates) const;
  /// A row for each column: its type, the number of its values, Nulls and different values, their
  /// minimum, quartiles, maximum and mean.
  Table Describe() const;

  // -- Writing --

  /// The table as delimited text.
  Text ToCsv(const CsvWriteOptions& options = {}) const {
    ld_string* text = nullptr;
    detail::WriteCsv(
        options, [&](auto... arguments) { return ld_csv_write(Get(), arguments...); }, &text);
    return Text(detail::Handle(text));
  }
  /// Writes a file of delimited text, which replaces an existing one when it is complete.
  /// @param path  UTF-8
  /// @throws Error `Cannot write "PATH": ` and the reason
  void WriteCsv(const std::string& path, const CsvWriteOptions& options = {}) const {
    detail::WriteCsv(options, [&](auto... arguments) {
      return ld_csv_write_file(Get(), path.c_str(), arguments...);
    });
  }
  /// The table as a JSON array of objects.
  Text ToJson(const JsonWriteOptions& options = {}) const {
    ld_string* text = nullptr;
    detail::WriteJson(
        options, [&](auto... arguments) { return ld_json_write(Get(), arguments...); }, &text);
    return Text(detail::Handle(text));
  }
  /// Writes a JSON file, which replaces an existing one when it is complete.
  void WriteJson(const std::string& path, const JsonWriteOptions& options = {}) const {
    detail::WriteJson(options, [&](auto... arguments) {
      return ld_json_write_file(Get(), path.c_str(), arguments...);
    });
  }

  auto begin() const { return Rows().begin(); }
  auto end() const { return Rows().end(); }

  ld_table* Get() const noexcept { return table_.Get(); }

 private:
  detail::Handle<ld_table> table_;
};

}  // namespace layerdata

// The definitions of what is declared above.
#include "LayerData/Operations.h"
#include "LayerData/Statistics.h"
