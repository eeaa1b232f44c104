#pragma once

#include <atomic>
#include <string>

#include "Core/ObjectBase.h"
#include "Core/ValueTypes.h"
#include "Data/Interfaces/IColumn.h"

namespace Data::impl {

struct TableHeaderImpl;
struct TableImpl;

/// What a column learns from the values of its cells.
struct ColumnNote {
  Structures::ValueType lastType = Structures::ValueType::Null;  ///< of values other than Null
  bool hasSeenNull = false;

  void Add(Structures::ValueType type) {
    if (type == Structures::ValueType::Null)
      hasSeenNull = true;
    else
      lastType = type;
  }
};

struct ColumnImpl final : Core::ObjectBase<Interfaces::IColumn> {
  using ValueType = Structures::ValueType;

  ColumnImpl(std::string name, TableImpl* table, TableHeaderImpl* header, std::int32_t index);

  const char* GetName() override { return name_.c_str(); }
  void SetName(const char* name) override;
  bool GetValues(Interfaces::IVariantList** out) override;
  bool GetValue(std::int64_t row, Structures::_VARIANT* out, Core::IErrorCode** error) override;
  std::int32_t GetIndex() override { return Index(); }
  void SetWidth(std::uint32_t width) override { width_ = width; }
  void SetDecimals(std::uint32_t decimals) override { decimals_ = decimals; }
  std::uint32_t GetWidth() override { return width_; }
  std::uint32_t GetDecimals() override { return decimals_; }
  Interfaces::IColumn* GetNextColumn() override { return ColumnAtDistance(1); }
  Interfaces::IColumn* GetPreviousColumn() override { return ColumnAtDistance(-1); }
  ValueType GetType() override;
  void SetType(ValueType type) override { type_ = type; }
  void SetHidden(std::uint8_t hidden) override { hidden_ = hidden; }
  std::uint8_t IsHidden() override { return hidden_; }
  std::uint8_t HasSeenNull() override { return hasSeenNull_; }
  Interfaces::IRow* FindRow(const Structures::_VARIANT* value) override;
  bool BelongsTo(Interfaces::ITable* table) override;
  void Fill(const Structures::_VARIANT* value) override;
  void SetReadOnly(std::uint8_t readOnly) override { readOnly_ = readOnly; }
  std::uint8_t IsReadOnly() override { return readOnly_; }

  // -- For the rest of the library --

  /// The column behind an interface; null for null and for any other object.
  static ColumnImpl* Of(Interfaces::IColumn* column);

  const std::string& Name() const { return name_; }
  void Rename(std::string name) { name_ = std::move(name); }

  /// The index in the table.
  std::int32_t Index() const { return index_.load(std::memory_order_relaxed); }
  void SetIndex(std::int32_t index) { index_.store(index, std::memory_order_relaxed); }
  /// Adds 1; the largest index wraps to the smallest.
  void IncrementIndex() { index_.fetch_add(1, std::memory_order_relaxed); }
  ColumnImpl* ColumnAtDistance(std::int32_t distance);

  bool IsOf(const TableImpl* table) const { return table_ == table; }

  /// Updates the type and the null-seen flag for a value written into a cell.
  void NoteValue(ValueType type) {
    if (type == ValueType::Null)
      hasSeenNull_ = 1;
    else
      type_ = type;
  }
  /// Like `NoteValue` for many values, for code that fills cells in place.
  void NoteValues(const ColumnNote& note) {
    if (note.lastType != ValueType::Null) type_ = note.lastType;
    if (note.hasSeenNull) hasSeenNull_ = 1;
  }

  /// Detaches the column from its table, or from its header.
  void LeaveTable() { table_ = nullptr; }
  void LeaveHeader() { header_ = nullptr; }

 private:
  TableImpl& Table() const;

  std::string name_;
  TableImpl* table_;
  TableHeaderImpl* header_;
  /// Atomic because an insertion before other columns increments one forever: the compiler must not
  /// assume that this loop ends, and other threads may read the index meanwhile.
  std::atomic<std::int32_t> index_;
  std::uint32_t width_ = 0;
  std::uint32_t decimals_ = 0;
  ValueType type_ = ValueType::Null;
  std::uint8_t hasSeenNull_ = 0;
  std::uint8_t hidden_ = 0;
  std::uint8_t readOnly_ = 0;
};

}  // namespace Data::impl
