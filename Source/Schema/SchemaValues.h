#pragma once

#include <string_view>

#include "Core/Variant.h"

namespace Data {

/// A default or allowed value from the text that a document has for it; Null
/// for types whose values documents cannot hold.
/// @throws std::runtime_error "Parsing failed!" for what is no number, or the
///         failure of the date-time's reader
Core::Variant ReadValue(Core::ValueType type, std::string_view text);

}  // namespace Data
