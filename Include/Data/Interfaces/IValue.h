#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/ValueType.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

struct IString;

/// One value as an object, for callers that keep values among objects. It is a
/// copy of the cell it was taken from: later changes of either are not seen by
/// the other.
struct IValue : Core::IObject {
  /// Slot 6. Copies the value into `out`, which gives up what it held.
  /// @return true
  /// @throws std::runtime_error "Cannot be nullptr!" for a null `out`
  virtual bool GetValue(Structures::_VARIANT* out) = 0;
  /// Slot 7. Replaces the value by a copy of `value`.
  /// @throws std::runtime_error "Pointer of struct Data::Structures::_VARIANT
  ///         must not be null!"
  virtual void SetValue(const Structures::_VARIANT* value) = 0;
  /// Slot 8. The record itself, to be read in place; valid while the object lives.
  virtual const Structures::_VARIANT* GetRecord() = 0;
  /// Slot 9. The type code of the value.
  virtual Structures::ValueType GetType() = 0;
  /// Slot 10. The display text of the value as a new string, which the caller
  /// releases.
  /// @return true
  /// @throws std::runtime_error for a null or used out-pointer, and what the
  ///         conversion throws for a record that is not what its type says
  virtual bool GetText(IString** out) = 0;

 protected:
  ~IValue() = default;
};

}  // namespace Data::Interfaces
