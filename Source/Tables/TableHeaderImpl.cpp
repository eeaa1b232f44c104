#include "Tables/TableHeaderImpl.h"

#include <utility>

#include "Containers/ObjectListImpl.h"
#include "Core/Guard.h"
#include "Tables/TableFailures.h"

namespace Data::impl {

using namespace Interfaces;
using Core::CheckArgument;
using Core::Ptr;

TableHeaderImpl::~TableHeaderImpl() {
  for (const auto& column : columns_) column->LeaveHeader();
}

IColumn* TableHeaderImpl::GetColumn(std::int32_t index, Core::IErrorCode** error) {
  return Core::Guarded(error, [&]() -> IColumn* { return &ColumnAt(index); });
}

bool TableHeaderImpl::Contains(IColumn* column) {
  Core::CheckInterface(column);
  const ColumnImpl* searched = ColumnImpl::Of(column);
  return searched && Find(searched->Name()) == searched;
}

bool TableHeaderImpl::HasColumn(const char* name) {
  CheckArgument(name);
  return Find(name) != nullptr;
}

bool TableHeaderImpl::GetColumns(IObjectList** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    std::vector<Ptr<Core::IObject>> columns(columns_.begin(), columns_.end());
    *out = Core::MakePtr<ObjectListImpl>(std::move(columns)).Detach();
  });
}

void TableHeaderImpl::SetName(const char* name) {
  name_ = name ? std::string(name) : std::string();
}

ColumnImpl& TableHeaderImpl::ColumnAt(std::int64_t index) const {
  if (!IsPosition(index, columns_.size()))
    ThrowColumnOutOfRange(index, static_cast<std::int64_t>(columns_.size()));
  return *columns_[static_cast<std::size_t>(index)].Get();
}

ColumnImpl* TableHeaderImpl::Find(std::string_view name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

ColumnImpl& TableHeaderImpl::Column(const char* name) const {
  CheckArgument(name);
  ColumnImpl* column = Find(name);
  if (!column) Core::ThrowMissingKey();
  return *column;
}

ColumnImpl& TableHeaderImpl::Insert(Ptr<ColumnImpl> column, std::size_t position) {
  ColumnImpl& inserted = *column;
  // Reserved first, so that nothing fails once the name is entered; doubled, so that adding columns
  // takes linear time.
  if (columns_.size() == columns_.capacity()) columns_.reserve(2 * columns_.size() + 1);
  byName_.emplace(inserted.Name(), &inserted);
  columns_.insert(columns_.begin() + static_cast<std::ptrdiff_t>(position), std::move(column));
  ++revision_;
  return inserted;
}

void TableHeaderImpl::Remove(ColumnImpl& column) {
  byName_.erase(column.Name());
  auto position = columns_.begin();
  while (position->Get() != &column) ++position;
  for (auto next = position + 1; next != columns_.end(); ++next)
    (*next)->SetIndex((*next)->Index() - 1);
  const Ptr<ColumnImpl> removed = std::move(*position);
  columns_.erase(position);
  ++revision_;
  removed->SetIndex(-1);
  removed->LeaveTable();
  removed->LeaveHeader();
}

void TableHeaderImpl::Rename(ColumnImpl& column, std::string name) {
  auto entry = byName_.extract(column.Name());
  column.Rename(std::move(name));
  entry.key() = column.Name();
  byName_.insert(std::move(entry));
}

}  // namespace Data::impl
