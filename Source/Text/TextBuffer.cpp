#include "Text/TextBuffer.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace Data::impl {

TextBuffer::~TextBuffer() { std::free(begin_); }

void TextBuffer::Grow(std::size_t count) {
  const std::size_t size = View().size();
  const auto capacity = static_cast<std::size_t>(limit_ - begin_);
  if (count > PTRDIFF_MAX - size) throw std::bad_alloc();
  const std::size_t newCapacity =
      std::max({size + count, capacity + capacity / 2, std::size_t{256}});
  auto* block = static_cast<char*>(std::realloc(begin_, newCapacity));
  if (!block) throw std::bad_alloc();
  begin_ = block;
  end_ = block + size;
  limit_ = block + newCapacity;
}

}  // namespace Data::impl
