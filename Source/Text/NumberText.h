#pragma once

#include <cstdint>

#include "Text/Digits.h"
#include "Text/TextBuffer.h"

/// Numbers as text. Nothing depends on the locale.
namespace Data::impl {

inline void AppendInteger(TextBuffer& buffer, std::int64_t value) {
  buffer.EndAt(PutInteger(buffer.Tail(kIntegerRoom), value));
}

/// Appends a number with six decimals, as printf's "%f" does: the exact value rounded to the
/// nearest, half to even.
void AppendFixed(TextBuffer& buffer, double value);

}  // namespace Data::impl
