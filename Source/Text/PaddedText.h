#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Core/VariantRecord.h"
#include "Platform/ByteBlock.h"

/// Copies texts in whole blocks, looking for special bytes on the way.
namespace Data::impl {

/// A text at whose address a whole block can be read, even if it is shorter.
class PaddedText {
 public:
  /// The text of a String in value form. It stays in the record.
  explicit PaddedText(const Structures::_VARIANT& inlineText) {
    using Platform::ByteBlock;
    static_assert(Core::kInlineTextCapacity == ByteBlock::kSize);
    const std::uint32_t zeros = ByteBlock(inlineText.value).Equal('\0').Bits();
    constexpr std::uint32_t kEnd = std::uint32_t{1} << ByteBlock::kSize;
    text_ = {reinterpret_cast<const char*>(inlineText.value),
             static_cast<std::size_t>(std::countr_zero(zeros | kEnd))};
  }
  /// Any text. One that is shorter than a block is moved to `room`.
  PaddedText(std::string_view text, Structures::_VARIANT& room) : text_(text) {
    if (text.size() >= Platform::ByteBlock::kSize) return;
    room = Core::MakeInlineText(text);
    text_ = {reinterpret_cast<const char*>(room.value), text.size()};
  }

  std::string_view View() const { return text_; }
  std::size_t Size() const { return text_.size(); }

  /// Copies the bytes before the first special one. Writes up to a block more.
  /// @param marks  gives for a block one in which the highest bits of the special bytes are set
  /// @return the number of bytes copied; the size of the text if none is special
  template <class Marks>
  std::size_t CopyPlain(char* to, const Marks& marks) const;

 private:
  std::string_view text_;
};

template <class Marks>
std::size_t PaddedText::CopyPlain(char* to, const Marks& marks) const {
  using Platform::ByteBlock;
  const auto copyBlock = [&](std::size_t at) {
    const ByteBlock block(text_.data() + at);
    block.Store(to + at);
    return marks(block).Bits();
  };
  const std::size_t size = text_.size();
  if (size < ByteBlock::kSize) {
    const std::uint32_t end = std::uint32_t{1} << size;
    return static_cast<std::size_t>(std::countr_zero(copyBlock(0) | end));
  }
  // The last two blocks may overlap.
  const std::size_t last = size - ByteBlock::kSize;
  for (std::size_t at = 0;; at = std::min(at + ByteBlock::kSize, last)) {
    const std::uint32_t found = copyBlock(at);
    if (found != 0) return at + static_cast<std::size_t>(std::countr_zero(found));
    if (at == last) return size;
  }
}

}  // namespace Data::impl
