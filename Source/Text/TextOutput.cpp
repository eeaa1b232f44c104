#include "Text/TextOutput.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "Platform/LargePages.h"

namespace Data::impl {

void MemoryText::Append(std::string_view piece) {
  if (piece.empty()) return;
  // One byte remains for the terminator.
  if (capacity_ - size_ <= piece.size()) {
    if (piece.size() > PTRDIFF_MAX - size_ - 1) throw std::bad_alloc();
    Reserve(std::max(size_ + piece.size() + 1, capacity_ + capacity_ / 2));
  }
  std::memcpy(text_.get() + size_, piece.data(), piece.size());
  size_ += piece.size();
}

void MemoryText::Expect(std::size_t size) {
  const std::size_t margin = size / 16 + 1;
  if (size < PTRDIFF_MAX / 2 && capacity_ < size + margin) Reserve(size + margin);
}

void MemoryText::Reserve(std::size_t size) {
  constexpr std::size_t kLarge = std::size_t{4} << 20;
  auto larger = std::make_unique_for_overwrite<char[]>(size);
  if (size >= kLarge) Platform::PreferLargePages(larger.get(), size);
  if (size_ != 0) std::memcpy(larger.get(), text_.get(), size_);
  text_ = std::move(larger);
  capacity_ = size;
}

Core::Ptr<MultiByteStringImpl> MemoryText::Take() {
  constexpr std::size_t kSmall = 4096;
  const std::size_t size = std::exchange(size_, 0), capacity = std::exchange(capacity_, 0);
  auto text = std::move(text_);
  if (size <= kSmall || size < capacity / 2)
    return MultiByteStringImpl::FromUtf8({text.get(), size});
  return MultiByteStringImpl::FromUtf8Buffer(std::move(text), size, capacity);
}

}  // namespace Data::impl
