#pragma once

#include <cstdint>
#include <string>

namespace Data::Platform {

/// The system's text for a status code as UTF-8, unchanged (it ends with a line
/// break); "<Error message could not be obtained from Ntdll.dll>" for an unknown code.
/// Windows only.
std::string SystemErrorText(std::int32_t status);

}  // namespace Data::Platform
