#pragma once

#include "Core/IErrorCode.h"
#include "Data/Interfaces/IObjectList.h"

namespace Data::Interfaces {

/// A fixed, ordered list of text options, exactly one of which is selected. Options are UTF-8 and
/// may repeat. They are copied when the enumeration is created; a text object that returns null for
/// its text gives an empty option.
///
/// Failures. Operations with an `error` argument never throw. A failed operation changes nothing,
/// and so does a lack of memory (code 2).
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. Take
/// `Lock` around shared use. Reference counting is atomic.
struct IEnum : Core::IObject {
  /// Slot 6. The index of the selected option, from 0.
  virtual uint32_t GetIndex() = 0;
  /// Slot 7. Selects the option at an index.
  /// @return false with "Index out of bounds. Expected in range [0, %d]. Got %d." (largest index,
  ///         `index` as a signed number)
  virtual bool SetIndex(uint32_t index, Core::IErrorCode** error) = 0;
  /// Slot 8. The selected option, zero-terminated. Owned by the object and valid while it lives.
  virtual const char* GetSelected() = 0;
  /// Slot 9. Selects the first option that is equal to a text, byte by byte.
  /// @return false with "Given string is not an available option." or, for null, "Pointer of char
  ///         must not be null!"
  virtual bool SelectOption(const char* text, Core::IErrorCode** error) = 0;
  /// Slot 10. The number of options, at least 1.
  virtual uint64_t GetCount() = 0;
  /// Slot 11. A new list of new strings (`IString`), one per option, in order. The caller releases
  /// it.
  /// @return false with "Pointer to a pointer of struct Data::Interfaces::IObjectList must not be
  ///         null! Address of return must be specified!" or "Pointer of struct
  ///         Data::Interfaces::IObjectList must be null in order to avoid memory leaks!"
  virtual bool GetOptions(IObjectList** out, Core::IErrorCode** error) = 0;

 protected:
  ~IEnum() = default;
};

}  // namespace Data::Interfaces
