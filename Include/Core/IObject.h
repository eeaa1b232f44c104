#pragma once

#include <stdint.h>

namespace Core {

/// The root of every interface: a reference-counted object with its own mutex.
///
/// The slots of an interface are a binary contract. Slots 0 to 5 are declared here; each interface
/// adds its own operations from slot 6 on. Objects are used through interface pointers only, and
/// `delete` on an interface pointer does not compile.
///
/// Threads. Reference counting is atomic. Nothing else is synchronised: take `Lock` around every
/// use of an object that threads share. Each interface states which operations are safe without.
///
/// Callbacks. An object that a caller implements may call the library from any of its operations,
/// including `Release`, and may even use the object that is calling it. Every operation therefore
/// changes its own state first, and releases what it replaces or removes last.
struct IObject {
  /// Slot 0. Adds one reference. Atomic; any thread may call it.
  virtual void AddReference() = 0;
  /// Slot 1. Releases one reference. Atomic; any thread may call it. Releasing the last reference
  /// destroys the object in the calling thread.
  /// @return the number of remaining references
  virtual uint32_t Release() = 0;
  /// Slot 2. Blocks until the calling thread holds the object's mutex, which is not recursive. The
  /// library itself never locks it.
  /// @throws std::system_error if the platform's mutex fails
  virtual void Lock() = 0;
  /// Slot 3. Locks the mutex if it is free; never blocks.
  /// @return whether the calling thread now holds the mutex
  virtual bool TryLock() = 0;
  /// Slot 4. Unlocks the mutex.
  virtual void Unlock() = 0;
  /// Slot 5. Destroys the object and frees its memory, whatever its reference count. The library
  /// calls it when the last reference is released; callers never do.
  virtual void Destroy() = 0;

  // The operations of a standard lockable type, so that std::lock_guard, std::unique_lock and
  // std::scoped_lock work on any object. They occupy no slots.
  void lock() { Lock(); }
  bool try_lock() { return TryLock(); }
  void unlock() { Unlock(); }

 protected:
  ~IObject() = default;
};

}  // namespace Core
