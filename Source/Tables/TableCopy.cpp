#include "Tables/TableCopy.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "Core/ExactCast.h"
#include "Tables/NameOf.h"

namespace Data::impl {

using namespace Interfaces;
using Core::Ptr;
using Structures::_VARIANT;

bool CallsBack(ITable& table) {
  const auto* own = Core::ExactCast<TableImpl>(&table);
  return !own || std::ranges::any_of(own->Rows(), [](const auto& row) { return row->CallsBack(); });
}

ColumnImpl& AddColumnLike(IColumn& source, std::string_view name, TableImpl& table) {
  ColumnImpl& column = table.AddNamedColumn(name);
  column.NoteValues({source.GetType(), source.HasSeenNull() != 0});
  column.SetWidth(source.GetWidth());
  column.SetDecimals(source.GetDecimals());
  column.SetHidden(source.IsHidden());
  column.SetReadOnly(source.IsReadOnly());
  return column;
}

Ptr<TableImpl> CopyOf(ITable& table) {
  const Ptr<ITable> held(&table);
  auto copy = Core::MakePtr<TableImpl>();
  copy->Header().SetName(NameOf(*Ptr<ITableHeader>(table.GetHeader())));
  std::vector<std::pair<Ptr<IColumn>, std::size_t>> cells;  // from, to
  for (std::int32_t i = 0; i < table.GetColumnCount(); ++i) {
    const Ptr<IColumn> column(table.GetColumn(i));
    const std::int32_t to = AddColumnLike(*column, NameOf(*column), *copy).Index();
    cells.emplace_back(column, static_cast<std::size_t>(to));
  }
  const std::int64_t rowCount = table.GetRowCount();
  for (std::int64_t i = 0; i < rowCount && i < table.GetRowCount(); ++i) {
    const Ptr<IRow> row(table.GetRow(i));
    _VARIANT* const target = copy->AppendBlankRow().Cells();
    // Copying a cell may change the table: each column is asked for its position.
    for (const auto& [from, to] : cells)
      if (const _VARIANT* cell = row->GetCellAt(from->GetIndex()))
        Core::CopyVariant(cell, target + to);
  }
  return copy;
}

}  // namespace Data::impl
