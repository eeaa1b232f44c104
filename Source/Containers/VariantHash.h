#pragma once

#include <cstdint>
#include <string_view>

#include "Core/VariantRecord.h"

/// Hash and equality of values as keys: of dictionaries, of a table's unique index, of merged
/// tables. While they call a program's own objects they hold references to them.
namespace Data::impl {

/// 64-bit FNV-1a over the bytes of a text; the same on every platform.
std::uint64_t HashText(std::string_view text);

/// Integers of all widths, Bool included, hash alike, and so do Float and
/// Double; texts and documents hash by their text, with regard to case.
/// @throws std::runtime_error for a key without a hash (an error code, an
///         address, a null date-time): what the conversion of its type throws
std::uint64_t HashOf(const Structures::_VARIANT& key);

/// Null by value, or a reference to no object: to tables both are a missing key.
inline bool IsNullKey(const Structures::_VARIANT& key) {
  return Core::IsNull(key) || Core::IsNullAddress(key);
}

/// Whether a key differs from every key, itself included, without ever failing:
/// Null and Unknown by value. They share a few hashes, so maps never search for them.
bool EqualsNothing(const Structures::_VARIANT& key);

/// Equality of two keys of equal hash: comparable, and `Core::Compare` gives 0.
/// @throws std::runtime_error what the comparison throws, as for a null reference
bool AreEqualKeys(const Structures::_VARIANT& stored, const Structures::_VARIANT& key);

}  // namespace Data::impl
