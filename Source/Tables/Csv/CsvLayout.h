#pragma once

#include <cstddef>
#include <string_view>

namespace Data::impl {

/// The layout of a text, detected from its first lines.
struct CsvLayout {
  /// Number of values in the widest of the sampled lines.
  std::size_t valueCount;
  /// Index of the first line with as many values as the widest of the sampled lines; the lines
  /// before it are a preamble.
  std::size_t firstFullLine;
  /// Whether that line names the columns: all its values are text or empty, and at least one is
  /// text.
  bool hasHeader;
};

/// Whichever of comma, semicolon, TAB and vertical bar comes first in the text; a comma if none
/// does. Quotes are not taken into account.
std::string_view DetectSeparator(std::string_view text);

/// What the caller says of the first line; a given answer leaves no line out as a preamble.
enum class CsvHeader { Detect, Yes, No };

/// @throws std::runtime_error "No lines detected in the csv content"
CsvLayout DetectLayout(std::string_view text, std::string_view separator, CsvHeader header);

}  // namespace Data::impl
