#pragma once

#include "Core/IObject.h"

namespace Core {

/// A failure or problem as an object. It is immutable, so any number of threads
/// may read it and it has no mutex: `Lock` and `Unlock` do nothing and `TryLock`
/// always returns false.
///
/// A guarded operation that fails stores one in its trailing `error` argument if
/// that argument is given and holds null; an error that is already there is left
/// alone. The caller releases it. When there is no memory even for the error
/// object, the result false alone reports the failure.
struct IErrorCode : IObject {
  /// Slot 6. The message, zero-terminated UTF-8; owned by the object and valid
  /// while it lives.
  virtual const char* GetMessage() = 0;
  /// Slot 7. Length of the message in bytes, without the terminator.
  virtual uint64_t GetMessageLength() = 0;
  /// Slot 8. 2: a standard exception was caught, the message is its text (lack of
  /// memory among them: std::bad_alloc); 1: an exception of another type was
  /// caught, the message is "Uncaught exception"; 0: a problem that is data rather
  /// than an exception. No guarded operation fails with 0.
  virtual uint32_t GetCode() = 0;

 protected:
  ~IErrorCode() = default;
};

}  // namespace Core
