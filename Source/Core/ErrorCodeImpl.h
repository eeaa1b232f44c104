#pragma once

#include <atomic>
#include <string>
#include <string_view>

#include "Core/IErrorCode.h"

namespace Core::impl {

/// Immutable, so it has no mutex.
struct ErrorCodeImpl final : IErrorCode {
  ErrorCodeImpl(std::string_view message, std::uint32_t code) : code_(code), message_(message) {}
  virtual ~ErrorCodeImpl() = default;

  void AddReference() override;
  std::uint32_t Release() override;
  void Lock() override {}
  bool TryLock() override { return false; }
  void Unlock() override {}
  void Destroy() override { delete this; }

  const char* GetMessage() override { return message_.c_str(); }
  std::uint64_t GetMessageLength() override { return message_.size(); }
  std::uint32_t GetCode() override { return code_; }

 private:
  std::atomic<std::uint32_t> references_{1};
  std::uint32_t code_;
  std::string message_;
};

}  // namespace Core::impl
