#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Documents/JsonWriter.h"
#include "Tables/RowsText.h"

/// Tables as JSON: an object for each row, with a member for each column.
namespace Data::impl {

struct JsonLayout {
  /// Whether each object stands on a line of its own, without an array around them.
  bool isLines = false;
  /// Spaces for each level of an array; 0 for no white space at all.
  std::uint32_t indentation = 0;
};

/// What is written around the cells.
struct JsonPunctuation {
  JsonPunctuation(const TableCursor& table, const JsonLayout& layout);

  std::string begin, between, endOfRow;
  std::string end, endWithoutRow;  // of the whole: the latter if there is no row
  /// The names of the columns, with what stands before the cell.
  std::vector<std::string> keys;
};

/// @tparam Cells  has `bool Append(Row&, const _VARIANT& cell, std::size_t column, TextBuffer&)
///                const`, which returns false if the text of the cell cannot be used in place
template <class Cells>
class JsonRows final : public RowFormatOf<JsonRows<Cells>> {
 public:
  JsonRows(const JsonPunctuation& punctuation, const Cells& cells)
      : RowFormatOf<JsonRows>(punctuation.between), punctuation_(punctuation), cells_(cells) {}

  template <class Row>
  bool AppendRow(Row& row, TextBuffer& text) const {
    if (punctuation_.keys.empty()) text.Put('{');
    for (std::size_t i = 0; i < punctuation_.keys.size(); ++i) {
      text.Append(punctuation_.keys[i]);
      if (!cells_.Append(row, row.Cell(i), i, text)) return false;
    }
    text.Append(punctuation_.endOfRow);
    return true;
  }

 private:
  const JsonPunctuation& punctuation_;
  const Cells& cells_;
};

/// Writes a whole table.
template <class Cells>
void WriteJson(TableCursor& table, const JsonLayout& layout, const Cells& cells, Core::Parts& parts,
               TextOutput& output) {
  const JsonPunctuation punctuation(table, layout);
  output.Append(punctuation.begin);
  const bool hasRow = WriteRows(table, JsonRows<Cells>(punctuation, cells), parts, output);
  output.Append(hasRow ? punctuation.end : punctuation.endWithoutRow);
}

}  // namespace Data::impl
