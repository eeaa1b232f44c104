#include "Tables/TableMerge.h"

#include <algorithm>
#include <bit>
#include <cstdarg>
#include <cstdint>
#include <string>

#include "Containers/VariantHash.h"
#include "Core/Guard.h"
#include "Core/VariantRecord.h"
#include "Tables/TableCopy.h"

namespace Data::impl {

using namespace Interfaces;
using Core::Ptr;
using Structures::_VARIANT;
using Structures::MergeMode;

namespace {

/// The rows of a table that a merge reads, and the positions of its key columns.
class MergeSide {
 public:
  explicit MergeSide(const TableImpl& table) : rows_(table.Rows()) {}

  void AddKey(const ColumnImpl& column) { keys_.push_back(column.Index()); }
  std::size_t RowCount() const { return rows_.size(); }
  const _VARIANT& Cell(std::size_t row, std::int32_t index) const {
    const _VARIANT* cell = rows_[row].Get()->CellOrNull(index);
    return cell ? *cell : kNull;
  }

  std::size_t KeyCount() const { return keys_.size(); }
  const _VARIANT& Key(std::size_t row, std::size_t i) const { return Cell(row, keys_[i]); }
  /// Whether the row can match any row of the other side.
  bool HasKey(std::size_t row) const {
    return std::ranges::none_of(keys_, [&](std::int32_t key) {
      return IsNullKey(Cell(row, key)) || EqualsNothing(Cell(row, key));
    });
  }
  std::uint64_t KeyHash(std::size_t row) const {
    std::uint64_t hash = 0;
    for (const std::int32_t key : keys_)
      hash = (std::rotl(hash, 5) ^ HashOf(Cell(row, key))) * 0x9E3779B97F4A7C15;
    return hash;
  }

 private:
  static constexpr _VARIANT kNull = Core::MakeNull();

  const std::vector<Ptr<RowImpl>>& rows_;
  std::vector<std::int32_t> keys_;
};

/// The rows of one side by the hash of their keys: chains in row order.
class KeyLookup {
 public:
  explicit KeyLookup(const MergeSide& side)
      : side_(side),
        heads_(std::bit_ceil(side.RowCount() + 1), kEnd),
        shift_(64 - std::countr_zero(heads_.size())),
        entries_(side.RowCount()) {
    for (std::size_t row = side.RowCount(); row-- > 0;) {
      if (!side.HasKey(row)) continue;
      const std::uint64_t hash = side.KeyHash(row);
      std::size_t& head = Head(hash);
      entries_[row] = {hash, head};
      head = row;
    }
  }

  /// Calls `visit` with every row whose keys equal those of a row of the other side.
  template <class Visit>
  void ForEachPartner(const MergeSide& other, std::size_t row, Visit&& visit) {
    if (!other.HasKey(row)) return;
    const std::uint64_t hash = other.KeyHash(row);
    for (std::size_t i = Head(hash); i != kEnd; i = entries_[i].next)
      if (entries_[i].hash == hash && HasEqualKeys(other, row, i)) visit(i);
  }

 private:
  static constexpr std::size_t kEnd = SIZE_MAX;
  struct Entry {
    std::uint64_t hash;
    std::size_t next;
  };

  std::size_t& Head(std::uint64_t hash) {
    return heads_[heads_.size() == 1 ? 0 : static_cast<std::size_t>(hash >> shift_)];
  }
  bool HasEqualKeys(const MergeSide& other, std::size_t otherRow, std::size_t row) const {
    for (std::size_t i = 0; i < side_.KeyCount(); ++i) {
      const _VARIANT &stored = side_.Key(row, i), &key = other.Key(otherRow, i);
      // An equal combined hash does not imply equal hashes of the single keys.
      if (HashOf(stored) != HashOf(key) || !AreEqualKeys(stored, key)) return false;
    }
    return true;
  }

