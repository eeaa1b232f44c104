#include "Text/MultiByteStringImpl.h"

#include <memory>
#include <stdexcept>

#include "Core/ImplementationOf.h"
#include "Platform/CodePages.h"
#include "Text/TextOrder.h"

namespace Data::impl {

namespace {

constexpr std::uint32_t kUtf8CodePage = 65001;

/// Texts of up to this many units are converted without a heap block.
constexpr std::size_t kShortLength = 256;

template <class Unit>
void CheckLength(std::uint64_t length) {
  if (length >= PTRDIFF_MAX / sizeof(Unit)) throw std::length_error("vector too long");
}

}  // namespace

Core::Ptr<MultiByteStringImpl> MultiByteStringImpl::WithRoomFor(std::size_t length,
                                                                Core::ObjectPool* pool) {
  CheckLength<char>(length);
  auto* object = new (TextBehind{length + 1, pool}) MultiByteStringImpl(length + 1);
  object->buffer_ = object->TextBehindObject();
  return Core::Ptr<MultiByteStringImpl>::Adopt(object);
}

Core::Ptr<MultiByteStringImpl> MultiByteStringImpl::FromUtf8(std::string_view text,
                                                             Core::ObjectPool* pool) {
  const auto copy = [text](char* to) {
    if (!text.empty()) std::memcpy(to, text.data(), text.size());
    return text.size();
  };
  return FromUtf8(text.size(), copy, pool);
}

void MultiByteStringImpl::FreeOwnBuffer() {
  if (buffer_ != TextBehindObject()) delete[] buffer_;
}

void MultiByteStringImpl::Adopt(std::unique_ptr<char[]> buffer, std::size_t capacity) {
  FreeOwnBuffer();
  buffer_ = buffer.release();
  capacity_ = capacity;
}

/// The text may lie in this very string, so that the old buffer stays until it
/// has been copied.
template <class Unit>
void MultiByteStringImpl::Store(const Unit* text, std::uint64_t length, Kind kind) {
  if (length != 0) Core::CheckArgument(text);
  CheckLength<Unit>(length);
  const std::size_t bytes = length * sizeof(Unit), size = bytes + sizeof(Unit);
  if (size <= capacity_) {
    if (!buffer_) buffer_ = TextBehindObject();
    if (bytes != 0) std::memmove(buffer_, text, bytes);
  } else {
    auto fresh = std::make_unique_for_overwrite<char[]>(size);
    if (bytes != 0) std::memcpy(fresh.get(), text, bytes);
    Adopt(std::move(fresh), size);
  }
  Finish<Unit>(length, kind);
}

/// Stores what `convert` writes: at most `maxLength` units.
template <class Unit, class Conversion>
void MultiByteStringImpl::StoreConverted(std::size_t maxLength, Kind kind, Conversion convert) {
  if (maxLength <= kShortLength) {
    Unit text[kShortLength];
    return Store(text, convert(text), kind);
  }
  const std::size_t maxSize = (maxLength + 1) * sizeof(Unit);
  auto fresh = std::make_unique_for_overwrite<char[]>(maxSize);
  auto* text = reinterpret_cast<Unit*>(fresh.get());
  const std::size_t length = convert(text);
  // The bound may be thrice what it took; such a buffer is not worth keeping.
  if (length < maxLength / 4 * 3) return Store(text, length, kind);
  Adopt(std::move(fresh), maxSize);
  Finish<Unit>(length, kind);
}

void MultiByteStringImpl::SetWide(const char16_t* text, std::uint64_t length) {
  Store(text, length, Kind::Wide);
}

void MultiByteStringImpl::SetMultiByte(const char* text, std::uint64_t length,
                                       std::uint32_t codePage) {
  Store(text, length, Kind::MultiByte);
  codePage_ = codePage;
}

void MultiByteStringImpl::SetUtf8(const char* text, std::uint64_t length) {
  Store(text, length, Kind::Utf8);
}

void* MultiByteStringImpl::Clear() {
  size_ = 0;
  kind_ = Kind::Empty;
  return buffer_;
}

template <class Unit>
std::basic_string_view<Unit> MultiByteStringImpl::TextToFirstZero() const {
  return UpToFirstZero<Unit>({reinterpret_cast<const Unit*>(buffer_), size_ / sizeof(Unit) - 1});
}

void MultiByteStringImpl::ConvertToWide() {
  const auto text = TextToFirstZero<char>();
  const std::uint32_t codePage = kind_ == Kind::MultiByte ? codePage_ : kUtf8CodePage;
  StoreConverted<char16_t>(Platform::MaxWideLength(text.size()), Kind::Wide,
                           [&](char16_t* to) { return Platform::ToWide(codePage, text, to); });
}

void MultiByteStringImpl::ConvertFromWide(std::uint32_t codePage) {
  const auto text = TextToFirstZero<char16_t>();
  const Kind kind = codePage == kUtf8CodePage ? Kind::Utf8 : Kind::MultiByte;
  StoreConverted<char>(Platform::MaxByteLength(codePage, text.size()), kind,
                       [&](char* to) { return Platform::ToMultiByte(codePage, text, to); });
  if (kind == Kind::MultiByte) codePage_ = codePage;
}

const char* MultiByteStringImpl::GetMultiByte(std::uint32_t codePage) {
  if (kind_ == Kind::Empty) return "";
  if (kind_ == Kind::MultiByte) return buffer_;
  if (kind_ == Kind::Utf8) ConvertToWide();
  ConvertFromWide(codePage);
  return buffer_;
}

const char* MultiByteStringImpl::GetUtf8() {
  if (kind_ == Kind::Empty) return "";
  if (kind_ == Kind::MultiByte) ConvertToWide();
  if (kind_ == Kind::Wide) ConvertFromWide(kUtf8CodePage);
  return buffer_;
}

const char16_t* MultiByteStringImpl::GetWide() {
  if (kind_ == Kind::Empty) return u"";
  if (kind_ != Kind::Wide) ConvertToWide();
  return reinterpret_cast<const char16_t*>(buffer_);
}

std::uint64_t MultiByteStringImpl::GetLength() {
  if (kind_ == Kind::Empty) return 0;
  return kind_ == Kind::Wide ? size_ / sizeof(char16_t) - 1 : size_ - 1;
}

std::int32_t MultiByteStringImpl::Compare(IString* other, bool caseSensitive) {
  if (!other) return -1;
  if (!Core::ImplementationOf<MultiByteStringImpl>(other)) Core::CheckInterface(other);
  switch (kind_) {
    case Kind::Empty:
      return static_cast<std::int32_t>(0 - static_cast<std::uint32_t>(other->GetLength()));
    case Kind::Wide: {
      const char16_t* text = other->GetWide();
      return CompareTexts<char16_t>({GetWide(), GetLength()}, {text, other->GetLength()},
                                    caseSensitive);
    }
    case Kind::MultiByte: {
      const char* text = other->GetMultiByte(codePage_);
      return CompareTexts<char>({buffer_, GetLength()}, {text, other->GetLength()}, caseSensitive);
    }
    case Kind::Utf8: {
      const char* text = other->GetUtf8();
      return CompareTexts<char>({buffer_, GetLength()}, {text, other->GetLength()}, caseSensitive);
    }
  }
  return -1;
}

}  // namespace Data::impl
