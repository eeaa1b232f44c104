#include "Tables/TableImpl.h"

#include <algorithm>
#include <cstdarg>
#include <span>
#include <string>
#include <utility>

#include "Containers/ObjectListImpl.h"
#include "Core/Guard.h"
#include "Core/Variant.h"
#include "Tables/RowFilling.h"
#include "Tables/TableCopy.h"
#include "Tables/TableFailures.h"
#include "Tables/TableMerge.h"

namespace Data::impl {

using namespace Interfaces;
using Core::CheckArgument;
using Core::Ptr;
using Structures::_VARIANT;
using Structures::MergeMode;

TableImpl::TableImpl() : header_(Core::MakePtr<TableHeaderImpl>()) {}

TableImpl::~TableImpl() {
  for (const auto& column : header_->Columns()) column->LeaveTable();
}

// -- Columns --

IColumn* TableImpl::AddColumn(const char* name) {
  CheckArgument(name);
  return &AddNamedColumn(name);
}

ColumnImpl& TableImpl::AddNamedColumn(std::string_view name) {
  if (ColumnImpl* existing = header_->Find(name)) return *existing;
  MakeRoomForCell();
  ColumnImpl& column = InsertNamedColumn(name, ColumnCount(), ColumnCount());
  InsertCells(static_cast<std::size_t>(column.Index()));
  return column;
}

ColumnImpl& TableImpl::InsertNamedColumn(std::string_view name, std::size_t index,
                                         std::size_t position) {
  return header_->Insert(Core::MakePtr<ColumnImpl>(std::string(name), this, header_.Get(),
                                                   static_cast<std::int32_t>(index)),
                         position);
}

IColumn* TableImpl::InsertColumn(const char* name, std::int32_t index) {
  CheckArgument(name);
  if (ColumnImpl* existing = header_->Find(name)) return existing;
  if (index < 0) throw std::runtime_error("Column index < 0 [" + std::to_string(index) + "]!");
  const std::int64_t count = GetColumnCount();
  if (index > count) ThrowColumnOutOfRange(index, count);
  if (index == count) return AddColumn(name);

  ColumnImpl& column = InsertNamedColumn(name, static_cast<std::size_t>(index), 0);
  // Every pass starts at the new column, so this increments its successor's index forever; callers
  // rely on the state of the columns meanwhile.
  while (ColumnImpl* next = column.ColumnAtDistance(1)) next->IncrementIndex();
  OnColumnAdded(&column);
  return &column;
}

void TableImpl::RemoveColumn(const char* name) { DropColumn(ExistingColumn(name)); }
void TableImpl::RemoveColumnAt(std::int32_t index) { DropColumn(ColumnAt(index)); }

void TableImpl::DropColumn(ColumnImpl& column) {
  std::vector<Core::Variant> releasedLast;
  releasedLast.reserve(rows_.size());
  if (IsIndexed(column)) ClearIndexes();
  const auto index = static_cast<std::size_t>(column.Index());
  header_->Remove(column);
  for (const auto& row : rows_) {
    auto cell = Core::Variant::Adopt(row->RemoveCell(index));
    if (CallsBack(cell)) releasedLast.push_back(std::move(cell));
  }
}

void TableImpl::OnColumnAdded(IColumn* column) {
  Core::CheckInterface(column);
  const ColumnImpl& added = OwnColumn(column);
  MakeRoomForCell();
  ClearIndexes();  // the rows' keys are shifted
  InsertCells(static_cast<std::size_t>(added.Index()));
}

ColumnImpl& TableImpl::OwnColumn(IColumn* column) const {
  ColumnImpl* own = ColumnImpl::Of(column);
  if (!own || !own->IsOf(this))
    throw std::runtime_error("Column does not belong to the current table!");
  return *own;
}

void TableImpl::MakeRoomForCell() {
  for (const auto& row : rows_) row->ReserveCell();
}

void TableImpl::InsertCells(std::size_t index) noexcept {
  for (const auto& row : rows_) row->InsertCell(index);
}

ColumnImpl& TableImpl::ExistingColumn(const char* name) const {
  CheckArgument(name);
  ColumnImpl* column = header_->Find(name);
  if (!column) throw std::runtime_error("Column " + std::string(name) + " does not exists");
  return *column;
}

// -- Rows --

RowImpl* TableImpl::RowOrNull(std::int64_t index) const {
  return IsPosition(index, rows_.size()) ? rows_[static_cast<std::size_t>(index)].Get() : nullptr;
}

RowImpl& TableImpl::RowAt(std::int64_t index) const {
  RowImpl* row = RowOrNull(index);
  if (!row) ThrowRowOutOfRange(index, static_cast<std::int64_t>(rows_.size()));
  return *row;
}

void TableImpl::CheckHasColumns() const {
  if (ColumnCount() == 0)
    throw std::runtime_error(
        Core::StringFormat("Table %s must contain at least one column before you insert new row!",
                           header_->GetName()));
}

void TableImpl::CheckInsertPosition(std::int64_t index) const {
  if (!IsPosition(index, rows_.size() + 1))
    ThrowRowOutOfRange(index, static_cast<std::int64_t>(rows_.size()));
}

void TableImpl::Renumber(std::size_t first) {
  for (std::size_t i = first; i < rows_.size(); ++i) rows_[i]->SetIndex(i);
}

RowImpl& TableImpl::AppendBlankRow(Core::ObjectPool* pool) {
  rows_.push_back(RowImpl::Make(this, ColumnCount(), pool));
  RowImpl& row = *rows_.back();
  row.SetIndex(rows_.size() - 1);
  return row;
}

IRow* TableImpl::AddRow(const _VARIANT* values, std::uint64_t count) {
  CheckHasColumns();
  return &InsertValues(kEnd, values, count);
}

IRow* TableImpl::InsertRow(std::int64_t index, const _VARIANT* values, std::uint64_t count) {
  CheckHasColumns();
  CheckInsertPosition(index);
  return &InsertValues(static_cast<std::size_t>(index), values, count);
}

RowImpl& TableImpl::InsertValues(std::size_t index, const _VARIANT* values, std::uint64_t count) {
  if (count > ColumnCount()) ThrowCannotSetCell();
  CheckValues(values, count);
  const auto held = HeldIf(AnyCallsBack(values, count) || IndexCallsBack(), this);
  const std::uint64_t revision = header_->Revision();
  auto row = RowImpl::Make(this, ColumnCount());
  for (std::size_t i = 0; i < count; ++i) {
    Core::CopyVariant(values + i, row->Cells() + i);
  }
  RowImpl& inserted = Insert(index, std::move(row), revision);
  for (std::size_t i = 0; i < count; ++i)
    header_->Columns()[i]->NoteValue(Core::TypeOf(inserted.Cells()[i]));
  return inserted;
}

template <class Source>
RowImpl& TableImpl::InsertFrom(std::size_t index, Source& source) {
  const Ptr<TableImpl> held(this);
  const std::uint64_t revision = header_->Revision();
  auto row = RowImpl::Make(this, ColumnCount());
  const auto written = FillFrom(source, *header_, *row);
  RowImpl& inserted = Insert(index, std::move(row), revision);
  for (ColumnImpl* column : written) column->NoteValue(Core::TypeOf(inserted.Cell(*column)));
  return inserted;
}

IRow* TableImpl::AddRowFromDictionary(IVariantDictionary* values) {
  Core::CheckInterface(values);
  CheckHasColumns();
  return &InsertFrom(kEnd, *values);
}

IRow* TableImpl::AddRowCopy(IRow* source) {
  Core::CheckInterface(source);
  CheckHasColumns();
  return &InsertFrom(kEnd, *source);
}

IRow* TableImpl::InsertRowCopy(std::int64_t index, IRow* source) {
  Core::CheckInterface(source);
  CheckHasColumns();
  CheckInsertPosition(index);
  return &InsertFrom(static_cast<std::size_t>(index), *source);
}

/// Inserts a complete row. The caller's code may have run since the header had the given revision,
/// and may run while the index reads keys, but not after that.
RowImpl& TableImpl::Insert(std::size_t index, Ptr<RowImpl> row, std::uint64_t revision) {
  std::optional<UniqueIndex::Slot> slot;
  if (index_ && header_->Revision() == revision)
    slot = SlotInIndex(*row, row->Cell(*header_->IndexColumn()));
  if (header_->Revision() != revision) ThrowCannotSetCell();
  const std::size_t position = index == kEnd ? rows_.size() : index;
  CheckInsertPosition(static_cast<std::int64_t>(position));
  if (rows_.size() == rows_.capacity()) rows_.reserve(2 * rows_.size() + 1);
  if (slot) index_->Enter(*row, *slot);
  RowImpl& inserted = *row;
  rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(position), std::move(row));
  Renumber(position);
  return inserted;
}

