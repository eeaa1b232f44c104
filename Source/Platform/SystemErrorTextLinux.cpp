#include <string.h>

#include "Platform/SystemErrorText.h"

namespace Data::Platform {

std::string SystemErrorText(std::int32_t status) {
  // Unlike strerror_r this one tells unknown codes apart and heeds no locale.
  const char* text = strerrordesc_np(status);
  return text ? text : "<Error message could not be obtained from Ntdll.dll>";
}

}  // namespace Data::Platform
