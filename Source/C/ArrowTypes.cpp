#include "C/ArrowTypes.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string_view>

namespace Data::c {

namespace {

/// Nested types are read and written by recursion.
constexpr int kDeepest = 64;
constexpr std::int64_t kMostDigits = 1000;

constexpr std::int64_t kMilli = 1'000, kMicro = 1'000'000, kNano = 1'000'000'000;

/// Formats without a parameter, and those whose parameter after the colon says nothing about the
/// values: the time zone of a timestamp, which counts from 1970 in UTC in any case.
constexpr struct {
  std::string_view format;
  ArrowKind kind;
  std::uint32_t width;
  std::int64_t parameter = 0;
} kFormats[] = {
    {"n", ArrowKind::Null, 0},
    {"b", ArrowKind::Bool, 0},
    {"c", ArrowKind::Signed, 1},
    {"C", ArrowKind::Unsigned, 1},
    {"s", ArrowKind::Signed, 2},
    {"S", ArrowKind::Unsigned, 2},
    {"i", ArrowKind::Signed, 4},
    {"I", ArrowKind::Unsigned, 4},
    {"l", ArrowKind::Signed, 8},
    {"L", ArrowKind::Unsigned, 8},
    {"e", ArrowKind::Real, 2},
    {"f", ArrowKind::Real, 4},
    {"g", ArrowKind::Real, 8},
    {"u", ArrowKind::Text, 4},
    {"U", ArrowKind::Text, 8},
    {"vu", ArrowKind::TextView, 16},
    {"z", ArrowKind::Bytes, 4},
    {"Z", ArrowKind::Bytes, 8},
    {"vz", ArrowKind::BytesView, 16},
    {"tdD", ArrowKind::Date, 4},
    {"tdm", ArrowKind::Date, 8},
    {"tts", ArrowKind::Time, 4, 1},
    {"ttm", ArrowKind::Time, 4, kMilli},
    {"ttu", ArrowKind::Time, 8, kMicro},
    {"ttn", ArrowKind::Time, 8, kNano},
    {"tss:", ArrowKind::Timestamp, 8, 1},
    {"tsm:", ArrowKind::Timestamp, 8, kMilli},
    {"tsu:", ArrowKind::Timestamp, 8, kMicro},
    {"tsn:", ArrowKind::Timestamp, 8, kNano},
    {"tDs", ArrowKind::Duration, 8, 1},
    {"tDm", ArrowKind::Duration, 8, kMilli},
    {"tDu", ArrowKind::Duration, 8, kMicro},
    {"tDn", ArrowKind::Duration, 8, kNano},
    {"tiM", ArrowKind::Interval, 4},
    {"tiD", ArrowKind::Interval, 8},
    {"tin", ArrowKind::Interval, 16},
    {"+l", ArrowKind::List, 4},
    {"+L", ArrowKind::List, 8},
    {"+m", ArrowKind::List, 4},  // a list of pairs
    {"+vl", ArrowKind::ListView, 4},
    {"+vL", ArrowKind::ListView, 8},
    {"+s", ArrowKind::Struct, 0},
};

/// Removes a number and the comma behind it from the front of a text.
bool TakeNumber(std::string_view& text, std::int64_t& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return false;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  if (text.starts_with(',') && text.size() > 1) text.remove_prefix(1);
  return true;
}

/// "precision,scale" or "precision,scale,bits"
bool ReadDecimal(std::string_view text, ArrowType& type) {
  std::int64_t precision = 0, bits = 128;
  if (!TakeNumber(text, precision) || !TakeNumber(text, type.parameter)) return false;
  if (!text.empty() && !TakeNumber(text, bits)) return false;
  type.kind = ArrowKind::Decimal;
  type.width = static_cast<std::uint32_t>(bits / 8);
  const bool isKnown = bits == 32 || bits == 64 || bits == 128 || bits == 256;
  return text.empty() && isKnown && type.parameter >= -kMostDigits && type.parameter <= kMostDigits;
}

/// A number of bytes or items.
bool ReadSize(std::string_view text, std::int64_t& size) {
  return TakeNumber(text, size) && text.empty() && size >= 0 && size <= INT32_MAX;
}

ArrowType ReadType(const ArrowSchema& schema, int depth);

void ReadChildren(const ArrowSchema& schema, ArrowType& type, int depth) {
  if (depth > kDeepest) ThrowInColumn(type, "the types are nested too deep");
  const std::int64_t count = schema.n_children;
  if (count < 0 || count > INT32_MAX || (count > 0 && !schema.children))
    ThrowInColumn(type, "the schema has no children");
  const bool isList = type.kind == ArrowKind::List || type.kind == ArrowKind::ListView ||
                      type.kind == ArrowKind::FixedList;
  if (isList ? count != 1 : type.kind != ArrowKind::Struct && count != 0)
    ThrowInColumn(type, "the schema has a wrong number of children");
  for (std::int64_t i = 0; i < count; ++i) {
    if (!schema.children[i]) ThrowInColumn(type, "the schema has no children");
    type.children.push_back(ReadType(*schema.children[i], depth + 1));
  }
}

ArrowType ReadType(const ArrowSchema& schema, int depth) {
  ArrowType type;
  if (!schema.release || !schema.format) ThrowInColumn(type, "the schema has been released");
  type.name = schema.name ? schema.name : "";
  type.format = schema.format;
  if (!ReadArrowFormat(type.format, type)) ThrowInColumn(type, "the format cannot be read");
  ReadChildren(schema, type, depth);
  if (schema.dictionary) {
    if (type.kind != ArrowKind::Signed && type.kind != ArrowKind::Unsigned)
      ThrowInColumn(type, "the indexes into a dictionary must be integers");
    type.dictionary = std::make_unique<ArrowType>(ReadType(*schema.dictionary, depth + 1));
  }
  return type;
}

}  // namespace

bool ReadArrowFormat(std::string_view format, ArrowType& type) {
  if (format.starts_with("d:")) return ReadDecimal(format.substr(2), type);
  if (format.starts_with("w:")) {
    std::int64_t size = 0;
    type.kind = ArrowKind::FixedBytes;
    const bool isSize = ReadSize(format.substr(2), size);
    type.width = static_cast<std::uint32_t>(size);
    return isSize;
  }
  if (format.starts_with("+w:")) {
    type.kind = ArrowKind::FixedList;
    return ReadSize(format.substr(3), type.parameter);
  }
  if (format.starts_with("ts")) format = format.substr(0, format.find(':') + 1);
  const auto known = std::find_if(std::begin(kFormats), std::end(kFormats),
                                  [&](const auto& row) { return row.format == format; });
  if (known == std::end(kFormats)) return false;
  type.kind = known->kind;
  type.width = known->width;
  type.parameter = known->parameter;
  return true;
}

ArrowType ReadArrowType(const ArrowSchema& schema) { return ReadType(schema, 0); }

void ThrowInColumn(const ArrowType& type, const std::string& message) {
  throw std::runtime_error("Column \"" + type.name + "\" of Arrow format \"" + type.format +
                           "\": " + message + "!");
}

}  // namespace Data::c
