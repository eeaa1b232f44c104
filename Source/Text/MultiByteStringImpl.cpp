#include "Text/MultiByteStringImpl.h"

#include <memory>
#include <span>
#include <stdexcept>

#include "Core/ExactCast.h"
#include "Platform/CodePages.h"
#include "Platform/MemoryProtection.h"
#include "Text/TextOrder.h"

namespace Data::impl {

namespace {

constexpr std::uint32_t kUtf8CodePage = 65001;

/// Texts of up to this many units are converted on the stack.
constexpr std::size_t kShortLength = 256;

template <class Unit>
void CheckLength(std::uint64_t length) {
  if (length >= PTRDIFF_MAX / sizeof(Unit)) throw std::length_error("vector too long");
}

void Wipe(void* memory, std::size_t size) {
  Platform::WipeMemory({static_cast<std::uint8_t*>(memory), size});
}

/// The text that an operation of `string` just returned; null counts as empty.
template <class Unit>
std::basic_string_view<Unit> TextOf(Interfaces::IString& string, const Unit* text) {
  if (!text) return {};
  return {text, static_cast<std::size_t>(string.GetLength())};
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

Core::Ptr<MultiByteStringImpl> MultiByteStringImpl::FromUtf8Buffer(std::unique_ptr<char[]> text,
                                                                   std::size_t size,
                                                                   std::size_t capacity) {
  auto string = Core::MakePtr<MultiByteStringImpl>();
  string->Adopt(std::move(text), capacity);
  string->Finish<char>(size, Kind::Utf8);
  return string;
}

Core::Ptr<MultiByteStringImpl> MultiByteStringImpl::AsUtf8() {
  if (kind_ == Kind::Empty || kind_ == Kind::Utf8) return this;
  auto copy = Core::MakePtr<MultiByteStringImpl>();
  copy->isSecret_ = isSecret_;
  if (kind_ == Kind::Wide) {
    copy->SetWide(reinterpret_cast<const char16_t*>(buffer_), GetLength());
  } else {
    copy->SetMultiByte(buffer_, GetLength(), codePage_);
  }
  copy->GetUtf8();
  return copy;
}

/// Room for a converted text and its terminator: on the stack if it is short.
template <class Unit>
class MultiByteStringImpl::Scratch {
 public:
  Scratch(std::size_t maxLength, bool isSecret)
      : capacity_((maxLength + 1) * sizeof(Unit)), isSecret_(isSecret) {
    if (maxLength > kShortLength) long_ = std::make_unique_for_overwrite<char[]>(capacity_);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() {
    if (isSecret_ && Data()) Wipe(Data(), capacity_);
  }

  Unit* Data() { return capacity_ > sizeof short_ ? reinterpret_cast<Unit*>(long_.get()) : short_; }
  bool IsOnHeap() const { return long_ != nullptr; }
  std::size_t Capacity() const { return capacity_; }
  std::unique_ptr<char[]> Take() { return std::move(long_); }

 private:
  std::size_t capacity_;  // in bytes
  bool isSecret_;
  std::unique_ptr<char[]> long_;
  Unit short_[kShortLength + 1];
};

void MultiByteStringImpl::WipeSecretFrom(std::size_t offset) {
  if (isSecret_ && buffer_) Wipe(buffer_ + offset, capacity_ - offset);
}

void MultiByteStringImpl::FreeBuffer() {
  WipeSecretFrom(0);
  if (buffer_ != TextBehindObject()) delete[] buffer_;
}

void MultiByteStringImpl::Adopt(std::unique_ptr<char[]> buffer, std::size_t capacity) {
  FreeBuffer();
  buffer_ = buffer.release();
  capacity_ = capacity;
}

/// `text` may be a range of this string's own buffer, which is therefore freed only after the text
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
  WipeSecretFrom(size_);
}

/// Stores what `convert` writes: at most `maxLength` units.
template <class Unit, class Conversion>
void MultiByteStringImpl::StoreConverted(std::size_t maxLength, Kind kind, Conversion convert) {
  Scratch<Unit> scratch(maxLength, isSecret_);
  const std::size_t length = convert(scratch.Data());
  // The bound can be three times the size of the result; such a buffer is not kept.
  if (!scratch.IsOnHeap() || length < maxLength / 4 * 3) return Store(scratch.Data(), length, kind);
  Adopt(scratch.Take(), scratch.Capacity());
  Finish<Unit>(length, kind);
}

void MultiByteStringImpl::StoreFromWide(std::u16string_view text, std::uint32_t codePage) {
  text = UpToFirstZero(text);
  const Kind kind = codePage == kUtf8CodePage ? Kind::Utf8 : Kind::MultiByte;
  StoreConverted<char>(Platform::MaxByteLength(codePage, text.size()), kind,
                       [&](char* to) { return Platform::ToMultiByte(codePage, text, to); });
  if (kind == Kind::MultiByte) codePage_ = codePage;
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
  WipeSecretFrom(0);
  return buffer_;
}

template <class Unit>
std::basic_string_view<Unit> MultiByteStringImpl::StoredText() const {
  return {reinterpret_cast<const Unit*>(buffer_), size_ / sizeof(Unit) - 1};
}

/// The code page of a text that is stored as bytes.
std::uint32_t MultiByteStringImpl::SourceCodePage() const {
  return kind_ == Kind::MultiByte ? codePage_ : kUtf8CodePage;
}

void MultiByteStringImpl::ConvertToWide() {
  const auto text = UpToFirstZero(StoredText<char>());
  StoreConverted<char16_t>(Platform::MaxWideLength(text.size()), Kind::Wide, [&](char16_t* to) {
    return Platform::ToWide(SourceCodePage(), text, to);
  });
}

/// Converts bytes to bytes by way of UTF-16 that is not stored: if memory runs out in the second
/// step, the string must not be left half converted.
void MultiByteStringImpl::ConvertBytes(std::uint32_t codePage) {
  const auto text = UpToFirstZero(StoredText<char>());
  Scratch<char16_t> wide(Platform::MaxWideLength(text.size()), isSecret_);
  StoreFromWide({wide.Data(), Platform::ToWide(SourceCodePage(), text, wide.Data())}, codePage);
}

const char* MultiByteStringImpl::GetMultiByte(std::uint32_t codePage) {
  if (kind_ == Kind::Empty) return "";
  if (kind_ == Kind::Utf8) ConvertBytes(codePage);
  if (kind_ == Kind::Wide) StoreFromWide(StoredText<char16_t>(), codePage);
  return buffer_;
}

const char* MultiByteStringImpl::GetUtf8() {
  if (kind_ == Kind::Empty) return "";
  if (kind_ == Kind::MultiByte) ConvertBytes(kUtf8CodePage);
  if (kind_ == Kind::Wide) StoreFromWide(StoredText<char16_t>(), kUtf8CodePage);
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
  if (Core::ExactCast<MultiByteStringImpl>(other)) return CompareWith(*other, caseSensitive);
  Core::CheckInterface(other);
  // Reading the caller's own object may change this string or release it.
  const Core::Ptr<IString> self(this), held(other);
  return CompareWith(*other, caseSensitive);
}

/// Reads the other text first, since reading it may change this string.
std::int32_t MultiByteStringImpl::CompareWith(IString& other, bool caseSensitive) {
  switch (kind_) {
    case Kind::Empty:
      return static_cast<std::int32_t>(0 - static_cast<std::uint32_t>(other.GetLength()));
    case Kind::Wide: {
      const auto text = TextOf(other, other.GetWide());
      return CompareTexts(TextOf(*this, GetWide()), text, caseSensitive);
    }
    case Kind::MultiByte: {
      const std::uint32_t codePage = codePage_;
      const auto text = TextOf(other, other.GetMultiByte(codePage));
      return CompareTexts(TextOf(*this, GetMultiByte(codePage)), text, caseSensitive);
    }
    case Kind::Utf8: {
      const auto text = TextOf(other, other.GetUtf8());
      return CompareTexts(TextOf(*this, GetUtf8()), text, caseSensitive);
    }
  }
  return -1;
}

}  // namespace Data::impl
