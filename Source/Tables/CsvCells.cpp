#include "Tables/CsvCells.h"

#include <cstring>

#include "Core/VariantRecord.h"
#include "DateTime/DateTimeImpl.h"
#include "Tables/CsvText.h"
#include "Tables/NumberText.h"
#include "Tables/ValueTypeDetection.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

using Core::ValueType;
using Structures::_VARIANT;

namespace {

constexpr bool IsQuote(char c) { return c == kQuote; }

std::size_t CountPairsOfQuotes(std::string_view text) {
  std::size_t pairs = 0;
  for (std::size_t at = text.find("\"\""); at != std::string_view::npos;
       at = text.find("\"\"", at + 2))
    ++pairs;
  return pairs;
}

/// Copies a text with one quote for each pair of them.
/// @return the number of bytes written
std::size_t CopyUnpaired(std::string_view text, char* out) {
  char* end = out;
  while (!text.empty()) {
    const std::size_t pair = text.find("\"\"");
    const bool isLast = pair == std::string_view::npos;
    const std::size_t size = isLast ? text.size() : pair + 1;
    end = static_cast<char*>(std::memcpy(end, text.data(), size)) + size;
    text.remove_prefix(isLast ? size : size + 1);
  }
  return static_cast<std::size_t>(end - out);
}

_VARIANT MakeText(std::string_view text, Core::ObjectPool* pool) {
  if (Core::FitsInline(text)) return Core::MakeInlineText(text);
  return Core::MakeReference(ValueType::String, MultiByteStringImpl::FromUtf8(text, pool).Detach());
}

_VARIANT MakeUnpairedText(std::string_view text, std::size_t pairs, Core::ObjectPool* pool) {
  const auto fill = [text](char* out) { return CopyUnpaired(text, out); };
  const std::size_t size = text.size() - pairs;
  char inlined[Core::kInlineTextCapacity];
  if (size <= sizeof inlined) return MakeText({inlined, fill(inlined)}, pool);
  return Core::MakeReference(ValueType::String,
                             MultiByteStringImpl::FromUtf8(size, fill, pool).Detach());
}

_VARIANT MakeTextCell(std::string_view value, Core::ObjectPool* pool) {
  const std::string_view text = Trim(value, IsQuote);
  const std::size_t pairs = CountPairsOfQuotes(text);
  return pairs == 0 ? MakeText(text, pool) : MakeUnpairedText(text, pairs, pool);
}

}  // namespace

_VARIANT MakeCell(std::string_view value, Core::ObjectPool* pool) {
  if (value.empty()) return Core::MakeNull();
  const NumberText number = ReadNumber(value);
  if (number.hasValue)
    return {Core::MakeTag(number.type, Core::StorageForm::Value), {number.word, 0}};
  CalendarFields dateTime;
  if (number.type == ValueType::String && ReadDateTime(value, dateTime))
    return Core::MakeReference(ValueType::DateTime, MakeDateTime(dateTime, pool).Detach());
  return MakeTextCell(value, pool);
}

}  // namespace Data::impl
