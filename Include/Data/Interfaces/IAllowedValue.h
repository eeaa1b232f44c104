#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IString.h"
#include "Data/Structures/ComparisonOperator.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

/// One entry in a schema column's list of allowed values: a value, how an application compares a
/// cell with it, and texts that describe it. Texts are zero-terminated UTF-8, owned by the object
/// and valid while it lives.
///
/// Immutable, so any number of threads may read it, as far as the object that its value may refer
/// to allows. Reference counting is atomic. Freeing allowed values that are nested in other
/// containers takes no stack, however deep.
struct IAllowedValue : Core::IObject {
  virtual const char* GetDisplayName() = 0;  ///< Slot 6. The text that users see.
  virtual const char* GetDescription() = 0;  ///< Slot 7. A longer description.
  virtual const char* GetCategory() = 0;     ///< Slot 8. The group it belongs to.
  virtual const char* GetHelpUri() = 0;      ///< Slot 9. Where to read more.
  /// Slot 10. Copies the value, with a reference to its object, into an initialised record, whose
  /// former object is released last. The caller owns the copy. Null does nothing.
  virtual void GetValue(Structures::_VARIANT* destination) = 0;
  /// Slot 11. How applications compare; the library never evaluates it.
  virtual Structures::ComparisonOperator GetComparison() = 0;
  /// Slot 12. The display text of the value as a new string, which the caller releases. Never
  /// throws.
  /// @return false with "Pointer to a pointer of struct Data::Interfaces::IString must not be null!
  ///         Address of return must be specified!", "Pointer of struct Data::Interfaces::IString
  ///         must be null in order to avoid memory leaks!", std::bad_alloc's text, or what
  ///         converting the value throws
  virtual bool GetValueText(IString** out, Core::IErrorCode** error) = 0;

 protected:
  ~IAllowedValue() = default;
};

}  // namespace Data::Interfaces
