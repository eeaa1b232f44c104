#pragma once

#include <string_view>

#include "Core/Parts.h"
#include "Data/Interfaces/ITable.h"
#include "Text/TextBuffer.h"
#include "Text/TextOutput.h"

namespace Data::impl {

struct CsvForm {
  std::string_view separator;
  bool alwaysQuote = false;
  bool hasHeader = true;
  std::string_view lineEnd = "\n";
};

/// Appends a text whose quotes are doubled.
void AppendWithDoubledQuotes(std::string_view value, TextBuffer& text);

/// A table as delimited text: a line with the names of the columns, neither quoted nor escaped,
/// then one per row, the last without a line break. Quotes in texts and documents are doubled;
/// those that contain the separator, or all of them, are quoted. The table may change while the
/// calling thread writes it, see `TableCursor`.
/// @throws what `Core::ToText` throws for a cell whose contents do not match its type
void WriteCsv(Interfaces::ITable& table, const CsvForm& form, Core::Parts& parts,
              TextOutput& output);

}  // namespace Data::impl
