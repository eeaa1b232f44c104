#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// A value of a fixed type that is kept within a closed range [min, max]: whenever the value or the
/// range changes, a value outside the range is replaced by the nearer bound. Values are compared by
/// `Core::Compare`, so texts are compared ignoring the case of A to Z, and types that cannot be
/// compared cannot be constrained. The value and the bounds are stored as copies; a copy holds a
/// reference to its object.
///
/// Failures. Operations with an `error` argument never throw. A failed operation changes nothing,
/// and so does a lack of memory (code 2). A null record fails with "Pointer of struct
/// Data::Structures::_VARIANT must not be null!", an undefined one with "Variant type is undefined!
/// Did you forget to zero out the VARIANT structure? It appears uninitialized!".
///
/// Callbacks. An object that a caller implements may call back into the constrained value when it
/// is compared and when references to it are added or released. The value and the range change
/// together, and what they replace is released last. Freeing nested constrained values does not
/// recurse.
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. Take
/// `Lock` around shared use. Reference counting is atomic.
struct IConstrainedValue : Core::IObject {
  /// Slot 6. Replaces the range with copies of two values, which may be equal.
  /// @return false with "Types of Min/Max don't match!", "Types of Value and Constraints don't
  ///         match!", "Min is bigger than Max!", or a failure of comparing the values
  virtual bool SetConstraints(const Structures::_VARIANT* min, const Structures::_VARIANT* max,
                              Core::IErrorCode** error) = 0;
  /// Slot 7. Replaces the value with a copy of `value`, or with the nearer bound if `value` is
  /// outside the range.
  /// @return false with "Types of Value and Constraints don't match!", or a failure of comparing
  ///         the values
  virtual bool SetValue(const Structures::_VARIANT* value, Core::IErrorCode** error) = 0;
  /// Slot 8. Copies the bounds into initialised records and adds references to their objects, which
  /// the caller releases. Releases the records' previous objects last. Either pointer may be null.
  virtual void GetConstraints(Structures::_VARIANT* min, Structures::_VARIANT* max) = 0;
  /// Slot 9. Copies the value in the same way. Null does nothing.
  virtual void GetValue(Structures::_VARIANT* destination) = 0;

 protected:
  ~IConstrainedValue() = default;
};

}  // namespace Data::Interfaces
