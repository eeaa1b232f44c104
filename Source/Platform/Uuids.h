#pragma once

#include <cstddef>

#include "Data/Structures/Uuid.h"

namespace Data::Platform {

/// Length of the text form: groups of 8, 4, 4, 4 and 12 hexadecimal digits, separated
/// by "-".
constexpr std::size_t kUuidTextLength = 36;

/// Creates a random identifier.
/// @throws std::system_error on Linux if the system has no random bytes
void NewUuid(Structures::_UUID& uuid);

/// Prints lowercase digits.
/// @param text  room for `kUuidTextLength` units; no terminator is written
/// @return false if the system fails
bool UuidToText(const Structures::_UUID& uuid, char16_t* text);

/// Parses exactly this form, with digits of either case.
/// @param text  zero-terminated
/// @return false for any other text; `uuid` is then unchanged
bool UuidFromText(const char* text, Structures::_UUID& uuid);

}  // namespace Data::Platform
