#include "Containers/ArrayImpl.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <stdexcept>

#include "Core/Guard.h"

namespace Data::impl {

namespace {

using Buffer = std::vector<std::uint8_t>;

[[noreturn]] void ThrowTooLong() { throw std::length_error("vector too long"); }

/// stride * count in bytes.
std::size_t LengthOf(std::uint64_t stride, std::uint64_t count) {
  if (stride != 0 && count > Buffer().max_size() / stride) ThrowTooLong();
  return static_cast<std::size_t>(stride * count);
}

/// Bytes to copy from. They may lie in the buffer itself, where they move when it grows.
class SourceBytes {
 public:
  SourceBytes(const void* bytes, const Buffer& buffer)
      : bytes_(static_cast<const std::uint8_t*>(bytes)) {
    const std::uint8_t* const begin = buffer.data();
    isOwn_ = std::greater_equal<>()(bytes_, begin) && std::less<>()(bytes_, begin + buffer.size());
    if (isOwn_) position_ = static_cast<std::size_t>(bytes_ - begin);
  }

  /// Copies to a position of the buffer, which may have grown since.
  void CopyTo(Buffer& buffer, std::size_t position, std::size_t length) const {
    const std::uint8_t* const from = isOwn_ ? buffer.data() + position_ : bytes_;
    std::memmove(buffer.data() + position, from, length);
  }

 private:
  const std::uint8_t* bytes_;
  bool isOwn_;
  std::size_t position_ = 0;
};

}  // namespace

void ArrayImpl::SetData(const void* source, std::uint64_t stride, std::uint64_t count) {
  const std::size_t length = LengthOf(stride, count);
  if (length != 0) {
    Core::CheckArgument(source);
    // Copied before the buffer is replaced: the source may lie in it.
    const auto* first = static_cast<const std::uint8_t*>(source);
    bytes_ = Buffer(first, first + length);
  } else {
    bytes_.clear();
  }
  stride_ = stride;
  count_ = count;
}

void ArrayImpl::Resize(std::uint64_t stride, std::uint64_t count) {
  bytes_.resize(LengthOf(stride, count));
  stride_ = stride;
  count_ = count;
}

void* ArrayImpl::GetPointer(std::uint64_t offset, std::uint64_t size, Core::IErrorCode** error) {
  return Core::Guarded(error, [&]() -> void* {
    // The sum wraps by contract. A wrapped offset is not a valid pointer offset, so it is added as
    // an integer.
    if (offset + size > bytes_.size())
      throw std::runtime_error("Offset or size are not in data bounds");
    return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(bytes_.data()) + offset);
  });
}

std::uint64_t ArrayImpl::Write(std::uint64_t offset, const void* source, std::uint64_t length) {
  // By contract the difference wraps for an offset beyond the end, where nothing is overwritten.
  const std::uint64_t inside = std::min(bytes_.size() - offset, length);
  const bool overwrites = offset < bytes_.size() && inside != 0;
  if (overwrites) Core::CheckArgument(source);
  const SourceBytes bytes(source, bytes_);
  std::uint64_t result = offset + length;
  // Appending comes first: it may fail, and its bytes may be among those to be overwritten.
  if (inside != length) {
    // Added as an integer: past the 64 bits, the sum is not a valid pointer offset.
    const auto rest = reinterpret_cast<std::uintptr_t>(source) + inside;
    result = Append(source ? reinterpret_cast<const void*>(rest) : nullptr, length - inside);
  }
  if (overwrites) bytes.CopyTo(bytes_, offset, inside);
  return result;
}

std::uint64_t ArrayImpl::Append(const void* source, std::uint64_t length) {
  if (!source) length = 0;
  if (length != 0) {
    const std::size_t size = bytes_.size();
    if (length > bytes_.max_size() - size) ThrowTooLong();
    const SourceBytes bytes(source, bytes_);
    bytes_.resize(size + length);
    bytes.CopyTo(bytes_, size, length);
  }
  count_ += length;
  stride_ = 1;
  return count_;
}

}  // namespace Data::impl
