#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "Core/Parts.h"
#include "Core/Ptr.h"
#include "Tables/TableImpl.h"
#include "Tables/TextChanges.h"

namespace Data::impl {

/// How to read JSON into a table; the defaults are what `Data_JsonToTable` does.
struct JsonTableOptions {
  /// Names of columns whose strings, numbers and Bools become text as written.
  std::vector<std::string_view> textColumns;
  bool isAllText = false;
  std::size_t maxRows = SIZE_MAX;
  bool findsChanges = false;
};

struct JsonTableResult {
  Core::Ptr<TableImpl> table;
  /// By column, if asked for. Lines are counted from 1.
  std::vector<ColumnChanges> changes;
};

/// What `ReadJsonTable` and `ReadJsonLines` throw for a text that cannot be read.
struct JsonFailure : std::runtime_error {
  JsonFailure(const char* message, bool isNotJsonAtAll, std::size_t failedAt)
      : std::runtime_error(message), isNotJson(isNotJsonAtAll), position(failedAt) {}

  bool isNotJson;
  std::size_t position;  ///< in the text, at or soon after the cause
};

/// Reads a JSON text into a table: an array of objects row by row, an object as one row, any other
/// value as one cell.
/// @param text  as `JsonTextOf` returns it
/// @throws JsonFailure "Json document is not valid!", "Object in the array is not of the type
///         object! Data structure is inconsistent across array!", "Unsupported variant type",
///         "Table %s must contain at least one column before you insert new row!", and the message
///         of `CellLimit::AddRow`
JsonTableResult ReadJsonTable(std::string_view text, const JsonTableOptions& options,
                              Core::Parts& parts);

/// Reads a text of which each line that is not empty is an object, and becomes a row. The lines are
/// read in parts, with the same result as in one.
/// @param text  as `JsonTextOf` returns it
/// @throws as `ReadJsonTable`
JsonTableResult ReadJsonLines(std::string_view text, const JsonTableOptions& options,
                              Core::Parts& parts);

/// Whether a text begins with an object and goes on after it.
bool IsJsonLines(std::string_view text);

}  // namespace Data::impl
