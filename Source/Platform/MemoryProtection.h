#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Keeps secrets enciphered in memory, with a key that only this process has.
namespace Data::Platform {

/// Memory is enciphered in blocks of this many bytes.
constexpr std::size_t kProtectionBlock = 16;

/// Enciphers whole blocks where they stand.
/// @return false if the system fails; the memory then holds anything
bool ProtectMemory(std::span<std::uint8_t> memory);

/// Deciphers what `ProtectMemory` left, all of it at once.
/// @return as `ProtectMemory`
bool UnprotectMemory(std::span<std::uint8_t> memory);

/// Overwrites memory in a way that no compiler leaves out.
void WipeMemory(std::span<std::uint8_t> memory);

}  // namespace Data::Platform
