#pragma once

#include <cstdint>
#include <string>

namespace Data::Platform {

/// The system's text for one of its status codes, UTF-8, as the system words
/// and ends it; "<Error message could not be obtained from Ntdll.dll>" for a
/// code that it does not know.
std::string SystemErrorText(std::int32_t status);

}  // namespace Data::Platform
