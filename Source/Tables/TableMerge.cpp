#include "Tables/TableMerge.h"

#include <algorithm>
#include <bit>
#include <cstdarg>
#include <cstdint>
#include <string>

#include "Containers/VariantHash.h"
#include "Core/Guard.h"
#include "Core/VariantRecord.h"
#include "Data/Interfaces/IColumn.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/ITableHeader.h"
#include "Tables/TableFailures.h"

namespace Data::impl {

using namespace Interfaces;
using Core::Ptr;
using Structures::_VARIANT;
using Structures::MergeMode;

namespace {

/// The cells of a table that a merge reads: by row, and by the positions of its
/// columns inside a row.
class MergeSide {
 public:
  explicit MergeSide(ITable& table) {
    const std::int64_t rowCount = table.GetRowCount();
    rows_.reserve(static_cast<std::size_t>(rowCount));
    for (std::int64_t i = 0; i < rowCount; ++i) rows_.push_back(table.GetRow(i));
  }

  void AddKey(IColumn& column) { keys_.push_back(column.GetIndex()); }
  std::size_t RowCount() const { return rows_.size(); }
  const _VARIANT& Cell(std::size_t row, std::int32_t index) const {
    const _VARIANT* cell = rows_[row]->GetCellAt(index);
    return cell ? *cell : kNull;
  }

  std::size_t KeyCount() const { return keys_.size(); }
  const _VARIANT& Key(std::size_t row, std::size_t i) const { return Cell(row, keys_[i]); }
  /// Whether a row can have partners at all.
  bool HasKey(std::size_t row) const {
    for (std::size_t i = 0; i < KeyCount(); ++i)
      if (IsNullKey(Key(row, i)) || EqualsNothing(Key(row, i))) return false;
    return true;
  }
  std::uint64_t KeyHash(std::size_t row) const {
    std::uint64_t hash = 0;
    for (std::size_t i = 0; i < KeyCount(); ++i)
      hash = (std::rotl(hash, 5) ^ HashOf(Key(row, i))) * 0x9E3779B97F4A7C15;
    return hash;
  }

 private:
  static constexpr _VARIANT kNull = Core::MakeNull();

  std::vector<IRow*> rows_;
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
      // Equal hashes of all keys together say little about each of them.
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
  Merger(ITable& left, ITable& right, const std::vector<KeyNames>& keys)
      : left_(left), right_(right), result_(Core::MakePtr<TableImpl>()) {
    result_->Header().SetName(
        (std::string(left.GetHeader()->GetName()) + "_" + right.GetHeader()->GetName() + "_merged")
            .c_str());
    std::vector<IColumn*> rightKeys;
    for (const auto& [leftName, rightName] : keys) {
      IColumn& leftKey = KeyColumn(left, leftName, "Left table does not contain column %s");
      IColumn& rightKey = KeyColumn(right, rightName, "Right table does not contain column %s");
      left_.AddKey(leftKey);
      right_.AddKey(rightKey);
      keyTargets_.push_back(leftKey.GetIndex());
      rightKeys.push_back(&rightKey);
    }
    AddLeftColumns(left);
    AddRightColumns(right, rightKeys);
  }

  Ptr<TableImpl> Run(MergeMode mode) {
    KeyLookup lookup(right_);
    std::vector<bool> hasPartner(right_.RowCount());
    for (std::size_t row = 0; row < left_.RowCount(); ++row) {
      bool isAlone = true;
      lookup.ForEachPartner(left_, row, [&](std::size_t partner) {
        CopyRight(partner, CopyLeft(row));
        hasPartner[partner] = true;
        isAlone = false;
      });
      if (isAlone && mode != MergeMode::Matching) CopyLeft(row);
    }
    if (mode == MergeMode::All) AddUnmatched(hasPartner);
    return result_;
  }

 private:
  static IColumn& KeyColumn(ITable& table, const char* name, const char* missing) {
    Core::CheckArgument(name);
    if (!table.HasColumn(name)) throw std::runtime_error(Core::StringFormat(missing, name));
    return *table.GetColumnByName(name);
  }

  void AddColumn(IColumn& source, std::string_view name) {
    ColumnImpl& column = result_->AddNamedColumn(name);
    column.NoteValues(source.GetType(), source.HasSeenNull() != 0);
    column.SetWidth(source.GetWidth());
    column.SetDecimals(source.GetDecimals());
    column.SetHidden(source.IsHidden());
    column.SetReadOnly(source.IsReadOnly());
  }

  void AddLeftColumns(ITable& left) {
    for (std::int32_t i = 0; i < left.GetColumnCount(); ++i) {
      IColumn& column = *left.GetColumn(i);
      AddColumn(column, column.GetName());
      leftCells_.push_back(column.GetIndex());
    }
  }

  void AddRightColumns(ITable& right, const std::vector<IColumn*>& keys) {
    for (std::int32_t i = 0; i < right.GetColumnCount(); ++i) {
      IColumn& column = *right.GetColumn(i);
      if (std::find(keys.begin(), keys.end(), &column) != keys.end()) continue;
      std::string name = column.GetName();
      while (result_->Header().Find(name)) name += "_right";
      AddColumn(column, name);
      rightCells_.push_back(column.GetIndex());
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
  /// Where the cells of each side are read, and where right keys go.
  std::vector<std::int32_t> leftCells_, rightCells_, keyTargets_;
  Ptr<TableImpl> result_;
};

}  // namespace

Ptr<TableImpl> MergeTables(ITable& left, ITable& right, const std::vector<KeyNames>& keys,
                           MergeMode mode) {
  if (keys.empty()) throw std::runtime_error("Invalid column!");
  return Merger(left, right, keys).Run(mode);
}

// -- The table's slots --

namespace {

bool MergeInto(ITable** out, Core::IErrorCode** error, ITable& left, ITable* right,
               const std::vector<KeyNames>& keys, MergeMode mode) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(right);
    Core::CheckOutPointer(out);
    if (static_cast<std::uint32_t>(mode) > static_cast<std::uint32_t>(MergeMode::All))
      throw std::runtime_error("Merge mode is not supported!");
    *out = MergeTables(left, *right, keys, mode).Detach();
  });
}

}  // namespace

bool TableImpl::Merge(ITable* right, const char* key, MergeMode mode, ITable** out,
                      Core::IErrorCode** error) {
  return MergeInto(out, error, *this, right, {{key, key}}, mode);
}

bool TableImpl::MergeOn(ITable* right, const char* leftKey, const char* rightKey, MergeMode mode,
                        ITable** out, Core::IErrorCode** error) {
  return MergeInto(out, error, *this, right, {{leftKey, rightKey}}, mode);
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
