#include "Containers/ArrayImpl.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <utility>

#include "Core/Guard.h"

namespace Data::impl {

namespace {

std::uint64_t CheckedProduct(std::uint64_t stride, std::uint64_t count) {
  if (stride != 0 && count > UINT64_MAX / stride) throw std::length_error("vector too long");
  return stride * count;
}

void CheckLength(std::uint64_t length, const std::vector<std::uint8_t>& bytes) {
  if (length > bytes.max_size()) throw std::length_error("vector too long");
}

/// The source may lie in these very bytes, which growth moves.
void AppendBytes(std::vector<std::uint8_t>& bytes, const std::uint8_t* source,
                 std::uint64_t length) {
  const std::size_t size = bytes.size();
  const std::uint8_t* const begin = bytes.data();
  const bool isOwn = std::greater_equal<>()(source, begin) && std::less<>()(source, begin + size);
  const std::size_t position = isOwn ? static_cast<std::size_t>(source - begin) : 0;
  bytes.resize(size + length);
  std::memmove(bytes.data() + size, isOwn ? bytes.data() + position : source, length);
}

}  // namespace

ArrayImpl::ArrayImpl(std::vector<std::uint8_t> bytes)
    : stride_(1), count_(bytes.size()), bytes_(std::move(bytes)) {}

void ArrayImpl::SetData(const void* source, std::uint64_t stride, std::uint64_t count) {
  const std::uint64_t length = CheckedProduct(stride, count);
  CheckLength(length, bytes_);
  if (length != 0) {
    Core::CheckArgument(source);
    // A copy first: the source may lie in this very buffer.
    const auto* first = static_cast<const std::uint8_t*>(source);
    bytes_ = std::vector<std::uint8_t>(first, first + length);
  } else {
    bytes_.clear();
  }
  stride_ = stride;
  count_ = count;
}

void ArrayImpl::Resize(std::uint64_t stride, std::uint64_t count) {
  const std::uint64_t length = CheckedProduct(stride, count);
  CheckLength(length, bytes_);
  bytes_.resize(length);
  stride_ = stride;
  count_ = count;
}

void* ArrayImpl::GetPointer(std::uint64_t offset, std::uint64_t size, Core::IErrorCode** error) {
  return Core::Guarded(error, [&]() -> void* {
    // The sum wraps by contract, so the offset is added as a number.
    if (offset + size > bytes_.size())
      throw std::runtime_error("Offset or size are not in data bounds");
    return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(bytes_.data()) + offset);
  });
}

std::uint64_t ArrayImpl::Write(std::uint64_t offset, const void* source, std::uint64_t length) {
  const std::uint64_t size = bytes_.size();
  const std::uint64_t overwritten = std::min(size - offset, length);
  if (offset < size && overwritten != 0) {
    Core::CheckArgument(source);
    std::memmove(bytes_.data() + offset, source, overwritten);
  }
  if (overwritten == length) return offset + length;
  if (!source) return Append(nullptr, 0);
  return Append(static_cast<const std::uint8_t*>(source) + overwritten, length - overwritten);
}

std::uint64_t ArrayImpl::Append(const void* source, std::uint64_t length) {
  if (!source) length = 0;
  if (length != 0) {
    const std::uint64_t size = bytes_.size();
    if (length > bytes_.max_size() - size) throw std::length_error("vector too long");
    AppendBytes(bytes_, static_cast<const std::uint8_t*>(source), length);
  }
  count_ += length;
  stride_ = 1;
  return count_;
}

}  // namespace Data::impl
