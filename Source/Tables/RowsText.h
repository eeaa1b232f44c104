#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Core/ExactCast.h"
#include "Core/Parts.h"
#include "Core/Variant.h"
#include "DateTime/DateTimeImpl.h"
#include "Tables/RowImpl.h"
#include "Tables/TableCursor.h"
#include "Text/MultiByteStringImpl.h"
#include "Text/TextBuffer.h"
#include "Text/TextOutput.h"

/// Writes the rows of tables as text, in parts if the table allows it.
namespace Data::impl {

/// A row of the library's own table, whose cells are read where they are. Several threads may read
/// rows of one table.
class PlainRow {
 public:
  /// @param columns  of the table
  PlainRow(const TableCursor& columns, const RowImpl& row) : columns_(columns), row_(row) {}

  const Structures::_VARIANT& Cell(std::size_t column) const {
    const Structures::_VARIANT* const cell = row_.CellOrNull(columns_.ColumnIndex(column));
    return cell ? *cell : TableCursor::kNull;
  }

  /// Calls `use` with the display text of a cell, as `TableCursor::UseText` does.
  /// @return false, without the call, if that could run the caller's code or change an object
  template <class Use>
  bool UseText(const Structures::_VARIANT& cell, Use&& use) const;

 private:
  const TableCursor& columns_;
  const RowImpl& row_;
};

/// How a row becomes text. Used by several threads at once.
class RowFormat {
 public:
  /// @param between  what is written between two rows
  explicit RowFormat(std::string between) : between_(std::move(between)) {}
  RowFormat(const RowFormat&) = delete;
  RowFormat& operator=(const RowFormat&) = delete;

  std::string_view Between() const { return between_; }
  /// Appends a row.
  /// @return false if a text of the row cannot be used in place; the row is then incomplete
  virtual bool Append(PlainRow& row, TextBuffer& text) const = 0;
  /// Appends the cursor's current row.
  virtual void Append(TableCursor& row, TextBuffer& text) const = 0;

 protected:
  ~RowFormat() = default;

 private:
  std::string between_;
};

/// A format whose operation `template <class Row> bool AppendRow(Row&, TextBuffer&) const` serves
/// rows of both kinds.
template <class Format>
class RowFormatOf : public RowFormat {
 public:
  using RowFormat::RowFormat;

  bool Append(PlainRow& row, TextBuffer& text) const final {
    return static_cast<const Format&>(*this).AppendRow(row, text);
  }
  void Append(TableCursor& row, TextBuffer& text) const final {
    static_cast<const Format&>(*this).AppendRow(row, text);
  }

 protected:
  ~RowFormatOf() = default;
};

/// Writes all rows of a table. The rows of the library's own tables are cut into parts, up to the
/// first row with an object whose text only the calling thread may read: from there on, and for the
/// caller's own tables, they are written one by one.
/// @param table  before the first row
/// @param parts  told of the rows that are done
/// @return whether there was a row
bool WriteRows(TableCursor& table, const RowFormat& format, Core::Parts& parts, TextOutput& output);

template <class Use>
bool PlainRow::UseText(const Structures::_VARIANT& cell, Use&& use) const {
  using Core::ValueType;
  Core::IObject* const object = Core::ReferencedObject(cell);
  const ValueType type = Core::TypeOf(cell);
  if (!object) return UseTextWithoutObject(cell, use);
  auto* const string =
      type == ValueType::String ? Core::ExactCast<MultiByteStringImpl>(object) : nullptr;
  const auto text = string ? string->StoredUtf8() : std::nullopt;
  Structures::_VARIANT room;
  if (text) use(PaddedText(*text, room));
  return text.has_value();
}

/// Appends the display text of a date-time of the library's own.
/// @return false for any other cell
inline bool AppendOwnDateTime(const Structures::_VARIANT& cell, TextBuffer& text) {
  const DateTimeImpl* const dateTime = OwnDateTime(cell);
  if (dateTime) text.EndAt(PutIso8601DateTime(text.Tail(kIso8601Room), dateTime->Fields()));
  return dateTime != nullptr;
}

}  // namespace Data::impl
