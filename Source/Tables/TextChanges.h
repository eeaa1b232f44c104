#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Core/VariantRecord.h"
#include "DateTime/Calendar.h"

namespace Data::impl {

/// Why a text that was read as a cell does not come back as it was.
enum class TextChange : std::uint8_t {
  LeadingZeros,     ///< "00501" is 501
  NumberForm,       ///< "1.10" is 1.1, "1e5" is 100000
  Quotes,           ///< quotes that belong to the text are gone
  DateWithoutTime,  ///< "2024-01-31" is noon of that day
  DateForm,         ///< "3-4-7 main street" and "2024-01-31T10:00:00+02:00" are read as date-times
};
inline constexpr std::size_t kTextChanges = 5;

/// The texts of a column that a change concerns.
struct ChangedTexts {
  std::uint64_t count = 0;
  std::uint64_t firstLine = 0;
  std::string firstText;

  void Note(std::string_view text, std::uint64_t line);
  /// Adds the texts of lines that come later.
  void Append(ChangedTexts&& later, std::uint64_t linesBefore);
};

/// By change.
using ColumnChanges = std::array<ChangedTexts, kTextChanges>;

/// What becomes of the text of a number.
/// @param number  the Int64 or Double that it was read as
std::optional<TextChange> ChangeOfNumber(std::string_view text, const Structures::_VARIANT& number);

/// What becomes of the text of a date-time. A space instead of the "T", a "Z" at the end and zeros
/// at the end of a fraction are no change.
std::optional<TextChange> ChangeOfDateTime(std::string_view text, const CalendarFields& fields);

}  // namespace Data::impl
