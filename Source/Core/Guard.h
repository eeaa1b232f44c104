#pragma once

#include <cstdint>
#include <exception>
#include <string_view>
#include <type_traits>
#include <utility>

#include "Core/Failures.h"
#include "Core/IErrorCode.h"

namespace Core {

enum class ErrorKind : std::uint32_t { Problem = 0, UnknownException = 1, StandardException = 2 };

/// Stores a new error object if `error` is not null and holds none yet; does nothing if there is no
/// memory for one.
void ReportError(IErrorCode** error, std::string_view message, ErrorKind kind) noexcept;

/// Runs the body of a guarded operation or export so that no exception leaves it. A body without a
/// result succeeds by returning; after a failure the result is false, zero or null.
template <class Body>
auto Guarded(IErrorCode** error, Body&& body) noexcept {
  using Result = std::invoke_result_t<Body>;
  try {
    if constexpr (std::is_void_v<Result>) {
      body();
      return true;
    } else {
      return body();
    }
  } catch (const std::exception& exception) {
    ReportError(error, exception.what(), ErrorKind::StandardException);
  } catch (...) {
    ReportError(error, "Uncaught exception", ErrorKind::UnknownException);
  }
  if constexpr (std::is_void_v<Result>) {
    return false;
  } else {
    return Result{};
  }
}

}  // namespace Core
