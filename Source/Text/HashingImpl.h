#pragma once

#include <cstddef>
#include <span>

#include "Core/ObjectBase.h"
#include "Data/Interfaces/IHashing.h"
#include "Platform/Hashing.h"

namespace Data::Hashing::impl {

struct HashingImpl final : Core::ObjectBase<Interfaces::IHashing> {
  explicit HashingImpl(Platform::HashAlgorithm algorithm);
  /// For HMACs with this key; keeps no copy of it here.
  HashingImpl(Platform::HashAlgorithm algorithm, std::span<const std::uint8_t> key);

  bool Hash(const void* data, std::uint64_t length, Interfaces::IArray** out,
            Core::IErrorCode** error) override;

 private:
  HashingImpl(Platform::HashAlgorithm algorithm, bool isKeyed, std::span<const std::uint8_t> key);

  Platform::HashStatePtr state_;
  std::size_t digestSize_ = 0;
};

}  // namespace Data::Hashing::impl
