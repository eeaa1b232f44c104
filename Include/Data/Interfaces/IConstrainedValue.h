#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A value of a fixed type that is kept inside the closed range [min, max]:
/// whenever the value or the range changes, the value is moved to the nearer
/// bound. Values compare as `Core::Compare` orders them, so texts without
/// regard to case; types that have no order cannot be constrained.
///
/// Operations with an `error` argument never throw; a failed one changes
/// nothing. A null record fails with "Pointer of struct
/// Data::Structures::_VARIANT must not be null!", an undefined one with "Variant
/// type is undefined! Did you forget to zero out the VARIANT structure? It
/// appears uninitialized!".
struct IConstrainedValue : Core::IObject {
  /// Slot 6. Replaces the range by copies of two values. Equal bounds are
  /// allowed.
  /// @return false with "Types of Min/Max don't match!", "Types of Value and
  ///         Constraints don't match!", "Min is bigger than Max!", or what
  ///         comparing the values throws
  virtual bool SetConstraints(const Structures::_VARIANT* min, const Structures::_VARIANT* max,
                              Core::IErrorCode** error) = 0;
  /// Slot 7. Replaces the value by a copy, moved into the range.
  /// @return false with "Types of Value and Constraints don't match!"
  virtual bool SetValue(const Structures::_VARIANT* value, Core::IErrorCode** error) = 0;
  // The getters copy into the caller's records, which give up what they held
  // and gain a reference to an object. A null pointer is skipped.
  virtual void GetConstraints(Structures::_VARIANT* min,
                              Structures::_VARIANT* max) = 0;    ///< Slot 8.
  virtual void GetValue(Structures::_VARIANT* destination) = 0;  ///< Slot 9.

 protected:
  ~IConstrainedValue() = default;
};

}  // namespace Data::Interfaces
