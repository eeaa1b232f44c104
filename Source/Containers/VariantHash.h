#pragma once

#include <cstdint>
#include <string_view>

#include "Core/VariantRecord.h"

/// Hash and equality of values as keys of dictionaries, unique indexes and table merges. They hold
/// references to the caller's objects while they call them.
namespace Data::impl {

/// 64-bit FNV-1a over the bytes of a text; the same on every platform.
std::uint64_t HashText(std::string_view text);

/// Integers of up to 64 bits, Bool included, hash by the first word of their payload, whatever
/// their type; Float and Double hash by their value as a double; texts and documents hash by their
/// text, case-sensitively.
/// @throws std::runtime_error for a key without a hash (an error code, an address, a null
///         date-time): what the conversion of its type throws
std::uint64_t HashOf(const Structures::_VARIANT& key);

/// Null, or a null reference: tables treat both as a missing key.
inline bool IsNullKey(const Structures::_VARIANT& key) {
  return Core::IsNull(key) || Core::IsNullAddress(key);
}

/// Whether a key equals no key, not even itself, and comparing it never fails: Null and Unknown by
/// value. Such keys share a few hashes, so maps never search for them.
bool EqualsNothing(const Structures::_VARIANT& key);

/// Equality of two keys of equal hash: comparable, and `Core::Compare` gives 0.
/// @throws std::runtime_error what the comparison throws, as for a null reference
bool AreEqualKeys(const Structures::_VARIANT& stored, const Structures::_VARIANT& key);

}  // namespace Data::impl
