#pragma once

#include "Containers/Teardown.h"
#include "Core/Variant.h"
#include "Data/Interfaces/IValue.h"

namespace Data::impl {

/// A copy of a cell as an object.
struct ValueImpl final : ContainerBase<Interfaces::IValue> {
  explicit ValueImpl(const Structures::_VARIANT& value) : value_(value) {}

  void ReleaseItems(Teardown& teardown) { teardown.Release(value_); }

  bool GetValue(Structures::_VARIANT* out) override;
  void SetValue(const Structures::_VARIANT* value) override;
  const Structures::_VARIANT* GetRecord() override { return &value_; }
  Structures::ValueType GetType() override { return value_.Type(); }
  bool GetText(Interfaces::IString** out) override;

  /// The display text of a value as a new string.
  static Core::Ptr<Interfaces::IString> TextOf(const Structures::_VARIANT& value);

 private:
  Core::Variant value_;
};

}  // namespace Data::impl
