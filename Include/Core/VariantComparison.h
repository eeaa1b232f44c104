#pragma once

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string_view>

#include "Core/VariantNumbers.h"
#include "Core/VariantObjects.h"

namespace Core {

/// Whether the types and storage forms of two values can be compared: both types are primitive; or
/// both have the same type, which is Array, String, DateTime, JsonDocument, XmlDocument, ErrorCode,
/// ObjectList or StringList; or both are references of the same type; or both are addresses.
/// `Compare` can still fail, and always does for two arrays.
inline bool AreComparable(const _VARIANT& left, const _VARIANT& right) {
  const ValueType type = TypeOf(left);
  if (IsPrimitive(type) && IsPrimitive(TypeOf(right))) return true;
  if (type == TypeOf(right) && KindOf(type) >= ValueKind::List) return true;
  if (left.type == right.type && HasForm(left, StorageForm::Reference)) return true;
  return HasForm(left, StorageForm::Pointer) && HasForm(right, StorageForm::Pointer);
}

namespace detail {

[[noreturn]] inline void ThrowComparison(const char* format, const _VARIANT& left,
                                         const _VARIANT& right) {
  throw std::runtime_error(StringFormat(format, GetValueTypeName(TypeOf(left)).data(),
                                        GetValueTypeName(TypeOf(right)).data()));
}

/// -1, 0 or 1; 0 if either value is NaN.
template <class T>
int Order(const T& left, const T& right) {
  return left < right ? -1 : right < left ? 1 : 0;
}

inline int Sign(std::int32_t result) { return Order(result, 0); }

inline int CompareAddresses(const _VARIANT& left, const _VARIANT& right) {
  if (!HasForm(left, StorageForm::Pointer) || !HasForm(right, StorageForm::Pointer))
    throw std::runtime_error("Must be pointer type!");
  return Order(left.value[0], right.value[0]);
}

/// The byte, with A to Z mapped to a to z.
constexpr std::uint8_t Folded(char byte) {
  return static_cast<std::uint8_t>(byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte);
}

/// Compares bytes with A to Z equal to a to z. If one text is a prefix of the other, the shorter is
/// less.
inline int CompareFolded(std::string_view left, std::string_view right) {
  const std::size_t shorter = std::min(left.size(), right.size());
  for (std::size_t i = 0; i < shorter; ++i)
    if (Folded(left[i]) != Folded(right[i])) return Folded(left[i]) < Folded(right[i]) ? -1 : 1;
  return Order(left.size(), right.size());
}

/// Compares texts as `IString::Compare` of the left one does, which uses the left text's encoding.
/// A text stored in the record is UTF-8. On the left it needs no string object; on the right it
/// does unless the left text is stored in its record, too.
inline int CompareTexts(const _VARIANT& left, const _VARIANT& right) {
  if (HasForm(left, StorageForm::Value)) {
    if (HasForm(right, StorageForm::Value))
      return CompareFolded(InlineText(left), InlineText(right));
    return CompareFolded(InlineText(left), Utf8View(*ToStringObject(right)));
  }
  const auto leftText = ToStringObject(left), rightText = ToStringObject(right);
  return leftText == rightText ? 0 : Sign(leftText->Compare(rightText.Get(), false));
}

inline int CompareDateTimes(const _VARIANT& left, const _VARIANT& right) {
  if (TypeOf(left) == ValueType::String)
    throw std::runtime_error("String cannot be converted to the primitive type!");
  const auto leftDate = GetDateTime(left), rightDate = GetDateTime(right);
  return leftDate == rightDate ? 0 : Sign(leftDate->CompareTo(rightDate.Get()));
}

/// 0 for equal documents. Otherwise the longer text is greater, and texts of equal length are
/// compared case-sensitively.
template <class Document>
int CompareDocuments(const Ptr<Document>& left, const Ptr<Document>& right) {
  if (left == right || left->Equals(right.Get())) return 0;
  const Ptr<Data::Interfaces::IString> leftText(left->GetContent()), rightText(right->GetContent());
  const std::uint64_t leftSize = leftText ? Utf8View(*leftText).size() : 0;
  const std::uint64_t rightSize = rightText ? Utf8View(*rightText).size() : 0;
  if (leftSize != rightSize) return Order(leftSize, rightSize);
  return leftSize == 0 ? 0 : Sign(leftText->Compare(rightText.Get(), true));
}

inline int CompareErrors(const _VARIANT& left, const _VARIANT& right) {
  const auto leftError = GetErrorCode(left), rightError = GetErrorCode(right);
  return Order(MessageView(*leftError), MessageView(*rightError));
}

}  // namespace detail

/// Compares two values. The right value's type decides how: comparing Int32 5 with Double 5.7
/// compares doubles, comparing Double 5.7 with Int32 5 compares integers. Texts are compared
/// ignoring the case of A to Z.
/// @return -1 if left is less, 0 if the values are equal, 1 if left is greater
/// @throws std::runtime_error "Values cannot be compared due type mismatch! Left type is %s, Right
///         type is %s", "Null values cannot be compared! Left type is %s, Right type is %s",
///         "Compare is not implemented for specified value types: Left type is %s, Right type is
///         %s", "Must be pointer type!", and what the conversions throw
inline int Compare(const _VARIANT& left, const _VARIANT& right) {
  if (!AreComparable(left, right))
    detail::ThrowComparison(
        "Values cannot be compared due type mismatch! Left type is %s, Right type is %s", left,
        right);
  if (IsNull(left) || IsNull(right) || IsNullAddress(left) || IsNullAddress(right))
    detail::ThrowComparison("Null values cannot be compared! Left type is %s, Right type is %s",
                            left, right);
  switch (KindOf(TypeOf(right))) {
    case ValueKind::SignedInteger:
    case ValueKind::UnsignedInteger:
    case ValueKind::Bool:
      return detail::Order(ToInt64(left), ToInt64(right));
    case ValueKind::WideInteger:
      return detail::Order(ToWideInteger(left), ToWideInteger(right));
    case ValueKind::Real:
      return detail::Order(ToDouble(left), ToDouble(right));
    case ValueKind::Address:
      return detail::CompareAddresses(left, right);
    case ValueKind::Object:
    case ValueKind::List:
      return detail::Order(left.value[0], right.value[0]);
    case ValueKind::Text:
      return detail::CompareTexts(left, right);
    case ValueKind::DateTime:
      return detail::CompareDateTimes(left, right);
    case ValueKind::Document:
      return TypeOf(right) == ValueType::JsonDocument
                 ? detail::CompareDocuments(GetJsonDocument(left), GetJsonDocument(right))
                 : detail::CompareDocuments(GetXmlDocument(left), GetXmlDocument(right));
    case ValueKind::Error:
      return detail::CompareErrors(left, right);
    case ValueKind::Array:
    case ValueKind::None:
      break;
  }
  detail::ThrowComparison(
      "Compare is not implemented for specified value types: Left type is %s, Right type is %s",
      left, right);
}

}  // namespace Core
