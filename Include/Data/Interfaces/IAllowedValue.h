#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IString.h"
#include "Data/Structures/ComparisonOperator.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// One entry in a schema column's list of allowed values: a value, how an application compares a
/// cell with it, and texts that describe it. The texts are zero-terminated UTF-8, owned by the
/// object and valid while it lives.
///
/// Memory. A lack of memory makes `GetValueText` fail; no other operation allocates. Freeing
/// allowed values that are nested in other containers does not recurse.
///
/// Callbacks. The value may refer to an object that a caller implements; `GetValue` and
/// `GetValueText` call it.
///
/// Threads. Immutable: any number of threads may read it, except that an object in the value has
/// its own thread rule. Reference counting is atomic.
struct IAllowedValue : Core::IObject {
  virtual const char* GetDisplayName() = 0;  ///< Slot 6. The text that users see.
  virtual const char* GetDescription() = 0;  ///< Slot 7. A longer description.
  virtual const char* GetCategory() = 0;     ///< Slot 8. The group that the value belongs to.
  virtual const char* GetHelpUri() = 0;      ///< Slot 9. The address of a help page.
  /// Slot 10. Copies the value into an initialised record and adds a reference to its object, which
  /// the caller releases. Releases the record's previous object last. Null does nothing.
  virtual void GetValue(Structures::_VARIANT* destination) = 0;
  /// Slot 11. How applications compare a cell with the value. The library never evaluates it.
  virtual Structures::ComparisonOperator GetComparison() = 0;
  /// Slot 12. The display text of the value as a new string, which the caller releases. Never
  /// throws.
  /// @return false with "Pointer to a pointer of struct Data::Interfaces::IString must not be null!
  ///         Address of return must be specified!", "Pointer of struct Data::Interfaces::IString
  ///         must be null in order to avoid memory leaks!", "std::bad_alloc", or a failure of
  ///         converting the value
  virtual bool GetValueText(IString** out, Core::IErrorCode** error) = 0;

 protected:
  ~IAllowedValue() = default;
};

}  // namespace Data::Interfaces
