#include "Tables/CsvCells.h"

#include <cstring>

#include "Core/VariantRecord.h"
#include "DateTime/DateTimeImpl.h"
#include "Tables/CsvText.h"
#include "Tables/ValueTypeDetection.h"
#include "Text/TextValue.h"

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
/// @return the end of the copy
char* CopyUnpaired(std::string_view text, char* out) {
  while (!text.empty()) {
    const std::size_t pair = text.find("\"\"");
    const std::size_t size = pair == std::string_view::npos ? text.size() : pair + 1;
    out = static_cast<char*>(std::memcpy(out, text.data(), size)) + size;
    text.remove_prefix(pair == std::string_view::npos ? size : size + 1);
  }
  return out;
}

_VARIANT MakeUnpairedText(std::string_view text, std::size_t pairs) {
  const std::size_t size = text.size() - pairs;
  char inlined[Core::kInlineTextCapacity];
  if (size <= sizeof inlined)
    return MakeTextValue(
        {inlined, static_cast<std::size_t>(CopyUnpaired(text, inlined) - inlined)});
  const auto fill = [&](char* out) {
    return static_cast<std::size_t>(CopyUnpaired(text, out) - out);
  };
  return Core::MakeReference(ValueType::String, MultiByteStringImpl::FromUtf8(size, fill).Detach());
}

_VARIANT MakeTextCell(std::string_view value) {
  const std::string_view text = Trim(value, IsQuote);
  const std::size_t pairs = CountPairsOfQuotes(text);
  return pairs == 0 ? MakeTextValue(text) : MakeUnpairedText(text, pairs);
}

}  // namespace

_VARIANT MakeCell(std::string_view value) {
  const TypedText typed = ReadTypedText(value);
  switch (typed.type) {
    case ValueType::Unknown:
      return Core::MakeNull();
    case ValueType::Int64:
    case ValueType::Double:
      if (!typed.number.hasValue) return MakeTextCell(value);
      return {Core::MakeTag(typed.type, Core::StorageForm::Value), {typed.number.word, 0}};
    case ValueType::DateTime:
      return Core::MakeReference(ValueType::DateTime, MakeDateTime(typed.dateTime).Detach());
    default:
      return MakeTextCell(value);
  }
}

}  // namespace Data::impl
