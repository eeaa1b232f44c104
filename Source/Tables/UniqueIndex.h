#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "Containers/CallingBack.h"
#include "Containers/VariantHash.h"
#include "Tables/ColumnImpl.h"
#include "Tables/RowImpl.h"

namespace Data::impl {

/// A value to be found among cells. Cells equal it as keys of a dictionary do, but Null equals
/// Null. The value must outlive the search.
class SearchKey {
 public:
  explicit SearchKey(const Structures::_VARIANT& value)
      : value_(value),
        callsBack_(impl::CallsBack(value)),
        hash_(IsNullKey(value) ? 0 : HashOf(value)) {}

  std::uint64_t Hash() const { return hash_; }
  bool CallsBack() const { return callsBack_; }
  bool Matches(const Structures::_VARIANT& cell) const;

 private:
  const Structures::_VARIANT& value_;
  bool callsBack_;
  std::uint64_t hash_;
};

/// The rows of a table by their value in one column, in which no value repeats. Refers to rows
/// without owning them. Reading keys may run the caller's code; entering and removing rows never
/// does, so a change is first prepared (`SlotFor`) and then made.
class UniqueIndex {
 public:
  /// Where a row is entered.
  struct Slot {
    bool isCovered = false;  ///< false: not in the index at all
    bool callsBack = false;  ///< whether reading the key may run the caller's code
    std::uint64_t hash = 0;
  };

  UniqueIndex(ColumnImpl& column, bool ignoreNulls, std::size_t rowCount);

  bool IgnoresNulls() const { return ignoreNulls_; }
  /// Whether rows with this value are in the index.
  bool Covers(const Structures::_VARIANT& value) const;
  /// Whether reading one of the keys may run the caller's code.
  bool CallsBack() const { return !callersHashes_.empty(); }

  /// Where a row with this value goes; nothing if another row has the value.
  /// @throws what hashing and comparing throw
  std::optional<Slot> SlotFor(const Structures::_VARIANT& value, const RowImpl& row) const;
  /// Enters a new row.
  /// @throws std::bad_alloc, nothing changed
  void Enter(RowImpl& row, const Slot& slot) { Put(row, slot, rows_.end()); }
  /// Moves a row from the slot of its present value to another. Returns false as `Remove` does.
  /// @throws std::bad_alloc, nothing changed
  [[nodiscard]] bool Move(RowImpl& row, const Slot& slot);
  /// Removes a row. False if the row is not found under its value, because the cell was changed
  /// without the table: the index must then be dropped.
  [[nodiscard]] bool Remove(const RowImpl& row) noexcept;
  /// Removes all rows, as the table does when it drops the index: an operation that still holds it
  /// must find no row that has left.
  void Clear() noexcept;
  /// The row of a value, or null. If keys call back, the caller must hold the index, and the row
  /// may have left the table by the time it is returned.
  Core::Ptr<RowImpl> FindHeld(const SearchKey& key) const;
  /// Like `FindHeld`, for when neither the key nor any key of the index calls back.
  RowImpl* Find(const SearchKey& key) const;

  /// Counts the changes: while it is unchanged, a slot from `SlotFor` is still valid.
  std::uint64_t Revision() const { return revision_; }

 private:
  struct IdentityHash {
    std::size_t operator()(std::uint64_t hash) const noexcept {
      return static_cast<std::size_t>(hash);
    }
  };
  using RowsByHash = std::unordered_multimap<std::uint64_t, RowImpl*, IdentityHash>;

  const Structures::_VARIANT& CellOf(const RowImpl& row) const { return row.Cell(*column_); }
  std::optional<RowsByHash::iterator> EntryOf(const RowImpl& row) noexcept;
  RowsByHash::iterator FindByScan(const RowImpl& row) noexcept;
  void Put(RowImpl& row, const Slot& slot, RowsByHash::iterator present);

  Core::Ptr<ColumnImpl> column_;
  bool ignoreNulls_;
  std::uint64_t revision_ = 0;
  RowsByHash rows_;
  /// The hashes of keys that call back, so that such a key is not read again when its row is moved
  /// or removed. An empty hash belongs to a row that could not be entered for lack of memory.
  std::unordered_map<const RowImpl*, std::optional<std::uint64_t>> callersHashes_;
};

}  // namespace Data::impl
