#pragma once

#include <concepts>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "LayerData/Handle.h"
#include "LayerData/Indexes.h"
#include "LayerData/Value.h"

namespace layerdata {

class Column;

/// A cell of a row, read and written in place: `row["height"] = 2 * row["height"].As<double>()`.
/// Copying a cell refers to the same one; assigning to it writes it.
class Cell : public Readable<Cell> {
 public:
  Cell(detail::Handle<ld_row> row, std::int64_t column) noexcept
      : row_(std::move(row)), column_(detail::Index32(column)) {}
  Cell(const Cell&) = default;
  Cell& operator=(const Value& value) {
    detail::Call(ld_row_set_cell, row_.Get(), column_, &value.Record());
    return *this;
  }
  Cell& operator=(const Cell& other) { return *this = Value(other); }

  /// Valid until the row changes.
  /// @throws Error "The row has no cell 7!" for a column that it has lost, or never had
  const ld_variant& Record() const {
    const auto* cell = detail::Ask<ld_variant*>(ld_row_get_cell_at, row_.Get(), column_);
    if (!cell) throw Error("The row has no cell " + std::to_string(column_) + "!");
    return *cell;
  }
  /// As `Readable::As`, but a failure names the column and the row.
  template <class T>
  T Converted() const {
    const ld_variant& record = Record();
    try {
      return detail::Convert<T>(record);
    } catch (const Error& error) {
      throw error.InCell(ColumnName(), detail::Ask<std::int32_t>(ld_row_get_index, row_.Get()));
    }
  }

 private:
  std::string ColumnName() const {
    const auto column = detail::Receive<ld_column>(ld_row_get_column, row_.Get(), column_);
    return detail::Ask<const char*>(ld_column_get_name, column.Get());
  }

  detail::Handle<ld_row> row_;
  std::int32_t column_;
};

namespace detail {

struct CellsOfRow {
  ld_row* row = nullptr;
  Cell At(std::int64_t index) const { return Cell(Handle<ld_row>::Share(row), index); }
};

/// The column of this name in a row or table.
/// @throws Error "There is no column 'name'!"
template <class Function, class Owner>
Handle<ld_column> ColumnNamed(Function find, Owner* owner, std::string_view name) {
  const std::string text(name);
  try {
    return Receive<ld_column>(find, owner, text.c_str());
  } catch (const Error& error) {
    if (error.what() != std::string_view("invalid unordered_map<K, T> key")) throw;
    throw Error("There is no column '" + text + "'!");
  }
}

}  // namespace detail

/// A row of a table: a range of its cells. Copying a row refers to the same one, which lives as
/// long as somebody refers to it, also when its table has removed it.
class Row {
 public:
  explicit Row(detail::Handle<ld_row> row) noexcept : row_(std::move(row)) {}

  /// The cell of a column.
  /// @throws Error "There is no column 'name'!"
  Cell operator[](std::string_view name) const {
    const auto column = detail::ColumnNamed(ld_row_get_column_by_name, Get(), name);
    return Cell(row_, detail::Ask<std::int32_t>(ld_column_get_index, column.Get()));
  }
  Cell operator[](const char* name) const { return (*this)[std::string_view(name)]; }
  Cell operator[](const std::string& name) const { return (*this)[std::string_view(name)]; }
  /// The fastest way for many rows.
  Cell operator[](const Column& column) const;
  Cell operator[](std::integral auto index) const {
    return Cell(row_, detail::CheckIndex(index, Size(), "column"));
  }
  /// `row["name"].As<T>()`
  template <class T, class Key>
  T Get(const Key& key) const {
    return (*this)[key].template As<T>();
  }

  /// The number of cells.
  std::int64_t Size() const { return detail::Ask<std::int64_t>(ld_row_get_cell_count, Get()); }
  /// The position in the table; -1 for a row that is in none.
  std::int64_t Index() const { return detail::Ask<std::int32_t>(ld_row_get_index, Get()); }

  using Iterator = detail::IndexIterator<detail::CellsOfRow>;
  Iterator begin() const { return {{Get()}, 0}; }
  Iterator end() const { return {{Get()}, Size()}; }

  /// Whether both are the same row.
  friend bool operator==(const Row& left, const Row& right) noexcept {
    return left.Get() == right.Get();
  }
  friend std::ostream& operator<<(std::ostream& out, const Row& row) {
    const char* separator = "";
    for (const Cell cell : row) out << std::exchange(separator, " | ") << cell;
    return out;
  }

  ld_row* Get() const noexcept { return row_.Get(); }

 private:
  detail::Handle<ld_row> row_;
};

}  // namespace layerdata

#if defined(__cpp_lib_format)
template <>
struct std::formatter<layerdata::Cell> : layerdata::detail::TextFormatter<layerdata::Cell> {};
#endif
