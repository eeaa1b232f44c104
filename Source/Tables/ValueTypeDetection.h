#pragma once

#include <string_view>

#include "Core/ValueTypes.h"
#include "DateTime/Calendar.h"
#include "Tables/NumberText.h"

namespace Data::impl {

/// A text with the value that it looks like; the member of another type than
/// `type` means nothing.
struct TypedText {
  Core::ValueType type = Core::ValueType::Unknown;
  NumberText number;
  CalendarFields dateTime;
};

/// Classifies a trimmed text: Unknown for an empty one, Int64, Double, DateTime
/// or String. The value is read on the way, not searched again afterwards.
TypedText ReadTypedText(std::string_view text) noexcept;

/// Reads a text that looks like a date, a date with time or an hour and minute
/// behind a `T`; false for any other. `out` is unspecified then.
bool ReadDateTime(std::string_view text, CalendarFields& out) noexcept;

/// The type alone, of a text with space around it.
Core::ValueType DetectValueType(std::string_view text) noexcept;

}  // namespace Data::impl
