#include "Tables/RowFilling.h"

#include <string>

#include "Core/Variant.h"
#include "Data/Interfaces/ITable.h"
#include "Tables/RowImpl.h"
#include "Tables/TableFailures.h"

namespace Data::impl {

using namespace Interfaces;
using Core::Ptr;
using Structures::_VARIANT;

namespace {

/// The column of a new row's cell, unless the caller's code has removed columns meanwhile.
ColumnImpl& ColumnOf(const TableHeaderImpl& header, std::size_t cell) {
  if (cell >= header.ColumnCount()) ThrowCannotSetCell();
  return *header.Columns()[cell];
}

}  // namespace

std::vector<ColumnImpl*> FillFrom(IVariantDictionary& values, const TableHeaderImpl& header,
                                  RowImpl& row) {
  const Ptr<IVariantDictionary> held(&values);
  std::vector<ColumnImpl*> written;
  for (std::size_t i = 0; i < row.CellCount(); ++i) {
    const Core::Variant key(ColumnOf(header, i).Name());
    Ptr<Core::IErrorCode> error;
    const bool hasValue = values.Contains(&key, error.Receive());
    if (error || (hasValue && !values.Get(&key, row.Cells() + i, nullptr))) ThrowCannotSetCell();
    if (hasValue) written.push_back(&ColumnOf(header, i));
  }
  return written;
}

std::vector<ColumnImpl*> FillFrom(IRow& source, const TableHeaderImpl& header, RowImpl& row) {
  const Ptr<IRow> held(&source);
  const Ptr<ITable> table(Core::CheckInterface(source.GetTable()));
  std::vector<ColumnImpl*> written;
  for (std::size_t i = 0; i < row.CellCount(); ++i) {
    const std::string name = ColumnOf(header, i).Name();
    if (!table->HasColumn(name.c_str())) continue;
    const Ptr<IColumn> from(table->GetColumnByName(name.c_str()));
    const _VARIANT* cell = source.GetCellAt(from->GetIndex());
    if (!cell) ThrowCannotSetCell();
    Core::CopyVariant(cell, row.Cells() + i);
    // A Null in a column that has never seen one was not written.
    if (!Core::IsNull(row.Cells()[i]) || from->HasSeenNull())
      written.push_back(&ColumnOf(header, i));
  }
  return written;
}

}  // namespace Data::impl
