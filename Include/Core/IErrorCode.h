#pragma once

#include "Core/IObject.h"

namespace Core {

/// A failure or problem as an object. Immutable, so it has no mutex: `Lock` and
/// `Unlock` do nothing and `TryLock` always returns false.
///
/// A guarded operation stores one in its trailing `error` argument when it
/// fails, if that argument is given and still holds null; an error already
/// there is left alone. The caller releases it.
struct IErrorCode : IObject {
  /// Slot 6. The message, zero-terminated UTF-8; owned by the object and valid
  /// while it lives.
  virtual const char* GetMessage() = 0;
  /// Slot 7. Length of the message in bytes, without the terminator.
  virtual uint64_t GetMessageLength() = 0;
  /// Slot 8. 0: a problem that is data, such as a line of CSV text that could
  /// not be read; 1: an exception outside the standard family was caught
  /// ("Uncaught exception"); 2: a standard exception was caught, the message is
  /// its text.
  virtual uint32_t GetCode() = 0;

 protected:
  ~IErrorCode() = default;
};

}  // namespace Core
