#pragma once

#include <concepts>
#include <cstdint>
#include <string>

/// Words that several messages and pages share.
namespace program {

/// A number, as it is written, and what is counted: "1 row", "2 rows".
std::string Counted(std::integral auto count, const char* what, const std::string& written) {
  return written + " " + what + (count == 1 ? "" : "s");
}
std::string Counted(std::integral auto count, const char* what) {
  return Counted(count, what, std::to_string(count));
}

/// "in.csv, line 5: "
inline std::string AtLine(const std::string& source, std::uint64_t line) {
  return source + ", line " + std::to_string(line) + ": ";
}

}  // namespace program
