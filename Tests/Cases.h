#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Data::tests {

/// One line of a data file: input, expected output and, last, the reason.
struct Case {
  std::string where;  ///< file and line, for messages
  std::vector<std::string> fields;

  /// "" beyond the last field
  std::string_view operator[](std::size_t index) const {
    return index < fields.size() ? std::string_view(fields[index]) : std::string_view();
  }
};

/// The cases of one section of a file in Tests/Data.
///
/// A line is a case: fields separated by "|", trimmed. Escapes: \n \r \t \0 \\, \s for a space,
/// \p for "|", \xHH for a byte. Lines that start with "#" are comments, "[name]" starts a section.
/// @throws std::runtime_error if the file is missing, if the section has no cases, and for an
///         unknown escape
std::vector<Case> Cases(const char* file, std::string_view section);

}  // namespace Data::tests
