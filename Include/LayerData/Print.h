#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "LayerData/ColumnData.h"
#include "LayerData/Table.h"

namespace layerdata {

/// How `Print` shows a table.
struct PrintOptions {
  std::int64_t rows = 20;      ///< at most; of a longer table the first ones
  std::size_t width = 80;      ///< of the terminal; columns that do not fit are left out
  std::size_t cellWidth = 32;  ///< of one column; longer texts end with "…"
  bool types = false;          ///< whether a line under the names says what each column holds
};

namespace detail {

/// Reads the first code point of UTF-8 and removes it; an invalid byte is U+FFFD.
inline char32_t TakeCodePoint(std::string_view& text) noexcept {
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t size = first < 0x80 ? 1 : first >> 5 == 6 ? 2 : first >> 4 == 14 ? 3 : 4;
  char32_t point = size == 1 ? first : first & (0xFFu >> (size + 1));
  std::size_t taken = 1;
  while (taken < size && taken < text.size() && (text[taken] & 0xC0) == 0x80)
    point = point << 6 | (static_cast<unsigned char>(text[taken++]) & 0x3Fu);
  const bool isValid = taken == size && (first < 0x80 || (first >= 0xC2 && first < 0xF5));
  text.remove_prefix(taken);
  return isValid ? point : U'\uFFFD';
}

/// The terminal columns of a code point: 2 for East Asian wide characters and emoji, 0 for marks
/// that combine with the character before.
inline std::size_t ColumnsOf(char32_t point) noexcept {
  static constexpr struct {
    char32_t first, last;
    std::size_t columns;
  } kRanges[] = {
      {0x0300, 0x036F, 0},   {0x0483, 0x0489, 0},   {0x0591, 0x05BD, 0},   {0x0610, 0x061A, 0},
      {0x064B, 0x065F, 0},   {0x1100, 0x115F, 2},   {0x1AB0, 0x1AFF, 0},   {0x1DC0, 0x1DFF, 0},
      {0x200B, 0x200F, 0},   {0x20D0, 0x20FF, 0},   {0x2E80, 0x303E, 2},   {0x3041, 0xA4CF, 2},
      {0xA960, 0xA97F, 2},   {0xAC00, 0xD7A3, 2},   {0xF900, 0xFAFF, 2},   {0xFE00, 0xFE0F, 0},
      {0xFE20, 0xFE2F, 0},   {0xFE30, 0xFE6F, 2},   {0xFF00, 0xFF60, 2},   {0xFFE0, 0xFFE6, 2},
      {0x1F300, 0x1F64F, 2}, {0x1F680, 0x1F6FF, 2}, {0x1F900, 0x1F9FF, 2}, {0x20000, 0x3FFFD, 2},
  };
  const auto* range = std::lower_bound(std::begin(kRanges), std::end(kRanges), point,
                                       [](const auto& r, char32_t p) { return r.last < p; });
  return range != std::end(kRanges) && point >= range->first ? range->columns : 1;
}

/// A text of a cell as a line: control characters become spaces, and what exceeds the width "…".
struct CellText {
  std::string text;
  std::size_t width = 0;

  CellText(std::string_view whole, std::size_t most) {
    std::size_t sizeToCut = 0;  // where "…" still fits
    while (!whole.empty()) {
      const std::string_view before = whole;
      const char32_t point = TakeCodePoint(whole);
      const bool isControl = point < 0x20 || point == 0x7F;
      const std::size_t columns = isControl ? 1 : ColumnsOf(point);
      if (width + columns > most) {
        text.resize(sizeToCut);
        text += "…";
        width = most;
        return;
      }
      text += isControl            ? " "
              : point == U'\uFFFD' ? "\uFFFD"
                                   : before.substr(0, before.size() - whole.size());
      width += columns;
      if (width < most) sizeToCut = text.size();
    }
  }
};

/// One column of a printed table: its lines, the first of them its name.
struct PrintedColumn {
  std::vector<CellText> lines;
  std::size_t width = 0;
  bool isNumeric = true;

  void Add(std::string_view text, std::size_t most) {
    lines.emplace_back(text, most);
    width = std::max(width, lines.back().width);
  }
  void AppendTo(std::string& line, std::size_t index) const {
    const std::string blanks(width - lines[index].width, ' ');
    if (isNumeric) line += blanks;
    line += lines[index].text;
    if (!isNumeric) line += blanks;
  }
};

inline PrintedColumn MakePrinted(const Column& column, std::int64_t rows, bool withType,
                                 std::size_t cellWidth) {
  PrintedColumn printed;
  printed.Add(column.Name(), cellWidth);
  if (withType)
    printed.Add(ColumnData(column, LD_COLUMN_FORMAT_AUTOMATIC, true).TypeName(), cellWidth);
  // Dates without a time are printed without it.
  const bool holdsDays = ColumnData(column, LD_COLUMN_FORMAT_AUTOMATIC, true, rows).HoldsDays();
  for (std::int64_t row = 0; row < rows; ++row) {
    const Cell cell = column[row];
    printed.isNumeric &= cell.IsNull() || cell.IsNumber();
    const std::string text = cell.ToText();
    printed.Add(holdsDays ? text.substr(0, text.find('T')) : text, cellWidth);
  }
  return printed;
}

}  // namespace detail

/// Prints a table for a terminal with aligned columns, numbers to the right. Ends with a line that
/// says how large the table is if not all of it is shown.
inline void Print(std::ostream& out, const Table& table, const PrintOptions& options = {}) {
  const std::int64_t rows = std::clamp<std::int64_t>(options.rows, 0, table.RowCount());
  const std::size_t cellWidth = std::max<std::size_t>(options.cellWidth, 1);
  std::vector<detail::PrintedColumn> columns;
  std::size_t width = 0;
  for (const Column column : table.Columns()) {
    columns.push_back(detail::MakePrinted(column, rows, options.types, cellWidth));
    width += (columns.size() > 1 ? 2 : 0) + columns.back().width;
    if (width <= options.width || columns.size() == 1) continue;
    columns.pop_back();
    break;
  }
  const auto shown = static_cast<std::int64_t>(columns.size());
  const std::size_t lines = columns.empty() ? 0 : columns.front().lines.size();
  for (std::size_t i = 0; i < lines; ++i) {
    std::string line;
    for (const detail::PrintedColumn& column : columns) {
      if (!line.empty()) line += "  ";
      column.AppendTo(line, i);
    }
    line.resize(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  }
  if (rows < table.RowCount() || shown < table.ColumnCount())
    out << "[" << rows << " of " << table.RowCount() << " rows, " << shown << " of "
        << table.ColumnCount() << " columns]\n";
}

inline std::ostream& operator<<(std::ostream& out, const Table& table) {
  Print(out, table);
  return out;
}

}  // namespace layerdata
