#include "Tables/ColumnImpl.h"

#include <utility>
#include <vector>

#include "Containers/VariantListImpl.h"
#include "Core/ExactCast.h"
#include "Core/Guard.h"
#include "Core/Variant.h"
#include "Tables/TableFailures.h"
#include "Tables/TableImpl.h"

namespace Data::impl {

using namespace Interfaces;
using Core::CheckArgument;
using Core::Ptr;
using Structures::_VARIANT;

ColumnImpl::ColumnImpl(std::string name, TableImpl* table, TableHeaderImpl* header,
                       std::int32_t index)
    : name_(std::move(name)), table_(table), header_(header), index_(index) {}

ColumnImpl* ColumnImpl::Of(IColumn* column) { return Core::ExactCast<ColumnImpl>(column); }

TableImpl& ColumnImpl::Table() const {
  if (!table_) Core::ThrowNullInterface<ITable>();
  return *table_;
}

void ColumnImpl::SetName(const char* name) {
  CheckArgument(name);
  if (Table().Header().Find(name))
    throw std::runtime_error(Core::StringFormat("Column with name [%s] already exists!", name));
  header_->Rename(*this, name);
}

bool ColumnImpl::GetValues(IVariantList** out) {
  Core::CheckOutPointer(out);
  const auto values = Core::MakePtr<VariantListImpl>();
  const Ptr<TableImpl> table(&Table());
  const Ptr<ColumnImpl> held(this);
  // Copying a cell may change the table: each row is looked up by its position, rows that are added
  // meanwhile are left out.
  const std::size_t rowCount = table->RowCount();
  for (std::size_t i = 0; i < rowCount && i < table->RowCount(); ++i)
    values->Add(&table->Rows()[i]->Cell(*this));
  *out = Ptr<IVariantList>(values).Detach();
  return true;
}

bool ColumnImpl::GetValue(std::int64_t row, _VARIANT* out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    if (!out) Core::ThrowCannotBeNull();
    Core::CopyVariant(&Table().RowAt(row).Cell(*this), out);
  });
}

ColumnImpl* ColumnImpl::ColumnAtDistance(std::int32_t distance) {
  if (!header_) Core::ThrowNullInterface<ITable>();
  const auto& columns = header_->Columns();
  const std::int64_t index = std::int64_t{Index()} + distance;
  return IsPosition(index, columns.size()) ? columns[static_cast<std::size_t>(index)].Get()
                                           : nullptr;
}

Structures::ValueType ColumnImpl::GetType() {
  if (type_ != ValueType::Null || !table_ || table_->RowCount() == 0) return type_;
  return Core::TypeOf(table_->RowAt(0).Cell(*this));
}

IRow* ColumnImpl::FindRow(const _VARIANT* value) {
  CheckArgument(value);
  return Table().FindFirst(*this, *value);
}

bool ColumnImpl::BelongsTo(ITable* table) { return table_ && table == table_; }

void ColumnImpl::Fill(const _VARIANT* value) {
  CheckArgument(value);
  const Ptr<TableImpl> table(&Table());
  const Ptr<ColumnImpl> held(this);
  const Core::Variant copy(*value);  // the value may be one of the cells
  // A write may change the table: each row is looked up by its position, rows that are added
  // meanwhile are left out.
  const std::size_t rowCount = table->RowCount();
  for (std::size_t i = 0; IsOf(table.Get()) && i < rowCount && i < table->RowCount(); ++i)
    table->Rows()[i]->Write(*this, copy);
}

}  // namespace Data::impl
