#pragma once

#include <string>
#include <string_view>

#include "Core/ObjectPool.h"
#include "Data/Structures/Variant.h"

namespace Data::impl {

/// Reads a trimmed value into a cell that is Null; an empty value leaves it so. A value that is
/// neither a number nor a date-time is text: all quotes at its ends are removed, and doubled quotes
/// inside become single ones. What looks like a number but has no value is text, too.
/// @param pool  where texts and date-times are allocated; null for the heap
void ReadCell(std::string_view value, Core::ObjectPool* pool, Structures::_VARIANT& cell);

/// A text in which each doubled quote stands for a single one.
struct QuotedText {
  std::string_view text;
  std::size_t doubledQuotes;
};

/// The text that a trimmed value stands for exactly: what the quotes around the whole of it
/// enclose, if all quotes inside are doubled, otherwise the value as it is.
QuotedText ExactText(std::string_view value);

/// A copy of the exact text.
std::string Unquoted(std::string_view value);

/// Whether `ReadCell` makes another text of a value than its exact one.
bool LosesQuotes(std::string_view value);

/// As `ReadCell`, but keeps a value that is not empty as its exact text.
void ReadTextCell(std::string_view value, Core::ObjectPool* pool, Structures::_VARIANT& cell);

}  // namespace Data::impl
