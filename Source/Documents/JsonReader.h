#pragma once

#include <bit>
#include <charconv>
#include <cstdint>
#include <string_view>

#include "Documents/JsonStream.h"
#include "Documents/RapidJson.h"
#include "Tables/ParsedNumber.h"

namespace Data::impl {

/// Reads the double nearest to a JSON number; one too small for a double is zero of its sign.
/// (rapidjson's own conversion reads past its tables for "100e308" and makes 1e81 of "0e100".)
/// @return false if the number is too large for a double
bool ReadDouble(std::string_view number, double& value);

/// Adapts the reader's events for a handler: converts numbers, which the reader passes as text, and
/// takes strings from the stream. A handler sees only Null, Bool, Int64, Uint64 (above 2^63 - 1),
/// Double (finite), String, Key, StartObject, EndObject, StartArray and EndArray. One that has a
/// `NumberText` receives the text of each number before its value.
template <class Handler>
class JsonEvents : public rapidjson::BaseReaderHandler<> {
 public:
  JsonEvents(JsonStream& stream, Handler& handler) : stream_(stream), handler_(handler) {}

  bool Null() { return handler_.Null(); }
  bool Bool(bool value) { return handler_.Bool(value); }
  bool RawNumber(const char*, std::size_t length, bool) { return Number(stream_.Taken(length)); }
  bool String(const char*, std::size_t, bool) {
    const std::string_view text = stream_.String();
    return handler_.String(text.data(), text.size(), true);
  }
  bool Key(const char*, std::size_t, bool) {
    const std::string_view name = stream_.String();
    return handler_.Key(name.data(), name.size(), true);
  }
  bool StartObject() { return handler_.StartObject(); }
  bool EndObject(std::size_t memberCount) { return handler_.EndObject(memberCount); }
  bool StartArray() { return handler_.StartArray(); }
  bool EndArray(std::size_t elementCount) { return handler_.EndArray(elementCount); }

 private:
  bool Number(std::string_view number) {
    if constexpr (requires { handler_.NumberText(number); }) handler_.NumberText(number);
    const ParsedNumber parsed = ParseNumber(number);
    if (!parsed.hasValue) return LongNumber(number);
    if (parsed.type == Core::ValueType::Double)
      return handler_.Double(std::bit_cast<double>(parsed.word));
    return handler_.Int64(static_cast<std::int64_t>(parsed.word));
  }
  /// A number outside the range of its type, or with a plus sign in its exponent.
  bool LongNumber(std::string_view number) {
    const char* const end = number.data() + number.size();
    std::uint64_t large = 0;
    const auto result = std::from_chars(number.data(), end, large);
    if (result.ptr == end && result.ec == std::errc()) return handler_.Uint64(large);
    double real = 0;
    return ReadDouble(number, real) && handler_.Double(real);
  }

  JsonStream& stream_;
  Handler& handler_;
};

/// Parses JSON values one after another: no comments, no trailing commas, no NaN. Nested values
/// take no stack. The handler may throw.
template <class Handler>
class JsonParser {
 public:
  /// @param text  as `JsonTextOf` returns it: followed by a zero byte
  JsonParser(std::string_view text, Handler& handler) : stream_(text), events_(stream_, handler) {}

  /// Parses one value and all white space around it, up to the end of the text.
  /// @return false if the text is not JSON or the handler returned false
  bool ParseAll() { return Parse<kFlags>(); }
  /// Parses one value and white space before it.
  bool ParseNext() { return Parse<kFlags | rapidjson::kParseStopWhenDoneFlag>(); }
  /// Bytes parsed so far.
  std::size_t Position() const { return stream_.Tell(); }
  void SkipTo(std::size_t position) { stream_.SkipTo(position); }

 private:
  static constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseInsituFlag |
                                     rapidjson::kParseNumbersAsStringsFlag;
  template <unsigned kWith>
  bool Parse() {
    return !reader_.template Parse<kWith>(stream_, events_).IsError();
  }

  JsonStream stream_;
  JsonEvents<Handler> events_;
  JsonReader reader_;
};

/// Parses a text that is exactly one JSON value with optional white space around it.
/// @return as `JsonParser::ParseAll`
template <class Handler>
bool ParseJson(std::string_view text, Handler& handler) {
  return JsonParser<Handler>(text, handler).ParseAll();
}

/// Whether a text is one JSON value.
bool IsJson(std::string_view text);

/// Reads a text into a tree, which copies the strings. The root of a new tree stays null if the
/// text is not JSON.
/// @return whether the text is JSON
bool ReadJsonTree(std::string_view text, JsonTree& tree);

}  // namespace Data::impl
