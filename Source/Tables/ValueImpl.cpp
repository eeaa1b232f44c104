#include "Tables/ValueImpl.h"

#include "Data/Interfaces/IString.h"

namespace Data::impl {

using Structures::_VARIANT;

bool ValueImpl::GetValue(_VARIANT* out) {
  Core::CopyVariant(&value_, out);
  return true;
}

void ValueImpl::SetValue(const _VARIANT* value) {
  Core::CheckArgument(value);
  Core::CopyVariant(value, &value_);
}

bool ValueImpl::GetText(Interfaces::IString** out) {
  Core::CheckOutPointer(out);
  *out = Core::MakeString(Core::ToText(value_)).Detach();
  return true;
}

}  // namespace Data::impl
