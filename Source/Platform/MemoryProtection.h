#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Encrypts secrets in memory with a key that only this process has.
namespace Data::Platform {

/// Memory is encrypted in blocks of this many bytes.
constexpr std::size_t kProtectionBlock = 16;

/// Encrypts whole blocks in place.
/// @return false if the system fails; the contents are then unspecified and may
///         still be plain
/// @throws std::bad_alloc or std::system_error if no key can be created
bool ProtectMemory(std::span<std::uint8_t> memory);

/// Decrypts all of what one call of `ProtectMemory` encrypted. Fails as that does.
bool UnprotectMemory(std::span<std::uint8_t> memory);

/// Overwrites memory; compilers do not optimise it away.
void WipeMemory(std::span<std::uint8_t> memory);

}  // namespace Data::Platform
