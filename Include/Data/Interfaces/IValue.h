#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/ValueType.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

struct IString;

/// A value as an object: a copy of the cell that it was read from, independent of that cell. An
/// object that the value refers to is shared.
///
/// Memory. A lack of memory throws std::bad_alloc and changes nothing.
///
/// Callbacks. The value may refer to an object that a caller implements; that object may use or
/// release this one. A replaced value is released last.
///
/// Threads. Not synchronised: concurrent reads are safe except for texts (see `IString`);
/// `SetValue` needs exclusive access. Take `Lock` around shared use. Reference counting is atomic.
struct IValue : Core::IObject {
  /// Slot 6. Copies the value into an initialised record and adds a reference to its object, which
  /// the caller releases. Releases the record's previous object last.
  /// @return true
  /// @throws std::runtime_error "Cannot be nullptr!" for a null `out`
  virtual bool GetValue(Structures::_VARIANT* out) = 0;
  /// Slot 7. Replaces the value with a copy of `value`.
  /// @throws std::runtime_error "Pointer of struct Data::Structures::_VARIANT must not be null!"
  virtual void SetValue(const Structures::_VARIANT* value) = 0;
  /// Slot 8. The record itself, for reading in place. Owned by the object; valid while it lives.
  /// `SetValue` overwrites it.
  virtual const Structures::_VARIANT* GetRecord() = 0;
  /// Slot 9. The type code of the value.
  virtual Structures::ValueType GetType() = 0;
  /// Slot 10. The display text of the value as a new string, which the caller releases.
  /// @return true
  /// @throws std::runtime_error "Pointer to a pointer of struct Data::Interfaces::IString must not
  ///         be null! Address of return must be specified!", "Pointer of struct
  ///         Data::Interfaces::IString must be null in order to avoid memory leaks!", and the
  ///         failure of the conversion if the record's form or object does not fit its type
  virtual bool GetText(IString** out) = 0;

 protected:
  ~IValue() = default;
};

}  // namespace Data::Interfaces
