#include "Tables/UniqueIndex.h"

#include <vector>

#include "Core/Guard.h"
#include "Core/VariantComparison.h"

namespace Data::impl {

using Core::Ptr;
using Structures::_VARIANT;

bool SearchKey::Matches(const _VARIANT& cell) const {
  if (IsNullKey(cell) || IsNullKey(value_)) return IsNullKey(cell) == IsNullKey(value_);
  return Core::AreComparable(cell, value_) && HashOf(cell) == hash_ && AreEqualKeys(cell, value_);
}

UniqueIndex::UniqueIndex(ColumnImpl& column, bool ignoreNulls, std::size_t rowCount)
    : column_(&column), ignoreNulls_(ignoreNulls) {
  rows_.reserve(rowCount);
}

bool UniqueIndex::Covers(const _VARIANT& value) const {
  return IsNullKey(value) ? !ignoreNulls_ : !EqualsNothing(value);
}

// -- Finding --

RowImpl* UniqueIndex::Find(const SearchKey& key) const {
  for (auto [entry, end] = rows_.equal_range(key.Hash()); entry != end; ++entry)
    if (key.Matches(CellOf(*entry->second))) return entry->second;
  return nullptr;
}

Ptr<RowImpl> UniqueIndex::FindHeld(const SearchKey& key) const {
  if (!CallsBack() && !key.CallsBack()) return Ptr<RowImpl>(Find(key));
  // The map may change at every comparison.
  std::vector<Ptr<RowImpl>> candidates;
  for (auto [entry, end] = rows_.equal_range(key.Hash()); entry != end; ++entry)
    candidates.emplace_back(entry->second);
  for (const auto& row : candidates)
    if (key.Matches(HeldValue(CellOf(*row), true))) return row;
  return nullptr;
}

std::optional<UniqueIndex::Slot> UniqueIndex::SlotFor(const _VARIANT& value,
                                                      const RowImpl& row) const {
  if (!Covers(value)) return Slot{};
  const SearchKey key(value);
  const Ptr<RowImpl> holder = FindHeld(key);
  if (holder && holder.Get() != &row) return std::nullopt;
  return Slot{true, key.CallsBack(), key.Hash()};
}

// -- Changing --

UniqueIndex::RowsByHash::iterator UniqueIndex::FindByScan(const RowImpl& row) noexcept {
  auto entry = rows_.begin();
  while (entry != rows_.end() && entry->second != &row) ++entry;
  return entry;
}

/// The entry of a row, or the end if it has none; nothing if the row is not found under its value.
std::optional<UniqueIndex::RowsByHash::iterator> UniqueIndex::EntryOf(const RowImpl& row) noexcept {
  std::optional<std::uint64_t> hash;
  if (const auto known = callersHashes_.find(&row); known != callersHashes_.end()) {
    hash = known->second;
    if (!hash) return rows_.end();
  } else {
    const _VARIANT* cell = row.CellOrNull(column_->Index());
    if (!cell || !Covers(*cell)) return rows_.end();
    if (impl::CallsBack(*cell)) return std::nullopt;
    // Hashing a text may run out of memory; a scan finds the row without it, only slower.
    if (!Core::Guarded(nullptr, [&] { hash = SearchKey(*cell).Hash(); })) return FindByScan(row);
  }
  auto [entry, end] = rows_.equal_range(*hash);
  while (entry != end && entry->second != &row) ++entry;
  if (entry == end) return std::nullopt;
  return entry;
}

void UniqueIndex::Put(RowImpl& row, const Slot& slot, RowsByHash::iterator present) {
  ++revision_;
  std::optional<std::uint64_t>* known = slot.callsBack ? &callersHashes_[&row] : nullptr;
  if (slot.isCovered && present == rows_.end()) {
    rows_.emplace(slot.hash, &row);
  } else if (slot.isCovered) {
    auto entry = rows_.extract(present);
    entry.key() = slot.hash;
    rows_.insert(std::move(entry));
  } else if (present != rows_.end()) {
    rows_.erase(present);
  }
  if (known) {
    *known = slot.hash;
  } else {
    callersHashes_.erase(&row);
  }
}

bool UniqueIndex::Move(RowImpl& row, const Slot& slot) {
  const auto present = EntryOf(row);
  if (present) Put(row, slot, *present);
  return present.has_value();
}

bool UniqueIndex::Remove(const RowImpl& row) noexcept {
  const auto entry = EntryOf(row);
  if (!entry) return false;
  ++revision_;
  if (*entry != rows_.end()) rows_.erase(*entry);
  callersHashes_.erase(&row);
  return true;
}

void UniqueIndex::Clear() noexcept {
  ++revision_;
  rows_.clear();
  callersHashes_.clear();
}

}  // namespace Data::impl
