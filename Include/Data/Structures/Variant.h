#pragma once

#include <stdint.h>

namespace Data::Structures {

/// A tagged value, as all interfaces pass it: 24 bytes, which callers must zero before use.
///
/// Copying the record copies plain bytes and adds no reference. C++ callers use `Core::Variant`,
/// which owns its object.
struct _VARIANT {
  /// Bits 0 to 15: a `ValueType`. Bits 16 to 31: the storage form. 0 is the value itself, 1 is a
  /// pointer to an object and owns one reference to it, 2 is a raw address.
  uint32_t type;
  /// The payload at offset 8, by type:
  /// - integers and Bool: sign- or zero-extended to the first word;
  /// - Double: its bits in the first word; Float: its bits in the low half of the first word;
  /// - Int128 and UInt128: the low word, then the high word;
  /// - Uuid: the 16 bytes of a `_UUID`;
  /// - String by value: up to 16 bytes of UTF-8, which end at the first zero byte;
  /// - objects and addresses: the pointer in the first word.
  uint64_t value[2];
};

}  // namespace Data::Structures
