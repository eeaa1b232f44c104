#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include "Core/Ptr.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IColumn.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/ITable.h"

/// Iteration over tables:
///
///     for (Data::Row row : Data::Rows(table))
///       if (!row.IsNull("height")) total += row.Get<double>("height");
///
///     for (Data::Interfaces::IColumn* column : Data::Columns(table))
///       std::cout << column->GetName() << '\n';
///
/// Failures are those of the interfaces; all are thrown. Do not add or remove rows or columns
/// during an iteration; cells may change. Threads: as for `ITable`.
namespace Data {

/// A row, kept alive by this object. Columns are given by index, by name or as an `IColumn`.
class Row {
 public:
  /// Keeps this row.
  explicit Row(Core::Ptr<Interfaces::IRow> row) : row_(std::move(row)) {}

  /// The index in the table, from 0.
  std::int32_t Index() const { return row_->GetIndex(); }
  /// All cells in column order, in place. Valid until columns are added or removed.
  std::span<const Structures::_VARIANT> Cells() const {
    return {row_->GetCellAt(0), static_cast<std::size_t>(row_->GetCellCount())};
  }

  /// The cell of a column, in place. Valid until columns are added or removed.
  /// @throws std::runtime_error "Column index out of range [%d/%d]!" (index, count), and the
  ///         failures of `IRow::GetColumnByName`
  const Structures::_VARIANT& operator[](std::integral auto index) const {
    return *Cell(static_cast<std::int32_t>(index));
  }
  const Structures::_VARIANT& operator[](const char* name) const {
    return *Cell(row_->GetColumnByName(name)->GetIndex());
  }
  const Structures::_VARIANT& operator[](const std::string& name) const {
    return (*this)[name.c_str()];
  }
  const Structures::_VARIANT& operator[](Interfaces::IColumn* column) const {
    return *Cell(column->GetIndex());
  }

  /// Whether the cell of a column is Null.
  bool IsNull(const auto& column) const { return Core::IsNull((*this)[column]); }
  /// The cell as a C++ value; see `Core::Variant::As`. A std::string_view is valid until the cell
  /// changes.
  template <class T>
  T Get(const auto& column) const {
    return Core::As<T>((*this)[column]);
  }
  /// As `Get`, but `fallback` for a Null cell.
  template <class T>
  T GetOr(const auto& column, T fallback) const {
    return IsNull(column) ? std::move(fallback) : Get<T>(column);
  }

  /// Writes a cell: `row.Set("height", 3.5)`.
  void Set(std::integral auto index, const Core::Variant& value) {
    row_->SetCell(static_cast<std::int32_t>(index), &value);
  }
  void Set(const char* name, const Core::Variant& value) { row_->SetCellByName(name, &value); }
  void Set(const std::string& name, const Core::Variant& value) { Set(name.c_str(), value); }
  void Set(Interfaces::IColumn* column, const Core::Variant& value) {
    row_->SetCellOfColumn(column, &value);
  }

  /// The interface, for everything else.
  Interfaces::IRow* Get() const { return row_.Get(); }
  /// The interface, for everything else.
  Interfaces::IRow* operator->() const { return row_.operator->(); }

 private:
  const Structures::_VARIANT* Cell(std::int32_t index) const {
    const Structures::_VARIANT* cell = row_->GetCellAt(index);
    if (!cell)
      throw std::runtime_error(Core::StringFormat("Column index out of range [%d/%d]!", index,
                                                  static_cast<int>(row_->GetCellCount())));
    return cell;
  }

  Core::Ptr<Interfaces::IRow> row_;
};

namespace detail {

/// The results of `at` for the indexes below a count. Iterators refer to the sequence, which must
/// outlive them.
template <class At>
class Sequence {
 public:
  class Iterator {
   public:
    using value_type = std::invoke_result_t<const At&, std::int64_t>;
    using difference_type = std::ptrdiff_t;

    Iterator() = default;
    Iterator(const Sequence* sequence, std::int64_t position)
        : sequence_(sequence), position_(position) {}
    value_type operator*() const { return sequence_->at_(position_); }
    Iterator& operator++() {
      ++position_;
      return *this;
    }
    Iterator operator++(int) { return {sequence_, position_++}; }
    bool operator==(const Iterator& other) const { return position_ == other.position_; }

   private:
    const Sequence* sequence_ = nullptr;
    std::int64_t position_ = 0;
  };

  Sequence(std::int64_t count, At at) : count_(count), at_(std::move(at)) {}
  Iterator begin() const { return {this, 0}; }
  Iterator end() const { return {this, count_}; }
  std::size_t size() const { return static_cast<std::size_t>(count_); }

 private:
  std::int64_t count_;
  At at_;
};

}  // namespace detail

/// The rows of a table in order, each as a `Row`.
inline auto Rows(Core::Ptr<Interfaces::ITable> table) {
  const std::int64_t count = table->GetRowCount();
  return detail::Sequence(
      count, [table = std::move(table)](std::int64_t i) { return Row(table->GetRow(i)); });
}

/// The columns of a table in order, each as an `IColumn*` without an added reference.
inline auto Columns(Core::Ptr<Interfaces::ITable> table) {
  const std::int64_t count = table->GetColumnCount();
  return detail::Sequence(count, [table = std::move(table)](std::int64_t i) {
    return table->GetColumn(static_cast<std::int32_t>(i));
  });
}

}  // namespace Data
