#include "Text/SecureString.h"

#include <cstring>
#include <span>
#include <stdexcept>

#include "Core/Guard.h"
#include "Platform/MemoryProtection.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

namespace {

std::size_t RoundUpToBlocks(std::size_t length) {
  constexpr std::size_t kBlock = Platform::kProtectionBlock;
  return (length + kBlock - 1) / kBlock * kBlock;
}

/// Overwrites plain text, unless told that there is none left.
class WipeGuard {
 public:
  explicit WipeGuard(std::span<std::uint8_t> memory) : memory_(memory) {}
  WipeGuard(const WipeGuard&) = delete;
  WipeGuard& operator=(const WipeGuard&) = delete;
  ~WipeGuard() { Platform::WipeMemory(memory_); }
  void Dismiss() { memory_ = {}; }

 private:
  std::span<std::uint8_t> memory_;
};

}  // namespace

SecureString::SecureString(std::string_view text)
    : protected_(RoundUpToBlocks(text.size())), length_(text.size()) {
  if (text.empty()) return;
  WipeGuard plainText(protected_);
  std::memcpy(protected_.data(), text.data(), text.size());
  if (!Platform::ProtectMemory(protected_))
    throw std::runtime_error("SecureString: Encprytion failed!");
  plainText.Dismiss();
}

bool SecureString::GetText(Interfaces::IString** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    // Deciphered where the caller's string keeps it: there is no other copy.
    auto text = MultiByteStringImpl::FromUtf8(protected_.size(), [this](char* to) {
      if (length_ == 0) return length_;
      const std::span memory(reinterpret_cast<std::uint8_t*>(to), protected_.size());
      WipeGuard plainText(memory);
      std::memcpy(to, protected_.data(), protected_.size());
      if (!Platform::UnprotectMemory(memory))
        throw std::runtime_error("SecureString: Decrypt memory failed!");
      plainText.Dismiss();
      return length_;
    });
    *out = text.Detach();
  });
}

}  // namespace Data::impl
