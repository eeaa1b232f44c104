#pragma once

#include <cstdint>
#include <functional>

namespace Data::tests {

/// The base of the caller's own objects in tests. It counts references, and runs the test's code
/// when the library adds or releases one. Create such objects with `Core::MakePtr`.
template <class Interface>
class CallersOwn : public Interface {
 public:
  virtual ~CallersOwn() = default;

  std::function<void()> onAddReference = [] {};
  /// Called after the reference is released, when the object may already be destroyed.
  std::function<void()> onRelease = [] {};

  void AddReference() override {
    ++references_;
    try {
      onAddReference();
    } catch (...) {
      --references_;
      throw;
    }
  }
  std::uint32_t Release() override {
    const std::uint32_t left = --references_;
    const auto call = onRelease;
    if (left == 0) Destroy();
    call();
    return left;
  }
  void Lock() override {}
  bool TryLock() override { return true; }
  void Unlock() override {}
  void Destroy() override { delete this; }

 private:
  std::uint32_t references_ = 1;
};

}  // namespace Data::tests
