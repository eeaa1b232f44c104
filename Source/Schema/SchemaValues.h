#pragma once

#include <string_view>

#include "Core/Variant.h"

namespace Data {

/// Converts the text of a default or allowed value in a document. An empty text
/// is Null unless the type is String, and so is any text for the types whose
/// values documents cannot hold.
/// @throws std::runtime_error "Parsing failed!" if the text is not a number, or
///         as `FieldsOfIso8601`
Core::Variant ReadValue(Core::ValueType type, std::string_view text);

}  // namespace Data