void TableImpl::RemoveRow(std::int64_t index) {
  RowAt(index);
  RemoveRows(index, 1);
}

void TableImpl::RemoveRows(std::int64_t first, std::int64_t count) {
  const std::int64_t rowCount = GetRowCount();
  if (first < 0 || first > rowCount || count < 0) ThrowRowOutOfRange(first, rowCount);
  if (count > rowCount - first) ThrowRowOutOfRange(rowCount, rowCount);
  const auto begin = rows_.begin() + first, end = begin + count;
  const std::vector<Ptr<RowImpl>> releasedLast(begin, end);
  for (const auto& row : releasedLast) {
    RemoveFromIndex(*row);
    row->LeaveTable();
  }
  rows_.erase(begin, end);
  Renumber(static_cast<std::size_t>(first));
}

void TableImpl::ClearRows() { const auto releasedLast = TakeRows(); }

/// Empties the table. Rows that cannot call back are freed at once, so that freeing millions of
/// rows touches each only once.
/// @return the rows still to be released, and null for all others
std::vector<Ptr<RowImpl>> TableImpl::TakeRows() {
  ClearIndexes();
  auto removed = std::exchange(rows_, {});
  for (auto& row : removed) {
    row->LeaveTable();
    RowImpl* const left = row.Detach();
    if (!left->ReleaseQuietly()) row = Ptr<RowImpl>::Adopt(left);
  }
  return removed;
}

