#include "Containers/AllowedValueImpl.h"

#include <utility>

#include "Containers/CallingBack.h"
#include "Core/Guard.h"
#include "Text/MultiByteStringImpl.h"

namespace Data {

AllowedValueImpl::AllowedValueImpl(Core::Variant value, Structures::ComparisonOperator comparison,
                                   AllowedValueTexts texts)
    : value_(std::move(value)), comparison_(comparison), texts_(std::move(texts)) {}

void AllowedValueImpl::GetValue(Structures::_VARIANT* destination) {
  if (destination) Core::CopyVariant(&value_, destination);
}

bool AllowedValueImpl::GetValueText(Interfaces::IString** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    const impl::HeldValue value(value_, impl::CallsBack(value_));
    *out = impl::MultiByteStringImpl::FromUtf8(Core::ToText(value)).Detach();
  });
}

}  // namespace Data
