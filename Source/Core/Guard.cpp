#include "Core/Guard.h"

#include "Core/ErrorCodeImpl.h"

namespace Core {

void ReportError(IErrorCode** error, std::string_view message, ErrorKind kind) noexcept {
  if (!error || *error) return;
  try {
    *error = new impl::ErrorCodeImpl(message, static_cast<std::uint32_t>(kind));
  } catch (...) {
    // Without memory for an error object, the result alone reports the failure.
  }
}

}  // namespace Core
