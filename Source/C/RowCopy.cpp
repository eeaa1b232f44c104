#include "C/RowCopy.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "Core/ExactCast.h"
#include "Core/Failures.h"
#include "Tables/TableCopy.h"

namespace Data::c {

using impl::TableImpl;
using Interfaces::ITable;
using Structures::_VARIANT;

// -- Sources --

RowSource::RowSource(ITable& table)
    : table_(impl::CallsBack(table) ? impl::CopyOf(table)
                                    : Core::Ptr<TableImpl>(static_cast<TableImpl*>(&table))) {}

RowSource::RowSource(ITable& table, const ColumnNames& names)
    : table_(Core::ExactCast<TableImpl>(&table)) {
  const auto callsBack = [&](std::size_t column) {
    return std::ranges::any_of(
        table_->Rows(), [&](const auto& row) { return impl::CallsBack(CellOf(*row, column)); });
  };
  if (!table_ || std::ranges::any_of(ColumnsOf(names), callsBack)) table_ = impl::CopyOf(table);
}

std::size_t RowSource::ColumnOf(const TableImpl& table, std::string_view name) {
  const impl::ColumnImpl* column = table.Header().Find(name);
  if (!column) throw std::runtime_error("Column " + std::string(name) + " does not exists");
  return static_cast<std::size_t>(column->Index());
}

std::vector<std::size_t> RowSource::ColumnsOf(const ColumnNames& names) const {
  std::vector<std::size_t> columns;
  for (const std::string_view name : names) columns.push_back(ColumnOf(name));
  return columns;
}

void RowSource::FetchRow(std::size_t row) const {
  constexpr std::size_t kLine = 64;
  const char* const begin = reinterpret_cast<const char*>(table_->Rows()[row].Get());
  const std::size_t size = sizeof(impl::RowImpl) + ColumnCount() * sizeof(_VARIANT);
  // The cells usually follow the row. Wide rows are fetched by the processor once it reads them.
  for (std::size_t i = 0; i < std::min(size, 8 * kLine); i += kLine) __builtin_prefetch(begin + i);
}

void RowSource::FetchObjects(std::size_t row) const {
  const impl::RowImpl& from = *table_->Rows()[row];
  for (std::size_t i = 0; i < std::min<std::size_t>(from.CellCount(), 32); ++i)
    if (const Core::IObject* object = Core::ReferencedObject(CellOf(from, i)))
      __builtin_prefetch(object, 1);
}

std::vector<std::size_t> AllColumns(const RowSource& source) {
  std::vector<std::size_t> columns(source.ColumnCount());
  std::iota(columns.begin(), columns.end(), std::size_t{0});
  return columns;
}

// -- Copies --

RowCopy::RowCopy(std::string_view tableName, std::size_t rowCount)
    : table_(Core::MakePtr<TableImpl>()), rowCount_(rowCount) {
  table_->Header().SetName(std::string(tableName).c_str());
}

impl::ColumnImpl& RowCopy::AddColumn(const std::string& name) {
  if (HasColumn(name)) throw std::runtime_error("Column with name [" + name + "] already exists!");
  return table_->AddNamedColumn(name);
}

impl::ColumnImpl& RowCopy::AddColumn(const RowSource& source, std::size_t column,
                                     const std::string& name) {
  AddColumn(name);
  return impl::AddColumnLike(*source.Table().Header().Columns()[column], name, *table_);
}

void RowCopy::AddColumns(const RowSource& source, std::span<const std::size_t> columns) {
  for (const std::size_t column : columns)
    AddColumn(source, column, source.Table().Header().Columns()[column]->Name());
}

_VARIANT* RowCopy::AddRow() {
  if (!pool_)
    pool_.emplace(rowCount_ * (sizeof(impl::RowImpl) + table_->ColumnCount() * sizeof(_VARIANT)));
  return table_->AppendBlankRow(&*pool_).Cells();
}

void RowCopy::CopyCells(const RowSource& source, std::size_t row,
                        std::span<const std::size_t> columns, _VARIANT* to) {
  const impl::RowImpl& from = *source.Table().Rows()[row];
  for (const std::size_t column : columns) {
    const _VARIANT& cell = RowSource::CellOf(from, column);
    Core::AddReferenceOf(cell);
    *to++ = cell;
  }
}

void RowCopy::Give(ld_table** out) {
  *out = reinterpret_cast<ld_table*>(static_cast<ITable*>(table_.Detach()));
}

}  // namespace Data::c
