#pragma once

#include <cassert>
#include <cstdarg>
#include <cstdio>
#include <string>

namespace Core {

namespace detail {

inline void CheckFormatted([[maybe_unused]] int result) { assert(-1 != result); }

}  // namespace detail

#if defined(__clang__)
[[gnu::format(printf, 1, 2)]]
#elif defined(__GNUC__)
// The standard conversions. On Windows, plain "printf" would mean the system's own.
[[gnu::format(gnu_printf, 1, 2)]]
#endif
/// Formats as printf does. If the standard library reports an error, an assertion fails in debug
/// builds, and the result is empty otherwise.
inline std::string
StringFormat(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  va_list measured;
  va_copy(measured, arguments);
  int result = std::vsnprintf(nullptr, 0, format, measured);
  va_end(measured);
  detail::CheckFormatted(result);
  std::string text(result > 0 ? static_cast<std::size_t>(result) : 0, '\0');
  result = std::vsnprintf(text.data(), text.size() + 1, format, arguments);
  va_end(arguments);
  detail::CheckFormatted(result);
  return text;
}

}  // namespace Core
