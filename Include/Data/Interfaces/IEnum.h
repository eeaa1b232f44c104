#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IObjectList.h"

namespace Data::Interfaces {

/// A fixed, ordered list of text options of which exactly one is selected.
/// Options are UTF-8 and may repeat. Operations with an `error` argument never
/// throw; a failed one leaves the selection as it was.
struct IEnum : Core::IObject {
  /// Slot 6. Position of the selected option, counted from 0.
  virtual uint32_t GetIndex() = 0;
  /// Slot 7. Selects the option at a position.
  /// @return false with "Index out of bounds. Expected in range [0, %d]. Got
  ///         %d.", both as signed 32-bit numbers
  virtual bool SetIndex(uint32_t index, Core::IErrorCode** error) = 0;
  /// Slot 8. The selected option, zero-terminated; valid while the object lives.
  virtual const char* GetSelected() = 0;
  /// Slot 9. Selects the first option that equals a text byte by byte.
  /// @return false with "Given string is not an available option." or, for
  ///         null, "Pointer of char must not be null!"
  virtual bool SelectOption(const char* text, Core::IErrorCode** error) = 0;
  /// Slot 10. Number of options, at least 1.
  virtual uint64_t GetCount() = 0;
  /// Slot 11. A new list of new strings (`IString`), one per option in order;
  /// the caller releases it.
  virtual bool GetOptions(IObjectList** out, Core::IErrorCode** error) = 0;

 protected:
  ~IEnum() = default;
};

}  // namespace Data::Interfaces
