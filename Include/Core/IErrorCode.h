#pragma once

#include "Core/IObject.h"

namespace Core {

/// A failure or problem as an object.
///
/// A guarded operation that fails stores a new error object in its `error` argument, which the
/// caller releases. It stores none if the argument is null or already holds an error object, or if
/// there is no memory for the error object; the operation's result then reports the failure alone.
///
/// Threads. Immutable, so any number of threads may read it. It has no mutex: `Lock` and `Unlock`
/// do nothing and `TryLock` always returns false. Reference counting is atomic.
///
/// No operation fails.
struct IErrorCode : IObject {
  /// Slot 6. The message, zero-terminated UTF-8. Owned by the object and valid while it lives.
  virtual const char* GetMessage() = 0;
  /// Slot 7. The length of the message in bytes, without the terminator.
  virtual uint64_t GetMessageLength() = 0;
  /// Slot 8. The kind of failure or problem:
  ///   - 2: a standard exception, whose text is the message. A lack of memory is "std::bad_alloc".
  ///   - 1: an exception of another type. The message is "Uncaught exception".
  ///   - 0: a problem in data. No guarded operation fails with this code.
  virtual uint32_t GetCode() = 0;

 protected:
  ~IErrorCode() = default;
};

}  // namespace Core
