#include "Containers/VariantHash.h"

#include <bit>

#include "Core/VariantComparison.h"

namespace Data::impl {

using namespace Core;
using Structures::_VARIANT;

namespace {

constexpr std::uint64_t kOffsetBasis = 0xcbf29ce484222325;
constexpr std::uint64_t kPrime = 0x100000001b3;

/// The word's bytes from the least significant one up, then an offset that
/// keeps numbers apart from short texts of the same bytes.
constexpr std::uint64_t HashWord(std::uint64_t word) {
  std::uint64_t hash = kOffsetBasis;
  for (int shift = 0; shift < 64; shift += 8) hash = (hash ^ (word >> shift & 0xFF)) * kPrime;
  return hash + 0x9E3779B900000000;
}

std::uint64_t HashWide(const WideInteger& value) {
  const std::uint64_t high = HashWord(static_cast<std::uint64_t>(value.high));
  return high ^ (HashWord(value.low) + (high << 6) + (high >> 2));
}

std::uint64_t HashReal(double value) {
  return HashWord(std::bit_cast<std::uint64_t>(value == 0 ? 0.0 : value));  // -0.0 equals 0.0
}

}  // namespace

std::uint64_t HashText(std::string_view text) {
  std::uint64_t hash = kOffsetBasis;
  for (const char byte : text) hash = (hash ^ static_cast<std::uint8_t>(byte)) * kPrime;
  return hash;
}

std::uint64_t HashOf(const _VARIANT& key) {
  switch (KindOf(TypeOf(key))) {
    case ValueKind::SignedInteger:
    case ValueKind::UnsignedInteger:
    case ValueKind::Bool:
    case ValueKind::Address:
      return HashWord(static_cast<std::uint64_t>(ToInt64(key)));
    case ValueKind::WideInteger:
      return HashWide(ToWideInteger(key));
    case ValueKind::Real:
      return HashReal(ToDouble(key));
    case ValueKind::Object:
    case ValueKind::List:
    case ValueKind::Array:
      return HashWord(key.value[0]);
    case ValueKind::Text:
    case ValueKind::Document:
    case ValueKind::Error:  // has no text as a key and fails as one
      return HashText(GetStringView(key));
    case ValueKind::DateTime:
      return HashWord(GetDateTime(key)->GetFileTime());
    case ValueKind::None:
      break;
  }
  return 0;
}

bool EqualsNothing(const _VARIANT& key) { return !AreComparable(key, key); }

bool AreEqualKeys(const _VARIANT& stored, const _VARIANT& key) {
  if (!AreComparable(stored, key)) return false;
  const bool areTexts = TypeOf(stored) == ValueType::String && TypeOf(key) == ValueType::String;
  if (!areTexts || IsNullAddress(stored) || IsNullAddress(key)) return Compare(stored, key) == 0;
  // Hashing has left both as UTF-8, so no string object is made for a short text.
  const std::string_view left = GetStringView(stored), right = GetStringView(key);
  return left == right || detail::CompareFolded(left, right) == 0;
}

}  // namespace Data::impl
