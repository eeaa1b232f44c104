#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Encrypts secrets in memory with a key known only to this process.
namespace Data::Platform {

/// Memory is encrypted in blocks of this many bytes.
constexpr std::size_t kProtectionBlock = 16;

/// Encrypts whole blocks in place.
/// @return false if the system fails; the contents are then unspecified and may
///         still be plain
/// @throws std::bad_alloc or std::system_error if no key can be created
bool ProtectMemory(std::span<std::uint8_t> memory);

/// Decrypts the whole of what one call of `ProtectMemory` encrypted; fails as that does.
bool UnprotectMemory(std::span<std::uint8_t> memory);

/// Overwrites memory in a way that compilers do not optimise away.
void WipeMemory(std::span<std::uint8_t> memory);

}  // namespace Data::Platform
