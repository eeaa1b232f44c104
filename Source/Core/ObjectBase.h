#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>

#include "Core/IObject.h"

namespace Core {

/// Implements the first six slots: reference counting, locking and destruction. A class that
/// derives from `ObjectBase<IXxx>` adds only its own operations.
template <class Interface>
class ObjectBase : public Interface {
 public:
  void AddReference() override { references_.fetch_add(1); }
  std::uint32_t Release() override {
    const std::uint32_t before = references_.fetch_sub(1);
    if (before <= 1) this->Destroy();
    return before - 1;
  }
  void Lock() override { mutex_.lock(); }
  bool TryLock() override { return mutex_.try_lock(); }
  void Unlock() override { mutex_.unlock(); }
  void Destroy() override { delete this; }

  /// Drops one reference without destroying the object.
  /// @return whether it was the last one: the caller then destroys the object
  bool DropReference() { return references_.fetch_sub(1) <= 1; }

 protected:
  ObjectBase() = default;
  ObjectBase(const ObjectBase&) = delete;
  ObjectBase& operator=(const ObjectBase&) = delete;
  /// Its slots come after the interface's own.
  virtual ~ObjectBase() = default;

 private:
  std::mutex mutex_;
  std::atomic<std::uint32_t> references_{1};
};

}  // namespace Core
