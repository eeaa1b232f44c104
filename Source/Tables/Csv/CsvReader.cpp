#include "Tables/Csv/CsvReader.h"

#include <algorithm>
#include <stdexcept>

#include "Core/StringFormat.h"
#include "Platform/Uuids.h"
#include "Tables/Csv/CsvCells.h"
#include "Tables/Csv/CsvLayout.h"
#include "Tables/Csv/CsvLines.h"
#include "Tables/Csv/CsvText.h"
#include "Text/TextOrder.h"

namespace Data::impl {

using Core::ValueType;
using Structures::_VARIANT;

namespace {

/// The least memory that the objects of a table typically take per byte of text.
constexpr std::size_t kBytesPerCharacter = 4;

std::string_view WithoutByteOrderMark(std::string_view text) {
  return text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text;
}

std::string MakeUnnamedName() {
  Structures::_UUID uuid;
  Platform::NewUuid(uuid);
  char16_t text[Platform::kUuidTextLength];
  Platform::UuidToText(uuid, text);
  return "Unnamed_" + std::string(std::begin(text), std::end(text));
}

/// A name ends at its first zero byte, as `AddColumn` reads it; a repeated one names the existing
/// column, and lines with a value for both then have too many.
void AddNamedColumns(TableImpl& table, const CsvLine& header) {
  header.ForEachValue(header.ValueCount(), [&](std::string_view value) {
    const std::string_view name = UpToFirstZero(Trim(value));
    if (name.empty()) {
      table.AddNamedColumn(MakeUnnamedName());
    } else {
      table.AddNamedColumn(name);
    }
  });
}

void AddNumberedColumns(TableImpl& table, std::size_t count) {
  for (std::size_t i = 1; i <= count; ++i) table.AddNamedColumn("Column " + std::to_string(i));
}

std::string TooManyValues(std::size_t columns, std::size_t values, std::size_t line) {
  return Core::StringFormat(
      "Csv file does not have consistent usage of column separator between lines!, Columns %d vs "
      "Values %d at line %d",
      static_cast<int>(columns), static_cast<int>(values), static_cast<int>(line));
}

/// Turns lines into rows of a table whose columns are already defined.
class RowBuilder {
 public:
  RowBuilder(CsvResult& result, ExtraValues extraValues, std::size_t textSize)
      : table_(*result.table),
        problems_(result.problems),
        extraValues_(extraValues),
        pool_(kBytesPerCharacter * textSize),
        notes_(table_.ColumnCount()) {}

  void Add(const CsvLine& line, std::size_t number);
  /// Passes the types of the cells to their columns.
  void Finish() const;

 private:
  struct ColumnNote {
    ValueType lastType = ValueType::Null;
    bool hasSeenNull = false;
  };

  void AddRow(const CsvLine& line);

  TableImpl& table_;
  std::vector<std::string>& problems_;
  ExtraValues extraValues_;
  Core::ObjectPool pool_;
  std::vector<ColumnNote> notes_;
};

void RowBuilder::Add(const CsvLine& line, std::size_t number) {
  if (line.ValueCount() > notes_.size()) {
    std::string problem = TooManyValues(notes_.size(), line.ValueCount(), number);
    if (extraValues_ == ExtraValues::Fail) throw std::runtime_error(problem);
    problems_.push_back(std::move(problem));
    if (extraValues_ == ExtraValues::DropLine) return;
  }
  AddRow(line);
}

/// The table owns the row before its cells hold anything, so nothing leaks if reading fails.
void RowBuilder::AddRow(const CsvLine& line) {
  _VARIANT* cell = table_.AppendBlankRow(&pool_).Cells();
  ColumnNote* note = notes_.data();
  line.ForEachValue(std::min(line.ValueCount(), notes_.size()), [&](std::string_view value) {
    ReadCell(Trim(value), &pool_, *cell);
    const ValueType type = Core::TypeOf(*cell++);
    if (type == ValueType::Null) {
      note++->hasSeenNull = true;
    } else {
      note++->lastType = type;
    }
  });
  // Missing values count as empty ones.
  for (; note != notes_.data() + notes_.size(); ++note) note->hasSeenNull = true;
}

void RowBuilder::Finish() const {
  for (std::size_t i = 0; i < notes_.size(); ++i)
    table_.Header().Columns()[i]->NoteValues(notes_[i].lastType, notes_[i].hasSeenNull);
}

}  // namespace

CsvResult ReadCsv(std::string_view content, std::string_view separator, ExtraValues extraValues) {
  const std::string_view text = TrimLine(WithoutByteOrderMark(content));
  if (separator.empty()) separator = DetectSeparator(text);
  const CsvLayout layout = DetectLayout(text, separator);

  CsvResult result{Core::MakePtr<TableImpl>(), {}};
  CsvLines lines(text, separator);
  std::size_t number = 0;
  for (lines.Next(); number < layout.firstFullLine; ++number) lines.Next();
  if (layout.hasHeader) {
    AddNamedColumns(*result.table, lines.Line());
  } else {
    AddNumberedColumns(*result.table, lines.Line().ValueCount());
  }
  RowBuilder rows(result, extraValues, text.size());
  if (!layout.hasHeader) rows.Add(lines.Line(), number);
  while (lines.Next()) rows.Add(lines.Line(), ++number);
  rows.Finish();
  return result;
}

}  // namespace Data::impl
