#include "Documents/JsonRows.h"

namespace Data::impl {

namespace {

/// The line break before a mark at a level; the mark alone without indentation.
std::string OnNewLine(char mark, std::uint32_t level, const JsonLayout& layout) {
  if (layout.indentation == 0) return {mark};
  std::string text(1 + level * layout.indentation, ' ');
  text.front() = '\n';
  text.push_back(mark);
  return text;
}

}  // namespace

JsonPunctuation::JsonPunctuation(const TableCursor& table, const JsonLayout& layout)
    : begin(layout.isLines ? "" : "["),
      between(layout.isLines ? "" : ","),
      endOfRow(layout.isLines ? "}\n" : OnNewLine('}', 1, layout)),
      end(layout.isLines ? "" : OnNewLine(']', 0, layout)),
      endWithoutRow(layout.isLines ? "" : "]") {
  keys.reserve(table.ColumnCount());
  for (std::size_t i = 0; i < table.ColumnCount(); ++i) {
    TextBuffer key;
    key.Append(i == 0 ? OnNewLine('{', 1, layout) : ",");
    TextBuffer name;
    AppendJsonString(name, table.ColumnName(i));
    key.Append(OnNewLine('"', 2, layout));
    key.Append(name.View().substr(1));
    key.Append(layout.indentation == 0 ? ":" : ": ");
    keys.emplace_back(key.View());
  }
}

}  // namespace Data::impl
