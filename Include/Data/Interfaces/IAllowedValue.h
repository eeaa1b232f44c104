#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IString.h"
#include "Data/Structures/ComparisonOperator.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// One entry of the list of values that a schema column allows: a value, how an
/// application compares a cell with it, and texts that describe it. Immutable,
/// so it may be read from any thread. Texts are zero-terminated UTF-8, owned by
/// the object and valid while it lives.
struct IAllowedValue : Core::IObject {
  virtual const char* GetDisplayName() = 0;  ///< Slot 6. What users see.
  virtual const char* GetDescription() = 0;  ///< Slot 7.
  virtual const char* GetCategory() = 0;     ///< Slot 8. The group it belongs to.
  virtual const char* GetHelpUri() = 0;      ///< Slot 9. Where to read more.
  /// Slot 10. Copies the value into `destination`, which gives up what it held
  /// and gains a reference to an object. Null does nothing.
  virtual void GetValue(Structures::_VARIANT* destination) = 0;
  /// Slot 11. As it was given; the library never evaluates it.
  virtual Structures::ComparisonOperator GetComparison() = 0;
  /// Slot 12. The display text of the value as a new string, which the caller
  /// releases. Never throws.
  virtual bool GetValueText(IString** out, Core::IErrorCode** error) = 0;

 protected:
  ~IAllowedValue() = default;
};

}  // namespace Data::Interfaces
