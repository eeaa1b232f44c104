#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "Core/Ptr.h"
#include "Text/MultiByteStringImpl.h"

namespace Data::impl {

/// Where a long text goes, piece by piece.
class TextOutput {
 public:
  TextOutput() = default;
  TextOutput(const TextOutput&) = delete;
  TextOutput& operator=(const TextOutput&) = delete;

  /// Appends a piece. Is called for one piece after another, each time perhaps on another thread.
  virtual void Append(std::string_view piece) = 0;
  /// Tells how long the whole text will be, more or less.
  virtual void Expect(std::size_t size) { static_cast<void>(size); }

 protected:
  ~TextOutput() = default;
};

/// A text in memory. What is expected but never written takes no memory where the system gives it
/// on first use.
class MemoryText final : public TextOutput {
 public:
  void Append(std::string_view piece) override;
  void Expect(std::size_t size) override;
  /// The whole text; this object is empty then.
  Core::Ptr<MultiByteStringImpl> Take();

 private:
  void Reserve(std::size_t size);

  std::unique_ptr<char[]> text_;
  std::size_t size_ = 0, capacity_ = 0;
};

}  // namespace Data::impl
