#include "Containers/VariantHash.h"

#include <bit>
#include <string>

#include "Containers/CallingBack.h"
#include "Core/Variant.h"
#include "Core/VariantComparison.h"

namespace Data::impl {

using namespace Core;
using Structures::_VARIANT;

namespace {

constexpr std::uint64_t kOffsetBasis = 0xcbf29ce484222325;
constexpr std::uint64_t kPrime = 0x100000001b3;

/// FNV-1a over the word's bytes, least significant first, plus an offset that keeps numbers apart
/// from short texts of the same bytes.
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

template <class Document>
std::uint64_t HashContent(const Ptr<Document>& document) {
  const Ptr<Data::Interfaces::IString> content(document ? document->GetContent() : nullptr);
  return HashText(content ? Utf8View(*content) : std::string_view());
}

/// Hashes a text that runs the caller's code, which may release the key or a document's content.
std::uint64_t HashWhileHeld(const _VARIANT& key) {
  const Variant held(key);
  if (TypeOf(held) == ValueType::JsonDocument) return HashContent(GetJsonDocument(held));
  if (TypeOf(held) == ValueType::XmlDocument) return HashContent(GetXmlDocument(held));
  return HashText(GetStringView(held));
}

/// Whether two numbers or short texts are bit-identical, as most matching keys are.
bool AreSameValue(const _VARIANT& left, const _VARIANT& right) {
  const bool areIdentical =
      left.type == right.type && left.value[0] == right.value[0] && left.value[1] == right.value[1];
  const ValueType type = TypeOf(left);
  return areIdentical && HasForm(left, StorageForm::Value) &&
         (IsPrimitive(type) || type == ValueType::String);
}

bool AreEqualTexts(std::string_view left, std::string_view right) {
  return left == right || detail::CompareFolded(left, right) == 0;
}

bool AreTexts(const _VARIANT& left, const _VARIANT& right) {
  return TypeOf(left) == ValueType::String && TypeOf(right) == ValueType::String &&
         !IsNullAddress(left) && !IsNullAddress(right);
}

bool AreEqualWhileHeld(const _VARIANT& left, const _VARIANT& right) {
  if (!AreTexts(left, right)) return Compare(left, right) == 0;
  // Copied, because reading the right text may change the left one.
  const std::string leftText(GetStringView(left));
  return AreEqualTexts(leftText, GetStringView(right));
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
    case ValueKind::Error:  // has no text, so reading it fails
      return CallsBack(key) ? HashWhileHeld(key) : HashText(GetStringView(key));
    case ValueKind::DateTime:
      return HashWord(GetDateTime(key)->GetFileTime());
    case ValueKind::None:
      break;
  }
  return 0;
}

bool EqualsNothing(const _VARIANT& key) { return !AreComparable(key, key); }

bool AreEqualKeys(const _VARIANT& stored, const _VARIANT& key) {
  if (AreSameValue(stored, key)) return true;
  if (!AreComparable(stored, key)) return false;
  if (CallsBack(stored) || CallsBack(key)) {
    const Variant left(stored);  // first: adding a reference to the other may remove the stored key
    const Variant right(key);
    return AreEqualWhileHeld(left, right);
  }
  if (!AreTexts(stored, key)) return Compare(stored, key) == 0;
  // Hashing has already converted both to UTF-8, so no string object is created for a short text.
  return AreEqualTexts(GetStringView(stored), GetStringView(key));
}

}  // namespace Data::impl
