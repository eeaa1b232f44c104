#pragma once

#include <cstdint>
#include <unordered_map>

#include "Containers/VariantHash.h"
#include "Tables/ColumnImpl.h"
#include "Tables/RowImpl.h"

namespace Data::impl {

/// A value searched for among cells. Cells equal it as keys of a dictionary do,
/// but Null equals Null. The value must outlive the search.
class SearchKey {
 public:
  explicit SearchKey(const Structures::_VARIANT& value)
      : value_(value), hash_(IsNullKey(value) ? 0 : HashOf(value)) {}

  std::uint64_t Hash() const { return hash_; }
  bool Matches(const Structures::_VARIANT& cell) const;

 private:
  const Structures::_VARIANT& value_;
  std::uint64_t hash_;
};

/// The rows of a table by their value in one column, in which no value repeats.
/// Refers to rows without owning them: whoever changes the column or removes a
/// row tells the index before, and drops an index that answers false.
class UniqueIndex {
 public:
  UniqueIndex(const ColumnImpl& column, bool ignoreNulls, std::size_t rowCount);

  /// False, the row not added, when another row has its value.
  bool Add(RowImpl& row);
  /// False when the row is not found under its value: a cell was written past
  /// the table.
  bool Remove(RowImpl& row);
  /// The row of a value, or null.
  RowImpl* Find(const Structures::_VARIANT& key) const;
  /// Whether rows with this value are in the index.
  bool Covers(const Structures::_VARIANT& value) const;

 private:
  struct HashItself {
    std::size_t operator()(std::uint64_t hash) const { return static_cast<std::size_t>(hash); }
  };
  using RowsByHash = std::unordered_multimap<std::uint64_t, RowImpl*, HashItself>;

  const Structures::_VARIANT& CellOf(RowImpl& row) const;
  RowsByHash::const_iterator FindEntry(const SearchKey& key) const;

  const ColumnImpl& column_;
  bool ignoreNulls_;
  RowsByHash rows_;
};

}  // namespace Data::impl
