#include "Schema/SchemaValues.h"

#include <charconv>
#include <cmath>
#include <stdexcept>

#include "DateTime/DateTimeImpl.h"
#include "DateTime/Iso8601.h"
#include "Documents/JsonDocumentImpl.h"
#include "Text/Characters.h"

namespace Data {

using Core::Ptr;
using Core::ValueType;
using Core::Variant;

namespace {

/// The whole trimmed text as a finite number; the conversion itself would also accept "inf" and
/// "nan".
template <class Number>
Number ParseNumber(std::string_view text) {
  const std::string_view digits = impl::Trim(text);
  const char* const end = digits.data() + digits.size();
  Number number{};
  const auto result = std::from_chars(digits.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end || !std::isfinite(static_cast<double>(number)))
    throw std::runtime_error("Parsing failed!");
  return number;
}

Ptr<impl::JsonDocumentImpl> MakeJsonDocument(std::string_view text) {
  auto document = Core::MakePtr<impl::JsonDocumentImpl>();
  document->SetContent(text.data(), text.size());
  return document;
}

}  // namespace

Variant ReadValue(ValueType type, std::string_view text) {
  if (text.empty() && type != ValueType::String) return Core::Null;
  switch (type) {
    case ValueType::Int64:
      return ParseNumber<std::int64_t>(text);
    case ValueType::Double:
      return ParseNumber<double>(text);
    case ValueType::Bool:
      return text == "true";
    case ValueType::String:
      return text;
    case ValueType::DateTime:
      return impl::MakeDateTime(impl::FieldsOfIso8601(text));
    case ValueType::JsonDocument:
      return MakeJsonDocument(text);
    default:
      return Core::Null;
  }
}

}  // namespace Data
