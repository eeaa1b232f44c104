#include "Text/HashingImpl.h"

#include <stdexcept>

#include "Core/Guard.h"
#include "Core/Ptr.h"
#include "Core/StringFormat.h"
#include "Text/ArrayBytes.h"

namespace Data::Hashing::impl {

namespace {

/// @param problem  a format string for the status number (%d) and its text (%s)
void Check(Platform::HashStatus status, const char* problem) {
  if (status.isSuccess) return;
  throw std::runtime_error(
      Core::StringFormat(problem, status.number, Platform::HashStatusText(status).c_str()));
}

}  // namespace

HashingImpl::HashingImpl(Platform::HashAlgorithm algorithm) : HashingImpl(algorithm, false, {}) {}

HashingImpl::HashingImpl(Platform::HashAlgorithm algorithm, std::span<const std::uint8_t> key)
    : HashingImpl(algorithm, true, key) {}

HashingImpl::HashingImpl(Platform::HashAlgorithm algorithm, bool isKeyed,
                         std::span<const std::uint8_t> key) {
  Check(Platform::OpenHashAlgorithm(algorithm, isKeyed, state_),
        "Failed to open algoritm provider! NTSTATUS: %d, Message: %s");
  Check(Platform::ReserveHashMemory(*state_),
        "Failed to calculate object size! NTSTATUS: %d, Message: %s");
  Check(Platform::GetDigestSize(*state_, digestSize_),
        "Failed to calculate hash size! NTSTATUS: %d, Message: %s");
  Check(Platform::CreateHash(*state_, key), "Failed to create hash! NTSTATUS: %d, Message: %s");
}

bool HashingImpl::Hash(const void* data, std::uint64_t length, Interfaces::IArray** out,
                       Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(data);
    Core::CheckOutPointer(out);
    auto array = Data::impl::NewArray(digestSize_);
    const std::span digest(static_cast<std::uint8_t*>(array->GetData()), digestSize_);
    Check(Platform::HashData(*state_, {static_cast<const std::uint8_t*>(data), length}),
          "Failed to hash data! NTSTATUS: %d, Message: %s");
    Check(Platform::FinishHash(*state_, digest),
          "Failed to finish hashing! NTSTATUS: %d, Message: %s");
    *out = array.Detach();
  });
}

}  // namespace Data::Hashing::impl
