#pragma once

#include <vector>

#include "Core/Parts.h"
#include "Core/Ptr.h"
#include "Text/MultiByteStringImpl.h"
#include "Text/TextBuffer.h"

namespace Data::impl {

/// Where a long text goes, piece by piece.
class TextOutput {
 public:
  TextOutput() = default;
  TextOutput(const TextOutput&) = delete;
  TextOutput& operator=(const TextOutput&) = delete;

  /// Takes the next piece and leaves the buffer empty. Is called for one piece after another, each
  /// time perhaps on another thread.
  virtual void Take(TextBuffer& piece) = 0;

 protected:
  ~TextOutput() = default;
};

/// Keeps the pieces in memory.
class TextPieces final : public TextOutput {
 public:
  void Take(TextBuffer& piece) override;
  /// The whole text. The pieces are freed as they are copied.
  Core::Ptr<MultiByteStringImpl> Join(Core::Parts& parts);

 private:
  std::vector<TextBuffer> pieces_;
};

}  // namespace Data::impl
