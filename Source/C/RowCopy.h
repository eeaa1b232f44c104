#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Core/ObjectPool.h"
#include "Data/Interfaces/ITable.h"
#include "LayerData/layerdata.h"
#include "Tables/TableImpl.h"

/// Copying rows of tables into a new one.
namespace Data::c {

using ColumnNames = std::vector<std::string_view>;

/// A table whose cells can be read without running the caller's code. It is the table itself, or a
/// copy of one that the caller implements or of whose cells some may call back.
class RowSource {
 public:
  /// For reading all columns.
  explicit RowSource(Interfaces::ITable& table);
  /// For reading some columns.
  RowSource(Interfaces::ITable& table, const ColumnNames& names);

  const impl::TableImpl& Table() const { return *table_; }
  std::size_t RowCount() const { return table_->RowCount(); }
  std::size_t ColumnCount() const { return table_->ColumnCount(); }
  /// @throws std::runtime_error "Column " + name + " does not exists"
  std::size_t ColumnOf(std::string_view name) const { return ColumnOf(*table_, name); }
  std::vector<std::size_t> ColumnsOf(const ColumnNames& names) const;
  const Structures::_VARIANT& Cell(std::size_t row, std::size_t column) const {
    return CellOf(*table_->Rows()[row], column);
  }
  /// Fetches a row, or the objects in its cells, into the cache.
  void FetchRow(std::size_t row) const;
  void FetchObjects(std::size_t row) const;

  static const Structures::_VARIANT& CellOf(const impl::RowImpl& row, std::size_t column) {
    const Structures::_VARIANT* cell = row.CellOrNull(static_cast<std::int32_t>(column));
    return cell ? *cell : kNull;
  }

 private:
  static constexpr Structures::_VARIANT kNull = Core::MakeNull();

  static std::size_t ColumnOf(const impl::TableImpl& table, std::string_view name);

  Core::Ptr<impl::TableImpl> table_;
};

/// A new table whose rows are copied from others.
class RowCopy {
 public:
  explicit RowCopy(std::string_view tableName, std::size_t rowCount = 0);
  /// Says how many rows will be added.
  void Expect(std::size_t rowCount) { rowCount_ = rowCount; }

  /// Appends a column of this name like one of a source.
  /// @throws std::runtime_error "Column with name [%s] already exists!"
  impl::ColumnImpl& AddColumn(const RowSource& source, std::size_t column, const std::string& name);
  /// Appends columns like those of a source, under their names.
  void AddColumns(const RowSource& source, std::span<const std::size_t> columns);
  /// Appends a column of any type.
  impl::ColumnImpl& AddColumn(const std::string& name);
  bool HasColumn(const std::string& name) const { return table_->Header().Find(name) != nullptr; }

  /// Appends a row of Null cells. All columns must have been added.
  Structures::_VARIANT* AddRow();
  /// Copies cells of a source's row, one after another, to cells from `to` on.
  static void CopyCells(const RowSource& source, std::size_t row,
                        std::span<const std::size_t> columns, Structures::_VARIANT* to);

  /// How many rows before it is copied a row is fetched into the cache, and what it refers to.
  static constexpr std::size_t kRowsAhead = 16, kObjectsAhead = 8;

  /// Appends copies of rows in any order. The rows to come are fetched into the processor's cache
  /// meanwhile, since otherwise the time is spent waiting for them.
  /// @param order  anything with a size; `rowOf` gives the row of each item
  template <class Order, class RowOf>
  void AddRows(const RowSource& source, std::span<const std::size_t> columns, const Order& order,
               RowOf&& rowOf) {
    for (std::size_t i = 0; i < order.size(); ++i) {
      if (i + kRowsAhead < order.size()) source.FetchRow(rowOf(order[i + kRowsAhead]));
      if (i + kObjectsAhead < order.size()) source.FetchObjects(rowOf(order[i + kObjectsAhead]));
      CopyCells(source, rowOf(order[i]), columns, AddRow());
    }
  }

  impl::TableImpl& Table() { return *table_; }
  /// Passes the table to the caller.
  void Give(ld_table** out);

 private:
  Core::Ptr<impl::TableImpl> table_;
  std::size_t rowCount_;
  std::optional<Core::ObjectPool> pool_;
};

/// 0 to count - 1.
std::vector<std::size_t> AllColumns(const RowSource& source);

}  // namespace Data::c
