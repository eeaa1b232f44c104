#pragma once

#include <stdint.h>

namespace Data::Structures {

/// The tagged value that crosses every interface: 24 bytes, zeroed before use.
///
/// Copying the record copies plain bytes and adds no reference. C++ callers use
/// `Core::Variant`, which owns what it holds.
struct _VARIANT {
  /// Bits 0 to 15: a `ValueType`. Bits 16 to 31: the storage form, 0 the value
  /// itself, 1 a pointer to an object (one reference), 2 a raw address.
  uint32_t type;
  /// The payload at offset 8, by type:
  /// - integers, Bool: sign- or zero-extended into the first word;
  /// - Double: its bits in the first word; Float: in the low 32 bits of it;
  /// - Int128, UInt128: low word, then high word;
  /// - Uuid: the 16 bytes of a `_UUID`;
  /// - String by value: up to 16 bytes of text, ended by the first zero byte;
  /// - object or address: the pointer in the first word.
  uint64_t value[2];
};

}  // namespace Data::Structures
