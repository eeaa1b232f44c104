#include "Tables/UniqueIndex.h"

#include "Core/VariantComparison.h"

namespace Data::impl {

using Structures::_VARIANT;

bool SearchKey::Matches(const _VARIANT& cell) const {
  if (IsNullKey(cell) || IsNullKey(value_)) return IsNullKey(cell) == IsNullKey(value_);
  return Core::AreComparable(cell, value_) && HashOf(cell) == hash_ && AreEqualKeys(cell, value_);
}

UniqueIndex::UniqueIndex(const ColumnImpl& column, bool ignoreNulls, std::size_t rowCount)
    : column_(column), ignoreNulls_(ignoreNulls) {
  rows_.reserve(rowCount);
}

const _VARIANT& UniqueIndex::CellOf(RowImpl& row) const { return row.Cell(column_); }

UniqueIndex::RowsByHash::const_iterator UniqueIndex::FindEntry(const SearchKey& key) const {
  auto [entry, end] = rows_.equal_range(key.Hash());
  while (entry != end && !key.Matches(CellOf(*entry->second))) ++entry;
  return entry == end ? rows_.end() : entry;
}

bool UniqueIndex::Covers(const _VARIANT& value) const {
  return IsNullKey(value) ? !ignoreNulls_ : !EqualsNothing(value);
}

bool UniqueIndex::Add(RowImpl& row) {
  if (!Covers(CellOf(row))) return true;
  const SearchKey key(CellOf(row));
  if (FindEntry(key) != rows_.end()) return false;
  rows_.emplace(key.Hash(), &row);
  return true;
}

bool UniqueIndex::Remove(RowImpl& row) {
  if (!Covers(CellOf(row))) return true;
  const auto entry = FindEntry(SearchKey(CellOf(row)));
  if (entry == rows_.end() || entry->second != &row) return false;
  rows_.erase(entry);
  return true;
}

RowImpl* UniqueIndex::Find(const _VARIANT& key) const {
  const auto entry = FindEntry(SearchKey(key));
  return entry == rows_.end() ? nullptr : entry->second;
}

}  // namespace Data::impl
