#pragma once

#include <cstdint>
#include <functional>

namespace Data::tests {

/// The base of objects that a program makes itself: references are counted, and code of the test
/// runs where the library gives one or takes one back. Made by `Core::MakePtr`.
template <class Interface>
class CallersOwn : public Interface {
 public:
  virtual ~CallersOwn() = default;

  std::function<void()> onAddReference = [] {};
  /// The object may end after the call.
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
