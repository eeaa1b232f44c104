#include "Text/TextPieces.h"

#include <cstring>
#include <utility>

namespace Data::impl {

void TextPieces::Take(TextBuffer& piece) {
  constexpr std::size_t kSmall = 4096;
  if (!pieces_.empty() && pieces_.back().Size() + piece.Size() <= kSmall) {
    pieces_.back().Append(piece.View());
    piece.Clear();
  } else {
    pieces_.push_back(std::move(piece));
  }
}

Core::Ptr<MultiByteStringImpl> TextPieces::Join(Core::Parts& parts) {
  std::vector<std::size_t> offsets;
  offsets.reserve(pieces_.size());
  std::size_t size = 0;
  for (const TextBuffer& piece : pieces_) {
    offsets.push_back(size);
    size += piece.Size();
  }
  return MultiByteStringImpl::FromUtf8(size, [&](char* text) {
    parts.Run(pieces_.size(), [&](std::size_t i) {
      const TextBuffer piece = std::move(pieces_[i]);
      if (piece.Size() != 0) std::memcpy(text + offsets[i], piece.View().data(), piece.Size());
    });
    return size;
  });
}

}  // namespace Data::impl
