#include "Schema/SchemaValues.h"

#include <charconv>
#include <stdexcept>

#include "DateTime/DateTimeImpl.h"
#include "DateTime/Iso8601.h"
#include "Documents/JsonDocumentImpl.h"
#include "Tables/Csv/CsvText.h"

namespace Data {

using Core::Ptr;
using Core::ValueType;
using Core::Variant;

namespace {

/// The number that the whole trimmed text is.
template <class Number>
Number ReadNumber(std::string_view text) {
  const std::string_view digits = impl::TrimValue(text);
  const char* const end = digits.data() + digits.size();
  Number number{};
  const auto result = std::from_chars(digits.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end) throw std::runtime_error("Parsing failed!");
  return number;
}

Ptr<impl::DateTimeImpl> ReadDateTime(std::string_view text) {
  impl::CalendarFields fields;
  const impl::Iso8601Result result = impl::ReadIso8601(text, fields);
  if (result != impl::Iso8601Result::Read) impl::ThrowIso8601Failure(result, text);
  return impl::MakeDateTime(fields);
}

Ptr<impl::JsonDocumentImpl> ReadJsonDocument(std::string_view text) {
  auto document = Core::MakePtr<impl::JsonDocumentImpl>();
  document->SetContent(text.data(), text.size());
  return document;
}

}  // namespace

Variant ReadValue(ValueType type, std::string_view text) {
  switch (type) {
    case ValueType::Int64:
      return ReadNumber<std::int64_t>(text);
    case ValueType::Double:
      return ReadNumber<double>(text);
    case ValueType::Bool:
      return text == "true";
    case ValueType::String:
      return text;
    case ValueType::DateTime:
      return ReadDateTime(text);
    case ValueType::JsonDocument:
      return ReadJsonDocument(text);
    default:
      return Core::Null;
  }
}

}  // namespace Data
