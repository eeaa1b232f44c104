#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A value of a fixed type that is kept inside a closed range [min, max]: whenever the value or the
/// range changes, a value outside is replaced by the nearer bound. Values compare as
/// `Core::Compare` orders them: texts without regard to case. Types without an order cannot be
/// constrained. Each of the three holds a reference if it refers to an object.
///
/// Operations with an `error` argument never throw. A failed one, a lack of memory included
/// (code 2), changes nothing. A null record fails with "Pointer of struct
/// Data::Structures::_VARIANT must not be null!", an undefined one with "Variant type is undefined!
/// Did you forget to zero out the VARIANT structure? It appears uninitialized!".
///
/// An object of the program's own may call back into the constrained value while it is compared,
/// counted or released: value and range change together, and what they replace is released last.
/// Freeing constrained values that are nested in each other takes no stack, however deep.
///
/// Not synchronised: several threads may read one object at a time, a change needs exclusive
/// access (take `Lock` around shared use). Reference counting is atomic.
struct IConstrainedValue : Core::IObject {
  /// Slot 6. Replaces the range with copies of two values. Equal bounds are allowed.
  /// @return false with "Types of Min/Max don't match!", "Types of Value and Constraints don't
  ///         match!", "Min is bigger than Max!", or what comparing the values throws
  virtual bool SetConstraints(const Structures::_VARIANT* min, const Structures::_VARIANT* max,
                              Core::IErrorCode** error) = 0;
  /// Slot 7. Replaces the value with a copy, or with the bound that it lies beyond.
  /// @return false with "Types of Value and Constraints don't match!", or what comparing the
  ///         values throws
  virtual bool SetValue(const Structures::_VARIANT* value, Core::IErrorCode** error) = 0;
  /// Slot 8. Copies the bounds, with references to their objects, into two initialised records,
  /// whose former objects are released last. The caller owns the copies. A null pointer is
  /// skipped.
  virtual void GetConstraints(Structures::_VARIANT* min, Structures::_VARIANT* max) = 0;
  /// Slot 9. Copies the value in the same way.
  virtual void GetValue(Structures::_VARIANT* destination) = 0;

 protected:
  ~IConstrainedValue() = default;
};

}  // namespace Data::Interfaces
