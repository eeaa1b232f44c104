#include "Documents/JsonReader.h"

#include <algorithm>

namespace Data::impl {

namespace {

/// Whether a number that no double can hold is too large rather than too small: the power of ten of
/// its first nonzero digit decides.
bool IsTooLarge(std::string_view number) {
  const std::size_t mantissaEnd = std::min(number.find_first_of("eE"), number.size());
  const std::string_view mantissa = number.substr(0, mantissaEnd);
  std::int64_t exponent = 0;
  if (mantissaEnd != number.size()) {
    std::string_view digits = number.substr(mantissaEnd + 1);
    if (digits.starts_with('+')) digits.remove_prefix(1);
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    // The reader has rejected huge positive exponents, so this one is hugely negative.
    if (result.ec != std::errc()) return false;
  }
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  const std::size_t first = mantissa.find_first_of("123456789");
  return exponent + static_cast<std::int64_t>(point) > static_cast<std::int64_t>(first);
}

}  // namespace

bool ReadDouble(std::string_view number, double& value) {
  value = number.starts_with('-') ? -0.0 : 0.0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  return result.ec == std::errc() || !IsTooLarge(number);
}

bool IsJson(std::string_view text) {
  rapidjson::BaseReaderHandler<> ignoring;
  return ParseJson(text, ignoring);
}

bool ReadJsonTree(std::string_view text, JsonTree& tree) {
  bool isJson = false;
  const auto read = [&](JsonTree& handler) { return isJson = ParseJson(text, handler); };
  tree.Populate(read);
  return isJson;
}

}  // namespace Data::impl
