#pragma once

#include <string_view>

#include "Core/VariantRecord.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

/// A record that holds a text: inline if it fits, otherwise a reference to a new string object,
/// which the caller owns.
/// @param pool  for many texts created together; null for the heap
inline Structures::_VARIANT MakeTextValue(std::string_view text, Core::ObjectPool* pool = nullptr) {
  if (Core::FitsInline(text)) return Core::MakeInlineText(text);
  return Core::MakeReference(Core::ValueType::String,
                             MultiByteStringImpl::FromUtf8(text, pool).Detach());
}

}  // namespace Data::impl
