#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace Data::impl {

/// Text that grows at its end; an output stream for rapidjson's writers.
class TextBuffer {
 public:
  using Ch = char;

  TextBuffer() = default;
  TextBuffer(TextBuffer&& other) noexcept
      : begin_(std::exchange(other.begin_, nullptr)),
        end_(std::exchange(other.end_, nullptr)),
        limit_(std::exchange(other.limit_, nullptr)) {}
  TextBuffer& operator=(TextBuffer&& other) noexcept {
    std::swap(begin_, other.begin_);
    std::swap(end_, other.end_);
    std::swap(limit_, other.limit_);
    return *this;
  }
  ~TextBuffer();

  std::string_view View() const { return {begin_, Size()}; }
  std::size_t Size() const { return static_cast<std::size_t>(end_ - begin_); }
  void Clear() { end_ = begin_; }
  /// Drops what follows the first `size` bytes.
  void CutTo(std::size_t size) { end_ = begin_ + size; }

  /// Makes room for `count` more bytes.
  /// @throws std::bad_alloc
  void Reserve(std::size_t count) {
    if (static_cast<std::size_t>(limit_ - end_) < count) Grow(count);
  }
  void Put(char byte) {
    Reserve(1);
    PutUnsafe(byte);
  }
  void Append(std::string_view text) {
    Reserve(text.size());
    AppendUnsafe(text);
  }
  /// Does not check for room: the caller has reserved it.
  void PutUnsafe(char byte) { *end_++ = byte; }
  void AppendUnsafe(std::string_view text) { end_ = std::copy(text.begin(), text.end(), end_); }
  void Flush() {}

  /// The end of the text, where `room` bytes can be written.
  char* Tail(std::size_t room) {
    Reserve(room);
    return end_;
  }
  /// Sets the end of the text, after the last byte written at `Tail`.
  void EndAt(char* end) { end_ = end; }

 private:
  void Grow(std::size_t count);

  char* begin_ = nullptr;
  char* end_ = nullptr;
  char* limit_ = nullptr;
};

// rapidjson's writers call these.
inline void PutReserve(TextBuffer& buffer, std::size_t count) { buffer.Reserve(count); }
inline void PutUnsafe(TextBuffer& buffer, char byte) { buffer.PutUnsafe(byte); }

}  // namespace Data::impl
