#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>

#include "Core/ObjectBase.h"
#include "Core/ObjectPool.h"
#include "Core/Ptr.h"
#include "Data/Interfaces/IString.h"

namespace Data::impl {

/// The implementation of `IString`. Tables hold millions of these, so an object
/// and its first text share one heap block: the text is stored right after the
/// object until a longer one needs a separate buffer.
///
/// An operation that runs out of memory leaves the string as it was: new text is
/// complete before any member changes.
struct MultiByteStringImpl final : Core::ObjectBase<Interfaces::IString> {
  MultiByteStringImpl() : MultiByteStringImpl(kSmallTextBytes) {}
  ~MultiByteStringImpl() override { FreeBuffer(); }

  /// A new UTF-8 text in one heap block.
  /// @param pool  for many texts created together; null for the heap
  static Core::Ptr<MultiByteStringImpl> FromUtf8(std::string_view text,
                                                 Core::ObjectPool* pool = nullptr);
  /// A new UTF-8 text that `fill` writes directly into the string's memory.
  /// @param capacity  maximum size of the text in bytes
  /// @param fill      receives the address of the first byte, returns the number
  ///                  of bytes written
  template <class Fill>
  static Core::Ptr<MultiByteStringImpl> FromUtf8(std::size_t capacity, Fill&& fill,
                                                 Core::ObjectPool* pool = nullptr);
  /// A new UTF-8 text in a buffer that it takes over.
  /// @param size      of the text, without the terminator, which is written here
  /// @param capacity  of the buffer, above the size
  static Core::Ptr<MultiByteStringImpl> FromUtf8Buffer(std::unique_ptr<char[]> text,
                                                       std::size_t size, std::size_t capacity);
  /// Like `FromUtf8`, for a secret: the string overwrites all memory that held its text before it
  /// frees or reuses it.
  template <class Fill>
  static Core::Ptr<MultiByteStringImpl> SecretFromUtf8(std::size_t capacity, Fill&& fill);

  /// The text as UTF-8 without converting this object: the object itself if it holds
  /// UTF-8, otherwise a converted copy.
  Core::Ptr<MultiByteStringImpl> AsUtf8();
  /// The text if it is stored as UTF-8. Several threads may read it: the object does not change.
  std::optional<std::string_view> StoredUtf8() const {
    if (kind_ == Kind::Utf8) return std::string_view(buffer_, size_ - 1);
    if (kind_ == Kind::Empty) return std::string_view();
    return std::nullopt;
  }

  void SetWide(const char16_t* text, std::uint64_t length) override;
  void SetMultiByte(const char* text, std::uint64_t length, std::uint32_t codePage) override;
  void SetUtf8(const char* text, std::uint64_t length) override;
  void* Clear() override;
  const char* GetMultiByte(std::uint32_t codePage) override;
  const char* GetUtf8() override;
  const char16_t* GetWide() override;
  const void* GetData() override { return buffer_; }
  std::uint64_t GetLength() override;
  std::uint64_t GetSize() override { return size_; }
  std::int32_t Compare(IString* other, bool caseSensitive) override;

  static void* operator new(std::size_t size) { return ::operator new(size + kSmallTextBytes); }
  static void operator delete(void* object) { Core::ObjectPool::Free(object); }

 private:
  enum class Kind : std::uint8_t { Empty = 0, MultiByte = 1, Wide = 2, Utf8 = 3 };

  /// Room for text after an object that is created without one.
  static constexpr std::size_t kSmallTextBytes = 32;

  struct TextBehind {
    std::size_t bytes;
    Core::ObjectPool* pool;
  };
  static void* operator new(std::size_t size, TextBehind text) {
    return Core::ObjectPool::Allocate(text.pool, size + text.bytes);
  }
  static void operator delete(void* object, TextBehind) { Core::ObjectPool::Free(object); }

  explicit MultiByteStringImpl(std::size_t bytesBehind) : capacity_(bytesBehind) {}

  static Core::Ptr<MultiByteStringImpl> WithRoomFor(std::size_t length, Core::ObjectPool* pool);

  template <class Unit>
  class Scratch;

  char* TextBehindObject() { return reinterpret_cast<char*>(this + 1); }
  void WipeSecretFrom(std::size_t offset);
  void FreeBuffer();
  void Adopt(std::unique_ptr<char[]> buffer, std::size_t capacity);
  template <class Unit>
  void Store(const Unit* text, std::uint64_t length, Kind kind);
  template <class Unit, class Conversion>
  void StoreConverted(std::size_t maxLength, Kind kind, Conversion convert);
  void StoreFromWide(std::u16string_view text, std::uint32_t codePage);
  template <class Unit>
  void Finish(std::size_t length, Kind kind);
  std::uint32_t SourceCodePage() const;
  void ConvertToWide();
  void ConvertBytes(std::uint32_t codePage);
  template <class Unit>
  std::basic_string_view<Unit> StoredText() const;
  std::int32_t CompareWith(IString& other, bool caseSensitive);

  // These come first: they fit in the padding after the reference count.
  Kind kind_ = Kind::Empty;
  bool isSecret_ = false;
  std::uint32_t codePage_ = 0;
  char* buffer_ = nullptr;  // null until the first text
  std::size_t size_ = 0;    // in bytes, terminator included
  std::size_t capacity_;
};

template <class Fill>
Core::Ptr<MultiByteStringImpl> MultiByteStringImpl::FromUtf8(std::size_t capacity, Fill&& fill,
                                                             Core::ObjectPool* pool) {
  auto string = WithRoomFor(capacity, pool);
  string->Finish<char>(fill(string->buffer_), Kind::Utf8);
  return string;
}

template <class Fill>
Core::Ptr<MultiByteStringImpl> MultiByteStringImpl::SecretFromUtf8(std::size_t capacity,
                                                                   Fill&& fill) {
  auto string = WithRoomFor(capacity, nullptr);
  string->isSecret_ = true;
  string->Finish<char>(fill(string->buffer_), Kind::Utf8);
  return string;
}

template <class Unit>
void MultiByteStringImpl::Finish(std::size_t length, Kind kind) {
  constexpr Unit kTerminator = 0;
  std::memcpy(buffer_ + length * sizeof(Unit), &kTerminator, sizeof(Unit));
  size_ = (length + 1) * sizeof(Unit);
  kind_ = kind;
}

}  // namespace Data::impl