void TableImpl::ReleaseItems(Teardown& teardown) {
  // At once, not when each row is destroyed: their cells may use the table.
  for (const auto& row : TakeRows())
    if (row) row->ReleaseItems(teardown);
}

bool TableImpl::GetRows(IObjectList** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    std::vector<Ptr<Core::IObject>> rows(rows_.begin(), rows_.end());
    *out = Core::MakePtr<ObjectListImpl>(std::move(rows)).Detach();
  });
}

// -- Cells --

RowImpl& TableImpl::RowAtAddress(std::int64_t row, std::int32_t column) const {
  RowImpl* found = RowOrNull(row);
  if (!found || !IsPosition(column, ColumnCount()))
    throw std::runtime_error("Index out of range (" + std::to_string(row) + ", " +
                             std::to_string(column) + ") [" + std::to_string(RowCount()) + ", " +
                             std::to_string(ColumnCount()) + "]!");
  return *found;
}

_VARIANT* TableImpl::GetCellAt(std::int64_t row, std::int32_t column) {
  return RowAtAddress(row, column).CellOrNull(column);
}

void TableImpl::SetCell(std::int64_t row, std::int32_t column, const _VARIANT* value) {
  RowAtAddress(row, column).SetCell(column, value);
}

void TableImpl::SetCellByName(std::int64_t row, const char* column, const _VARIANT* value) {
  RowImpl& written = RowAt(row);
  ColumnImpl& existing = ExistingColumn(column);
  CheckArgument(value);
  written.Write(existing, *value);
}

bool TableImpl::GetCell(std::int64_t row, std::int32_t column, _VARIANT* out) {
  RowAt(row).TryGetCell(column, out, nullptr);
  return true;
}

bool TableImpl::GetCellByName(std::int64_t row, const char* column, _VARIANT* out) {
  RowImpl& read = RowAt(row);
  Core::CopyVariant(&read.Cell(ExistingColumn(column)), out);
  return true;
}

// -- Index --

void TableImpl::ClearIndexes() {
  if (index_) index_->Clear();
  index_.reset();
  header_->SetIndexColumn(nullptr);
}

bool TableImpl::IndexCallsBack() const { return index_ && index_->CallsBack(); }

