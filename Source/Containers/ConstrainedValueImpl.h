#pragma once

#include "Containers/Teardown.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IConstrainedValue.h"

namespace Data::impl {

struct ConstrainedValueImpl final : ContainerBase<Interfaces::IConstrainedValue> {
  /// @throws std::runtime_error with the messages of `SetConstraints`
  ConstrainedValueImpl(const Structures::_VARIANT& value, const Structures::_VARIANT& min,
                       const Structures::_VARIANT& max);

  void ReleaseItems(Teardown& teardown);

  bool SetConstraints(const Structures::_VARIANT* min, const Structures::_VARIANT* max,
                      Core::IErrorCode** error) override;
  bool SetValue(const Structures::_VARIANT* value, Core::IErrorCode** error) override;
  void GetConstraints(Structures::_VARIANT* min, Structures::_VARIANT* max) override;
  void GetValue(Structures::_VARIANT* destination) override;

 private:
  /// A value and its range; replaced as a whole.
  struct State {
    Core::Variant value, min, max;
  };
  static State Clamped(Core::Variant value, Core::Variant min, Core::Variant max);

  State state_;
};

}  // namespace Data::impl
