#include "Tables/Csv/CsvReader.h"

#include <algorithm>
#include <stdexcept>

#include "Core/StringFormat.h"
#include "Platform/Uuids.h"
#include "Tables/Csv/CsvCells.h"
#include "Tables/Csv/CsvLines.h"
#include "Tables/Csv/CsvParts.h"
#include "Tables/Csv/CsvText.h"
#include "Text/TextOrder.h"

namespace Data::impl {

namespace {

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
void AddNamedColumns(TableImpl& table, const CsvLine& header, bool unquotesNames) {
  header.ForEachValue(header.ValueCount(), [&](std::string_view value) {
    const std::string_view written = UpToFirstZero(Trim(value));
    const std::string name(unquotesNames ? Unquoted(written) : written);
    table.AddNamedColumn(name.empty() ? MakeUnnamedName() : name);
  });
}

void AddNumberedColumns(TableImpl& table, std::size_t count) {
  for (std::size_t i = 1; i <= count; ++i) table.AddNamedColumn("Column " + std::to_string(i));
}

std::vector<bool> FindTextColumns(const TableImpl& table, const CsvOptions& options) {
  const auto& columns = table.Header().Columns();
  if (options.isAllText) return std::vector<bool>(columns.size(), true);
  std::vector<bool> isText;
  for (const std::string_view name : options.textColumns) {
    const auto isNamed = [name](const auto& column) {
      return column->Name() == name || Unquoted(column->Name()) == name;
    };
    const auto found = std::ranges::find_if(columns, isNamed);
    if (found == columns.end())
      throw std::runtime_error("The text has no column " + std::string(name) + "!");
    isText.resize(columns.size());
    isText[static_cast<std::size_t>(found - columns.begin())] = true;
  }
  return isText;
}

/// Reads the lines before the first row, and makes the columns.
/// @return the lines of the rows
std::string_view ReadHeader(std::string_view text, const CsvOptions& options, CsvResult& result) {
  const CsvLayout layout = DetectLayout(text, result.separator, options.header);
  CsvLines lines(text, result.separator);
  while (lines.Next() && result.preamble.size() < layout.firstFullLine)
    result.preamble.emplace_back(lines.Line().Text());
  const std::string_view line = lines.Line().Text();
  const auto begin = static_cast<std::size_t>(line.data() - text.data());
  result.hasHeader = layout.hasHeader;
  result.lineCount = layout.firstFullLine + (layout.hasHeader ? 1 : 0);
  if (!layout.hasHeader) {
    AddNumberedColumns(*result.table, layout.valueCount);
    return text.substr(begin);
  }
  AddNamedColumns(*result.table, lines.Line(), options.unquotesNames);
  return text.substr(begin + line.size());
}

/// Joins the rows, notes and lines of the parts in their order.
void Join(std::vector<CsvRows>& read, CsvResult& result, Core::Parts& parts) {
  TableImpl& table = *result.table;
  std::vector<std::size_t> firstRows;
  std::size_t rowCount = 0;
  result.changes.resize(read.front().Changes().size());
  for (CsvRows& part : read) {
    firstRows.push_back(rowCount);
    rowCount += part.Rows().size();
    for (const auto& [line, values] : part.LongLines())
      result.longLines.push_back({result.lineCount + line, values});
    for (std::size_t i = 0; i < result.changes.size(); ++i)
      for (std::size_t kind = 0; kind < kTextChanges; ++kind)
        result.changes[i][kind].Append(std::move(part.Changes()[i][kind]), result.lineCount);
    result.lineCount += part.LineCount();
    part.NoteTypes();
  }
  if (read.size() == 1) return table.AdoptRows(std::move(read.front().Rows()));

  std::vector<Core::Ptr<RowImpl>> rows(rowCount);
  parts.Run(read.size(), [&](std::size_t i) {
    std::size_t index = firstRows[i];
    for (auto& row : read[i].Rows()) {
      row->SetIndex(index);
      rows[index++] = std::move(row);
    }
  });
  table.AdoptRows(std::move(rows));
}

[[noreturn]] void ThrowFirstLongLine(const std::vector<CsvRows>& read, const CsvResult& result) {
  std::size_t linesBefore = result.lineCount;
  auto part = read.begin();
  for (; part->LongLines().empty(); ++part) linesBefore += part->LineCount();
  LongLine line = part->LongLines().front();
  line.line += linesBefore;
  throw std::runtime_error(LongLineMessage(result.table->ColumnCount(), line));
}

void ReadRows(std::string_view text, const CsvRowRules& rules, CellLimit& limit, CsvResult& result,
              Core::Parts& parts) {
  const bool isLimited = rules.maxRows < text.size();
  const auto texts = isLimited ? std::vector{text} : CutAtLineEnds(text, parts);
  std::vector<CsvRows> read(texts.size(), CsvRows(*result.table, rules, limit));
  PartPools pools;
  try {
    parts.Run(texts.size(), [&](std::size_t i) {
      auto pool = pools.Take(texts[i].size());
      read[i].Read(texts[i], result.separator, *pool, parts);
      pools.PutBack(std::move(pool));
    });
  } catch (const LongLineFailure&) {
    ThrowFirstLongLine(read, result);
  }
  Join(read, result, parts);
}

}  // namespace

std::string LongLineMessage(std::size_t columnCount, LongLine line) {
  return Core::StringFormat(
      "Csv file does not have consistent usage of column separator between lines!, Columns %d vs "
      "Values %d at line %d",
      static_cast<int>(columnCount), static_cast<int>(line.valueCount),
      static_cast<int>(line.line));
}

CsvResult ReadCsv(std::string_view content, const CsvOptions& options, Core::Parts& parts) {
  const std::string_view text = TrimLine(WithoutByteOrderMark(content));
  CsvResult result;
  result.table = Core::MakePtr<TableImpl>();
  result.separator = options.separator.empty() ? DetectSeparator(text) : options.separator;
  const std::string_view lines = ReadHeader(text, options, result);
  const CsvRowRules rules = {.extraValues = options.extraValues,
                             .maxRows = options.maxRows,
                             .isText = FindTextColumns(*result.table, options),
                             .findsChanges = options.findsChanges};
  CellLimit limit(content.size());
  ReadRows(lines, rules, limit, result, parts);
  return result;
}

}  // namespace Data::impl
