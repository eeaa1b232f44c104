#pragma once

#include <cstddef>
#include <string_view>

namespace Data::impl {

/// What the first lines of a text tell about all of it.
struct CsvLayout {
  /// Position of the first line with as many values as any of the sample; the
  /// lines before it are a preamble.
  std::size_t firstFullLine = 0;
  /// Whether that line names the columns: every value of it is text or empty,
  /// and one at least is text.
  bool hasHeader = false;
};

/// The earliest of comma, semicolon, TAB and vertical bar; without any the comma.
std::string_view DetectSeparator(std::string_view text);

/// @throws std::runtime_error "No lines detected in the csv content"
CsvLayout DetectLayout(std::string_view text, std::string_view separator);

}  // namespace Data::impl
