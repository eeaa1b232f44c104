#pragma once

#include <cstddef>

#include "Data/Structures/Uuid.h"

namespace Data::Platform {

/// Characters of an identifier's text: groups of 8, 4, 4, 4 and 12 hexadecimal
/// digits with "-" between them.
constexpr std::size_t kUuidTextLength = 36;

/// A new random identifier.
void NewUuid(Structures::_UUID& uuid);

/// Prints in lowercase.
/// @param text  room for `kUuidTextLength` units; no terminator is written
/// @return false if the system cannot print it
bool UuidToText(const Structures::_UUID& uuid, char16_t* text);

/// Reads digits of either case.
/// @param text  zero-terminated
/// @return false for any other form; `uuid` is left as it was
bool UuidFromText(const char* text, Structures::_UUID& uuid);

}  // namespace Data::Platform
