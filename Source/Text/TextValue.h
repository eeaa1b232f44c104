#pragma once

#include <string_view>

#include "Core/VariantRecord.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

/// A record that holds a text: inline if it fits, otherwise a reference to a new string object,
/// which the caller owns.
inline Structures::_VARIANT MakeTextValue(std::string_view text) {
  if (Core::FitsInline(text)) return Core::MakeInlineText(text);
  return Core::MakeReference(Core::ValueType::String, MultiByteStringImpl::FromUtf8(text).Detach());
}

}  // namespace Data::impl
