#include "Tables/ValueImpl.h"

#include "Containers/CallingBack.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

using Core::Ptr;
using Interfaces::IString;
using Structures::_VARIANT;

Ptr<IString> ValueImpl::TextOf(const _VARIANT& value) {
  return MultiByteStringImpl::FromUtf8(Core::ToText(HeldValue(value, CallsBack(value))));
}

bool ValueImpl::GetValue(_VARIANT* out) {
  Core::CopyVariant(&value_, out);
  return true;
}

void ValueImpl::SetValue(const _VARIANT* value) {
  Core::CheckArgument(value);
  const Ptr<ValueImpl> held(this);  // copying may run the caller's code
  value_ = Core::Variant(*value);
}

bool ValueImpl::GetText(IString** out) {
  Core::CheckOutPointer(out);
  *out = TextOf(value_).Detach();
  return true;
}

}  // namespace Data::impl
