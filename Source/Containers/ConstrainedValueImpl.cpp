#include "Containers/ConstrainedValueImpl.h"

#include <stdexcept>
#include <utility>

#include "Core/Guard.h"
#include "Core/VariantComparison.h"

namespace Data::impl {

using Structures::_VARIANT;

namespace {

[[noreturn]] void ThrowValueTypeMismatch() {
  throw std::runtime_error("Types of Value and Constraints don't match!");
}

void CheckConstraints(const _VARIANT& value, const _VARIANT& min, const _VARIANT& max) {
  if (Core::TypeOf(min) != Core::TypeOf(max))
    throw std::runtime_error("Types of Min/Max don't match!");
  if (Core::TypeOf(min) != Core::TypeOf(value)) ThrowValueTypeMismatch();
  if (Core::Compare(min, max) >= 1) throw std::runtime_error("Min is bigger than Max!");
}

/// The value, or the bound that it lies beyond. Both comparisons come first: one
/// of them may fail.
Core::Variant Clamped(const _VARIANT& value, const _VARIANT& min, const _VARIANT& max) {
  const int againstMin = Core::Compare(value, min), againstMax = Core::Compare(value, max);
  return Core::Variant(againstMax == 1 ? max : againstMin == -1 ? min : value);
}

void CopyIfWanted(const _VARIANT& source, _VARIANT* destination) {
  if (destination) Core::CopyVariant(&source, destination);
}

}  // namespace

ConstrainedValueImpl::ConstrainedValueImpl(const _VARIANT& value, const _VARIANT& min,
                                           const _VARIANT& max) {
  CheckConstraints(value, min, max);
  value_ = Clamped(value, min, max);
  min_ = Core::Variant(min);
  max_ = Core::Variant(max);
}

bool ConstrainedValueImpl::SetConstraints(const _VARIANT* min, const _VARIANT* max,
                                          Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    for (const _VARIANT* bound : {min, max}) {
      Core::CheckArgument(bound);
      Core::CheckDefined(*bound);
    }
    CheckConstraints(value_, *min, *max);
    value_ = Clamped(value_, *min, *max);
    min_ = Core::Variant(*min);
    max_ = Core::Variant(*max);
  });
}

bool ConstrainedValueImpl::SetValue(const _VARIANT* value, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(value);
    Core::CheckDefined(*value);
    if (Core::TypeOf(*value) != Core::TypeOf(value_)) ThrowValueTypeMismatch();
    value_ = Clamped(*value, min_, max_);
  });
}

void ConstrainedValueImpl::GetConstraints(_VARIANT* min, _VARIANT* max) {
  CopyIfWanted(min_, min);
  CopyIfWanted(max_, max);
}

void ConstrainedValueImpl::GetValue(_VARIANT* destination) { CopyIfWanted(value_, destination); }

}  // namespace Data::impl