  const MergeSide& side_;
  std::vector<std::size_t> heads_;
  int shift_;
  std::vector<Entry> entries_;
};

class Merger {
 public:
  Merger(const TableImpl& left, const TableImpl& right, std::span<const KeyNames> keys)
      : left_(left), right_(right), result_(Core::MakePtr<TableImpl>()) {
    result_->Header().SetName(
        (std::string(left.Header().GetName()) + "_" + right.Header().GetName() + "_merged")
            .c_str());
    std::vector<const ColumnImpl*> rightKeys;
    for (const auto& [leftName, rightName] : keys) {
      const ColumnImpl& leftKey =
          KeyColumn(left, leftName, "Left table does not contain column %s");
      const ColumnImpl& rightKey =
          KeyColumn(right, rightName, "Right table does not contain column %s");
      left_.AddKey(leftKey);
      right_.AddKey(rightKey);
      keyTargets_.push_back(leftKey.Index());
      rightKeys.push_back(&rightKey);
    }
    AddLeftColumns(left);
    AddRightColumns(right, rightKeys);
  }

  Ptr<TableImpl> Run(MergeMode mode) {
    KeyLookup lookup(right_);
    std::vector<bool> hasPartner(right_.RowCount());
    for (std::size_t row = 0; row < left_.RowCount(); ++row) {
      bool isUnmatched = true;
      lookup.ForEachPartner(left_, row, [&](std::size_t partner) {
        CopyRight(partner, CopyLeft(row));
        hasPartner[partner] = true;
        isUnmatched = false;
      });
      if (isUnmatched && mode != MergeMode::Matching) CopyLeft(row);
    }
    if (mode == MergeMode::All) AddUnmatched(hasPartner);
    return result_;
  }

 private:
  static const ColumnImpl& KeyColumn(const TableImpl& table, const char* name,
                                     const char* missing) {
    Core::CheckArgument(name);
    const ColumnImpl* column = table.Header().Find(name);
    if (!column) throw std::runtime_error(Core::StringFormat(missing, name));
    return *column;
  }

  void AddLeftColumns(const TableImpl& left) {
    for (const auto& column : left.Header().Columns()) {
      AddColumnLike(*column, column->Name(), *result_);
      leftCells_.push_back(column->Index());
    }
  }

  void AddRightColumns(const TableImpl& right, const std::vector<const ColumnImpl*>& keys) {
    for (const auto& column : right.Header().Columns()) {
      if (std::ranges::find(keys, column.Get()) != keys.end()) continue;
      std::string name = column->Name();
      while (result_->Header().Find(name)) name += "_right";
      AddColumnLike(*column, name, *result_);
      rightCells_.push_back(column->Index());
    }
  }

  RowImpl& CopyLeft(std::size_t row) {
    RowImpl& merged = result_->AppendBlankRow();
    for (std::size_t i = 0; i < leftCells_.size(); ++i)
      Core::CopyVariant(&left_.Cell(row, leftCells_[i]), merged.Cells() + i);
    return merged;
  }

  void CopyRight(std::size_t row, RowImpl& merged) {
    for (std::size_t i = 0; i < rightCells_.size(); ++i)
      Core::CopyVariant(&right_.Cell(row, rightCells_[i]), merged.Cells() + leftCells_.size() + i);
  }

  void AddUnmatched(const std::vector<bool>& hasPartner) {
    for (std::size_t row = 0; row < right_.RowCount(); ++row) {
      if (hasPartner[row]) continue;
      RowImpl& merged = result_->AppendBlankRow();
      for (std::size_t i = 0; i < keyTargets_.size(); ++i)
        Core::CopyVariant(&right_.Key(row, i), merged.Cells() + keyTargets_[i]);
      CopyRight(row, merged);
    }
  }

  MergeSide left_, right_;
  /// The cells that are copied from each side, and the columns into which right keys are copied.
  std::vector<std::int32_t> leftCells_, rightCells_, keyTargets_;
  Ptr<TableImpl> result_;
};

}  // namespace

Ptr<TableImpl> MergeTables(ITable& left, ITable& right, std::span<const KeyNames> keys,
                           MergeMode mode) {
  if (keys.empty()) throw std::runtime_error("Invalid column!");
  const Ptr<ITable> heldLeft(&left), heldRight(&right);
  // The caller's code, run by one table, may change the other.
  const bool callsBack = CallsBack(left) || CallsBack(right);
  const auto readable = [&](ITable& table) {
    return callsBack ? CopyOf(table) : Ptr<TableImpl>(static_cast<TableImpl*>(&table));
  };
  const Ptr<TableImpl> readLeft = readable(left), readRight = readable(right);
  return Merger(*readLeft, *readRight, keys).Run(mode);
}

}  // namespace Data::impl
