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

Core::Variant DefinedCopy(const _VARIANT* record) {
  Core::CheckRecord(record);
  return Core::Variant(*record);
}

}  // namespace

ConstrainedValueImpl::ConstrainedValueImpl(const _VARIANT& value, const _VARIANT& min,
                                           const _VARIANT& max) {
  CheckConstraints(value, min, max);
  state_ = Clamped(Core::Variant(value), Core::Variant(min), Core::Variant(max));
}

/// The new state: the value is replaced by the bound that it exceeds, if any.
ConstrainedValueImpl::State ConstrainedValueImpl::Clamped(Core::Variant value, Core::Variant min,
                                                          Core::Variant max) {
  // Both comparisons come before any change, since one of them may fail.
  const int againstMin = Core::Compare(value, min), againstMax = Core::Compare(value, max);
  if (againstMax == 1) {
    value = max;
  } else if (againstMin == -1) {
    value = min;
  }
  return {std::move(value), std::move(min), std::move(max)};
}

void ConstrainedValueImpl::ReleaseItems(Teardown& teardown) {
  for (Core::Variant* item : {&state_.value, &state_.min, &state_.max}) teardown.Release(*item);
}

// Copying and comparing may run the caller's code, which may set or release this very value. So
// each operation holds the object, computes from copies, stores a complete new state, and releases
// the old one last.

bool ConstrainedValueImpl::SetConstraints(const _VARIANT* min, const _VARIANT* max,
                                          Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    const Core::Ptr<ConstrainedValueImpl> held(this);
    Core::Variant newMin = DefinedCopy(min), newMax = DefinedCopy(max), value = state_.value;
    CheckConstraints(value, newMin, newMax);
    State state = Clamped(std::move(value), std::move(newMin), std::move(newMax));
    std::swap(state_, state);
  });
}

bool ConstrainedValueImpl::SetValue(const _VARIANT* value, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    const Core::Ptr<ConstrainedValueImpl> held(this);
    Core::Variant newValue = DefinedCopy(value), min = state_.min, max = state_.max;
    if (newValue.Type() != min.Type()) ThrowValueTypeMismatch();
    State state = Clamped(std::move(newValue), std::move(min), std::move(max));
    std::swap(state_, state);
  });
}

void ConstrainedValueImpl::GetConstraints(_VARIANT* min, _VARIANT* max) {
  const Core::Ptr<ConstrainedValueImpl> held(this);
  Core::Variant lower = state_.min, upper = state_.max;
  if (min) std::swap<_VARIANT>(lower, *min);
  if (max) std::swap<_VARIANT>(upper, *max);
}

void ConstrainedValueImpl::GetValue(_VARIANT* destination) {
  if (destination) Core::CopyVariant(&state_.value, destination);
}

}  // namespace Data::impl
