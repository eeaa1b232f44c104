#pragma once

#include <string_view>

#include "Core/VariantRecord.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

/// A text as a value: in the record if it fits, else in one heap block. The
/// caller owns the reference that it may hold.
inline Structures::_VARIANT MakeTextValue(std::string_view text) {
  if (Core::FitsInline(text)) return Core::MakeInlineText(text);
  return Core::MakeReference(Core::ValueType::String, MultiByteStringImpl::FromUtf8(text).Detach());
}

}  // namespace Data::impl