namespace {

/// The cells of a column, held while an index over them is built.
class HeldColumn {
 public:
  HeldColumn(TableImpl& table, ColumnImpl& column) : table_(&table), column_(&column) {
    const std::size_t rowCount = table.RowCount();
    cells_.reserve(rowCount);
    for (std::size_t i = 0; i < rowCount && i < table.RowCount(); ++i) {
      const Ptr<RowImpl> row = table.Rows()[i];
      cells_.emplace_back(row, Core::Variant(row->Cell(column)));
    }
  }

  const auto& Cells() const { return cells_; }
  /// Whether the table still has these rows and cells.
  bool IsCurrent() const {
    const auto isSame = [&](const auto& held, const Ptr<RowImpl>& row) {
      const _VARIANT &before = held.second, &now = row->Cell(*column_);
      return held.first == row && before.type == now.type && before.value[0] == now.value[0] &&
             before.value[1] == now.value[1];
    };
    return std::equal(cells_.begin(), cells_.end(), table_->Rows().begin(), table_->Rows().end(),
                      isSame);
  }

 private:
  Ptr<TableImpl> table_;
  Ptr<ColumnImpl> column_;
  std::vector<std::pair<Ptr<RowImpl>, Core::Variant>> cells_;
};

void AddToIndex(UniqueIndex& index, RowImpl& row, const _VARIANT& value) {
  const auto slot = index.SlotFor(value, row);
  if (!slot) throw std::runtime_error("Index can be build only on top of unique values!");
  index.Enter(row, *slot);
}

}  // namespace

bool TableImpl::BuildIndex(std::uint8_t ignoreNulls, IColumn* column, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    ColumnImpl* indexed = ColumnImpl::Of(column);
    if (!indexed || !indexed->IsOf(this)) throw std::runtime_error("Invalid column!");
    BuildIndexOver(*indexed, ignoreNulls != 0);
  });
}

void TableImpl::BuildIndexOver(ColumnImpl& column, bool ignoreNulls) {
  auto index = std::make_shared<UniqueIndex>(column, ignoreNulls, RowCount());
  std::optional<HeldColumn> held;
  if (std::ranges::any_of(rows_, [&](auto& row) { return CallsBack(row->Cell(column)); })) {
    held.emplace(*this, column);
    for (const auto& [row, cell] : held->Cells()) AddToIndex(*index, *row, cell);
    if (!column.IsOf(this) || !held->IsCurrent())
      throw std::runtime_error("Table has changed while its index was built!");
  } else {
    for (const auto& row : rows_) AddToIndex(*index, *row, row->Cell(column));
  }
  ClearIndexes();
  index_ = std::move(index);
  header_->SetIndexColumn(&column);
}

void TableImpl::RebuildIndex() {
  try {
    BuildIndexOver(*header_->IndexColumn(), index_->IgnoresNulls());
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    ClearIndexes();
  }
}

/// Finds the slot of a row for its new value, or drops an index that cannot hold it.
std::optional<UniqueIndex::Slot> TableImpl::SlotInIndex(const RowImpl& row, const _VARIANT& value) {
  const std::shared_ptr<UniqueIndex> index = index_;
  const std::uint64_t revision = index->Revision();
  std::optional<UniqueIndex::Slot> slot;
  try {
    slot = index->SlotFor(value, row);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    // A value without a hash has no slot.
  }
  // The caller's code may have changed or dropped the index while keys were read.
  if (!slot || index->Revision() != revision) {
    ClearIndexes();
    return std::nullopt;
  }
  return slot;
}

void TableImpl::MoveInIndex(RowImpl& row, const _VARIANT& value) {
  const auto slot = SlotInIndex(row, value);
  if (slot && !index_->Move(row, *slot)) ClearIndexes();
}

void TableImpl::RemoveFromIndex(const RowImpl& row) noexcept {
  if (index_ && !index_->Remove(row)) ClearIndexes();
}

IRow* TableImpl::FindRow(const _VARIANT* key) {
  CheckArgument(key);
  if (!index_)
    throw std::runtime_error(
        Core::StringFormat("Table %s does not have an index!", header_->GetName()));
  return FindInIndex(*key);
}

