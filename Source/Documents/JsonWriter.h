#pragma once

#include <cstdint>
#include <string_view>

#include "Documents/RapidJson.h"
#include "Text/NumberText.h"
#include "Text/PaddedText.h"

namespace Data::impl {

/// Appends a text as a JSON string, quotes included.
void AppendJsonString(TextBuffer& buffer, std::string_view text);
void AppendJsonString(TextBuffer& buffer, const PaddedText& text);

/// Appends the shortest text that reads back as the same double, in rapidjson's
/// notation: 1.0, 1e30, 1.5e-7.
/// @return false for NaN and infinities, which JSON cannot represent
bool AppendJsonDouble(TextBuffer& buffer, double value);

/// rapidjson's compact writer, specialised below to write values with the functions above.
using JsonWriter =
    rapidjson::Writer<TextBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>;

/// Appends a JSON text without insignificant white space; "null" if it is not JSON.
/// @param text  as `JsonTextOf` returns it
void AppendCompactJson(TextBuffer& buffer, std::string_view text);

}  // namespace Data::impl

namespace rapidjson {

// rapidjson's own reserves six bytes for each byte of a string.
template <>
inline bool Data::impl::JsonWriter::WriteString(const char* text, std::size_t length) {
  Data::impl::AppendJsonString(*os_, {text, length});
  return true;
}

// rapidjson's digits are not always the shortest and often not the nearest.
template <>
inline bool Data::impl::JsonWriter::WriteDouble(double value) {
  return Data::impl::AppendJsonDouble(*os_, value);
}

template <>
inline bool Data::impl::JsonWriter::WriteInt64(std::int64_t value) {
  Data::impl::AppendInteger(*os_, value);
  return true;
}

}  // namespace rapidjson
