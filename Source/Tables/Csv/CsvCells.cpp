#include "Tables/Csv/CsvCells.h"

#include <algorithm>
#include <cstring>

#include "Core/VariantRecord.h"
#include "DateTime/DateTimeImpl.h"
#include "Tables/Csv/CsvText.h"
#include "Tables/ParsedNumber.h"
#include "Tables/ValueTypeDetection.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

using Core::ValueType;
using Structures::_VARIANT;

namespace {

constexpr bool IsQuote(char c) { return c == kQuote; }

inline std::size_t CountDoubledQuotes(std::string_view text) {
  std::size_t pairs = 0;
  for (std::size_t at = text.find("\"\""); at != std::string_view::npos;
       at = text.find("\"\"", at + 2))
    ++pairs;
  return pairs;
}

/// Copies a text, with each doubled quote as a single one.
/// @return the number of bytes written
std::size_t UnescapeQuotes(std::string_view text, char* out) {
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

/// Stores member by member: a record that is built elsewhere and then copied would be read back
/// before the processor has stored it, which stalls.
void Fill(_VARIANT& cell, std::uint32_t tag, std::uint64_t first, std::uint64_t second = 0) {
  cell.type = tag;
  cell.value[0] = first;
  cell.value[1] = second;
}

void FillWithObject(_VARIANT& cell, ValueType type, Core::IObject* object) {
  Fill(cell, Core::MakeTag(type, Core::StorageForm::Reference),
       reinterpret_cast<std::uintptr_t>(object));
}

void FillWithText(_VARIANT& cell, std::string_view text, Core::ObjectPool* pool) {
  if (!Core::FitsInline(text))
    return FillWithObject(cell, ValueType::String,
                          MultiByteStringImpl::FromUtf8(text, pool).Detach());
  const _VARIANT inlined = Core::MakeInlineText(text);
  Fill(cell, inlined.type, inlined.value[0], inlined.value[1]);
}

void FillWithUnescapedText(_VARIANT& cell, std::string_view text, std::size_t pairs,
                           Core::ObjectPool* pool) {
  const auto fill = [text](char* out) { return UnescapeQuotes(text, out); };
  const std::size_t size = text.size() - pairs;
  char inlined[Core::kInlineTextCapacity];
  if (size <= sizeof inlined) return FillWithText(cell, {inlined, fill(inlined)}, pool);
  FillWithObject(cell, ValueType::String, MultiByteStringImpl::FromUtf8(size, fill, pool).Detach());
}

void FillWithQuotedText(_VARIANT& cell, QuotedText text, Core::ObjectPool* pool) {
  if (text.doubledQuotes == 0) return FillWithText(cell, text.text, pool);
  FillWithUnescapedText(cell, text.text, text.doubledQuotes, pool);
}

/// The text of a value as `ReadCell` reads it.
QuotedText UsualText(std::string_view value) {
  const std::string_view text = Trim(value, IsQuote);
  return {text, CountDoubledQuotes(text)};
}

}  // namespace

QuotedText ExactText(std::string_view value) {
  if (value.size() < 2 || !value.starts_with(kQuote) || !value.ends_with(kQuote)) return {value, 0};
  const std::string_view inside = value.substr(1, value.size() - 2);
  const std::size_t pairs = CountDoubledQuotes(inside);
  const auto quotes = static_cast<std::size_t>(std::ranges::count(inside, kQuote));
  return quotes == 2 * pairs ? QuotedText{inside, pairs} : QuotedText{value, 0};
}

std::string Unquoted(std::string_view value) {
  const QuotedText exact = ExactText(value);
  std::string text(exact.text);
  if (exact.doubledQuotes > 0) text.resize(UnescapeQuotes(exact.text, text.data()));
  return text;
}

bool LosesQuotes(std::string_view value) {
  const QuotedText usual = UsualText(value), exact = ExactText(value);
  return usual.text.size() - usual.doubledQuotes != exact.text.size() - exact.doubledQuotes;
}

void ReadTextCell(std::string_view value, Core::ObjectPool* pool, _VARIANT& cell) {
  if (!value.empty()) FillWithQuotedText(cell, ExactText(value), pool);
}

void ReadCell(std::string_view value, Core::ObjectPool* pool, _VARIANT& cell) {
  if (value.empty()) return;
  const ParsedNumber number = ParseNumber(value);
  if (number.hasValue)
    return Fill(cell, Core::MakeTag(number.type, Core::StorageForm::Value), number.word);
  CalendarFields dateTime;
  if (number.type == ValueType::String && DetectDateTime(value, dateTime))
    return FillWithObject(cell, ValueType::DateTime, MakeDateTime(dateTime, pool).Detach());
  FillWithQuotedText(cell, UsualText(value), pool);
}

}  // namespace Data::impl
