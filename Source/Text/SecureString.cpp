#include "Text/SecureString.h"

#include <cstring>
#include <span>
#include <stdexcept>

#include "Core/Guard.h"
#include "Core/VariantConversions.h"
#include "Platform/MemoryProtection.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

namespace {

std::size_t RoundUpToBlocks(std::size_t length) {
  constexpr std::size_t kBlock = Platform::kProtectionBlock;
  return (length + kBlock - 1) / kBlock * kBlock;
}

/// Overwrites plain text when it goes out of scope, unless dismissed.
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

// The text may be the caller's own object, so a reference to it is held while it is read.
SecureString::SecureString(Interfaces::IString& text)
    : SecureString(Core::Utf8View(*Core::Ptr<Interfaces::IString>(&text))) {}

SecureString::SecureString(std::string_view text)
    : encrypted_(RoundUpToBlocks(text.size())), length_(text.size()) {
  if (text.empty()) return;
  WipeGuard plainText(encrypted_);
  std::memcpy(encrypted_.data(), text.data(), text.size());
  if (!Platform::ProtectMemory(encrypted_))
    throw std::runtime_error("SecureString: Encprytion failed!");
  plainText.Dismiss();
}

bool SecureString::GetText(Interfaces::IString** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    // Decrypted directly into the memory of the new string: there is no other copy.
    const auto decrypt = [this](char* to) {
      if (length_ == 0) return length_;
      std::memcpy(to, encrypted_.data(), encrypted_.size());
      if (!Platform::UnprotectMemory({reinterpret_cast<std::uint8_t*>(to), encrypted_.size()}))
        throw std::runtime_error("SecureString: Decrypt memory failed!");
      return length_;
    };
    *out = MultiByteStringImpl::SecretFromUtf8(encrypted_.size(), decrypt).Detach();
  });
}

}  // namespace Data::impl