bool TableImpl::FindsByIndex(const ColumnImpl& column, const _VARIANT& key) const {
  return IsIndexed(column) && index_->Covers(key);
}

RowImpl* TableImpl::FindInIndex(const _VARIANT& key) {
  if (!index_->CallsBack() && !CallsBack(key)) return index_->Find(SearchKey(key));
  Ptr<RowImpl> found;
  {
    const std::shared_ptr<UniqueIndex> index = index_;
    const Core::Variant copy(key);
    found = index->FindHeld(SearchKey(copy));
  }
  return found && found->GetTable() == this ? found.Get() : nullptr;
}

template <class Visit>
void TableImpl::ForEachMatch(ColumnImpl& column, const _VARIANT& key, Visit&& visit) {
  const Ptr<TableImpl> heldTable(this);
  const Ptr<ColumnImpl> heldColumn(&column);
  const Core::Variant copy(key);
  const SearchKey searched(copy);
  const std::size_t rowCount = rows_.size();  // the search ends though a comparison adds rows
  for (std::size_t i = 0; i < rowCount && i < rows_.size(); ++i) {
    RowImpl& row = *rows_[i].Get();
    const _VARIANT& cell = row.Cell(column);
    const bool callsBack = searched.CallsBack() || CallsBack(cell);
    const auto heldRow = HeldIf(callsBack, &row);
    const bool isMatch = searched.Matches(HeldValue(cell, callsBack)) && row.GetTable() == this;
    if (isMatch && !visit(row)) return;
  }
}

RowImpl* TableImpl::FindFirst(ColumnImpl& column, const _VARIANT& key) {
  if (FindsByIndex(column, key)) return FindInIndex(key);
  Ptr<RowImpl> first;
  ForEachMatch(column, key, [&](RowImpl& row) {
    first = Ptr<RowImpl>(&row);
    return false;
  });
  return first && first->GetTable() == this ? first.Get() : nullptr;
}

bool TableImpl::FindRows(const char* column, const _VARIANT* key, IObjectList** out,
                         Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    ColumnImpl& searched = ExistingColumn(column);
    CheckArgument(key);
    const auto found = Core::MakePtr<ObjectListImpl>();
    if (FindsByIndex(searched, *key)) {
      if (RowImpl* row = FindInIndex(*key)) found->Add(row);
    } else {
      ForEachMatch(searched, *key, [&](RowImpl& row) {
        found->Add(&row);
        return true;
      });
    }
    *out = Ptr<IObjectList>(found).Detach();
  });
}

// -- Merge --

namespace {

bool MergeInto(ITable** out, Core::IErrorCode** error, TableImpl& left, ITable* right,
               std::span<const KeyNames> keys, MergeMode mode) {
  return Core::Guarded(error, [&] {
    CheckArgument(right);
    Core::CheckOutPointer(out);
    if (static_cast<std::uint32_t>(mode) > static_cast<std::uint32_t>(MergeMode::All))
      throw std::runtime_error("Merge mode is not supported!");
    *out = MergeTables(left, *right, keys, mode).Detach();
  });
}

}  // namespace

bool TableImpl::Merge(ITable* right, const char* key, MergeMode mode, ITable** out,
                      Core::IErrorCode** error) {
  const KeyNames keys[] = {{key, key}};
  return MergeInto(out, error, *this, right, keys, mode);
}

bool TableImpl::MergeOn(ITable* right, const char* leftKey, const char* rightKey, MergeMode mode,
                        ITable** out, Core::IErrorCode** error) {
  const KeyNames keys[] = {{leftKey, rightKey}};
  return MergeInto(out, error, *this, right, keys, mode);
}

bool TableImpl::MergeOnColumns(ITable* right, MergeMode mode, ITable** out,
                               Core::IErrorCode** error, std::uint32_t keyCount, ...) {
  std::va_list names;
  va_start(names, keyCount);
  std::vector<KeyNames> keys;
  const bool isRead = Core::Guarded(error, [&] {
    for (std::uint32_t i = 0; i < keyCount; ++i) {
      const char* name = va_arg(names, const char*);
      keys.emplace_back(name, name);
    }
  });
  va_end(names);
  return isRead && MergeInto(out, error, *this, right, keys, mode);
}

}  // namespace Data::impl
