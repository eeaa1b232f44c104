#include "Tables/Csv/CsvRows.h"

#include <algorithm>

#include "DateTime/DateTimeImpl.h"
#include "Tables/Csv/CsvCells.h"
#include "Tables/Csv/CsvText.h"

namespace Data::impl {

using Core::ValueType;
using Structures::_VARIANT;

namespace {

/// How the text of a value differs from the one that `ReadCell` has made of it.
std::optional<TextChange> ChangeOf(std::string_view value, const _VARIANT& cell) {
  switch (Core::TypeOf(cell)) {
    case ValueType::Int64:
    case ValueType::Double:
      return ChangeOfNumber(value, cell);
    case ValueType::DateTime:
      return ChangeOfDateTime(value,
                              static_cast<DateTimeImpl*>(Core::ReferencedObject(cell))->Fields());
    case ValueType::String:
      if (LosesQuotes(value)) return TextChange::Quotes;
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

}  // namespace

CsvRows::CsvRows(TableImpl& table, const CsvRowRules& rules, CellLimit& limit)
    : table_(table),
      rules_(rules),
      limit_(limit),
      isPlain_(rules.isText.empty() && !rules.findsChanges),
      notes_(table.ColumnCount()),
      changes_(rules.findsChanges ? table.ColumnCount() : 0) {}

void CsvRows::Read(std::string_view text, std::string_view separator, Core::ObjectPool& pool,
                   Core::Parts& parts) {
  pool_ = &pool;
  std::size_t advanced = 0;
  CsvLines lines(text, separator);
  while (rows_.size() < rules_.maxRows && lines.Next()) {
    Add(lines.Line());
    ++lineCount_;
    const auto position = static_cast<std::size_t>(lines.Line().Text().data() - text.data());
    if (position - advanced < Core::Parts::kStep) continue;
    parts.Advance(position - advanced);
    advanced = position;
  }
  parts.Advance(text.size() - advanced);
}

void CsvRows::Add(const CsvLine& line) {
  if (line.ValueCount() > notes_.size()) {
    longLines_.push_back({lineCount_, line.ValueCount()});
    if (rules_.extraValues == ExtraValues::Fail) throw LongLineFailure();
    if (rules_.extraValues == ExtraValues::DropLine) return;
  }
  if (isPlain_) {
    AddRow(line, [this](std::string_view value, std::size_t, _VARIANT& cell) {
      ReadCell(value, pool_, cell);
    });
  } else {
    AddRow(line, [this](std::string_view value, std::size_t column, _VARIANT& cell) {
      ReadByRules(value, column, cell);
    });
  }
}

/// The row is in the list before its cells hold anything, so nothing leaks if reading fails.
template <class ReadValue>
void CsvRows::AddRow(const CsvLine& line, ReadValue&& readValue) {
  limit_.AddRow(notes_.size());
  rows_.push_back(RowImpl::Make(&table_, notes_.size(), pool_));
  RowImpl& row = *rows_.back();
  row.SetIndex(rows_.size() - 1);
  _VARIANT* cell = row.Cells();
  ColumnNote* const notes = notes_.data();
  ColumnNote* note = notes;
  line.ForEachValue(std::min(line.ValueCount(), notes_.size()), [&](std::string_view value) {
    readValue(Trim(value), static_cast<std::size_t>(note - notes), *cell);
    note++->Add(Core::TypeOf(*cell++));
  });
  // Missing values count as empty ones.
  for (; note != notes + notes_.size(); ++note) note->hasSeenNull = true;
}

void CsvRows::ReadByRules(std::string_view value, std::size_t column, _VARIANT& cell) {
  if (!rules_.isText.empty() && rules_.isText[column]) return ReadTextCell(value, pool_, cell);
  ReadCell(value, pool_, cell);
  if (rules_.findsChanges) NoteChange(value, column, cell);
}

void CsvRows::NoteChange(std::string_view value, std::size_t column, const _VARIANT& cell) {
  if (const auto change = ChangeOf(value, cell))
    changes_[column][static_cast<std::size_t>(*change)].Note(value, lineCount_);
}

void CsvRows::NoteTypes() const {
  for (std::size_t i = 0; i < notes_.size(); ++i)
    table_.Header().Columns()[i]->NoteValues(notes_[i]);
}

}  // namespace Data::impl
