#pragma once

#include "Core/ObjectBase.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IConstrainedValue.h"

namespace Data::impl {

struct ConstrainedValueImpl final : Core::ObjectBase<Interfaces::IConstrainedValue> {
  /// @throws std::runtime_error as `SetConstraints` fails
  ConstrainedValueImpl(const Structures::_VARIANT& value, const Structures::_VARIANT& min,
                       const Structures::_VARIANT& max);

  bool SetConstraints(const Structures::_VARIANT* min, const Structures::_VARIANT* max,
                      Core::IErrorCode** error) override;
  bool SetValue(const Structures::_VARIANT* value, Core::IErrorCode** error) override;
  void GetConstraints(Structures::_VARIANT* min, Structures::_VARIANT* max) override;
  void GetValue(Structures::_VARIANT* destination) override;

 private:
  Core::Variant value_ = Core::Null;
  Core::Variant min_ = Core::Null;
  Core::Variant max_ = Core::Null;
};

}  // namespace Data::impl
