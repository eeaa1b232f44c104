#pragma once

#include <stdint.h>

namespace Core {

/// Root of every interface: a reference-counted object with its own lock.
///
/// Threads: counting references is atomic; nothing else of an object is
/// synchronised unless its interface says so. Take `Lock` around every use of an
/// object that several threads share. Reading it from several threads at once is
/// safe where its interface says so.
///
/// Callbacks: an object that a caller implements may call the library from any of
/// its operations, `Release` included, even the object that is calling it. An
/// operation changes its own state first and releases what it drops last.
///
/// The slots of an interface are a binary contract. Slots 0 to 5 are the ones
/// below, an interface's own operations start at slot 6. Objects are only ever
/// reached through interface pointers; `delete` on one does not compile.
struct IObject {
  /// Slot 0. Adds one reference. Atomic; callable from any thread.
  virtual void AddReference() = 0;
  /// Slot 1. Gives one reference back; the last one destroys the object in the
  /// calling thread. Atomic.
  /// @return the number of references that remain
  virtual uint32_t Release() = 0;
  /// Slot 2. Blocks until the calling thread holds the object's mutex. The
  /// library never takes it itself. Not recursive.
  /// @throws std::system_error when the platform's mutex fails
  virtual void Lock() = 0;
  /// Slot 3. Takes the mutex if it is free; never blocks.
  /// @return true when the caller now holds it
  virtual bool TryLock() = 0;
  /// Slot 4. Releases the mutex.
  virtual void Unlock() = 0;
  /// Slot 5. Destroys the object and frees its memory whatever its count. Only
  /// `Release` calls it.
  virtual void Destroy() = 0;

  // The names of a standard lockable, so that std::lock_guard, std::unique_lock
  // and std::scoped_lock work on any object. They take no slots.
  void lock() { Lock(); }
  bool try_lock() { return TryLock(); }
  void unlock() { Unlock(); }

 protected:
  ~IObject() = default;
};

}  // namespace Core
