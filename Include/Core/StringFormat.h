#pragma once

#include <cassert>
#include <cstdarg>
#include <cstdio>
#include <string>

namespace Core {

#if defined(__clang__)
[[gnu::format(printf, 1, 2)]]
#elif defined(__GNUC__)
// Standard conversions on Windows too, where "printf" would mean the system's own.
[[gnu::format(gnu_printf, 1, 2)]]
#endif
/// The printf-style result as a new string. A format that the standard library
/// rejects fails an assertion in debug builds and otherwise gives an empty text.
inline std::string
StringFormat(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  va_list measured;
  va_copy(measured, arguments);
  int result = std::vsnprintf(nullptr, 0, format, measured);
  va_end(measured);
  assert(-1 != result);
  std::string text(result > 0 ? static_cast<std::size_t>(result) : 0, '\0');
  result = std::vsnprintf(text.data(), text.size() + 1, format, arguments);
  va_end(arguments);
  assert(-1 != result);
  return text;
}

}  // namespace Core
