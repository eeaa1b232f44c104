#include "C/InputText.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "C/Call.h"
#include "Core/StringFormat.h"
#include "Platform/CodePages.h"
#include "Platform/InputFile.h"

namespace Data::c {

namespace {

constexpr std::uint32_t kUtf16 = 1200, kUtf16BigEndian = 1201, kUtf8 = 65001;
constexpr char16_t kReplacement = 0xFFFD;

/// Longer texts are converted piece by piece, so that their UTF-16 form takes little memory.
constexpr std::size_t kPiece = std::size_t{1} << 18;

std::uint32_t CodePageOf(std::string_view bytes) {
  if (bytes.starts_with("\xFF\xFE")) return kUtf16;
  if (bytes.starts_with("\xFE\xFF")) return kUtf16BigEndian;
  return kUtf8;
}

void AppendUtf8(std::u16string_view wide, std::string& utf8) {
  const std::size_t before = utf8.size();
  const std::size_t most = Platform::MaxByteLength(kUtf8, wide.size());
  if (utf8.capacity() - before < most) utf8.reserve(std::max(before + most, 2 * before));
  utf8.resize(before + most);
  utf8.resize(before + Platform::ToMultiByte(kUtf8, wide, utf8.data() + before));
}

char16_t UnitAt(std::string_view bytes, std::size_t index, bool isBigEndian) {
  const auto first = static_cast<unsigned char>(bytes[2 * index]);
  const auto second = static_cast<unsigned char>(bytes[2 * index + 1]);
  return static_cast<char16_t>(isBigEndian ? first << 8 | second : second << 8 | first);
}

bool IsHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }

/// A byte behind the last whole unit becomes a replacement character.
std::string FromUtf16(std::string_view bytes, bool isBigEndian) {
  std::string utf8;
  std::u16string piece;
  const std::size_t unitCount = bytes.size() / 2;
  for (std::size_t done = 0; done < unitCount;) {
    std::size_t count = std::min(kPiece, unitCount - done);
    if (done + count < unitCount && IsHighSurrogate(UnitAt(bytes, done + count - 1, isBigEndian)))
      --count;
    piece.resize(count);
    for (std::size_t i = 0; i < count; ++i) piece[i] = UnitAt(bytes, done + i, isBigEndian);
    AppendUtf8(piece, utf8);
    done += count;
  }
  if (bytes.size() % 2 != 0) AppendUtf8({&kReplacement, 1}, utf8);
  return utf8;
}

/// In all pages a line feed ends a character, also a malformed one, so pieces are cut there.
std::string FromCodePage(std::string_view bytes, std::uint32_t codePage) {
  if (Platform::MaxByteLength(codePage, 1) == 0)
    throw std::runtime_error(
        Core::StringFormat("The code page %d is unknown!", static_cast<int>(codePage)));
  std::string utf8;
  std::u16string piece;
  while (!bytes.empty()) {
    const std::size_t lineEnd = bytes.find('\n', std::min(kPiece, bytes.size() - 1));
    const std::string_view cut = bytes.substr(0, std::min(lineEnd, bytes.size() - 1) + 1);
    piece.resize(Platform::MaxWideLength(cut.size()));
    piece.resize(Platform::ToWide(codePage, cut, piece.data()));
    AppendUtf8(piece, utf8);
    bytes.remove_prefix(cut.size());
  }
  return utf8;
}

}  // namespace

InputBytes::InputBytes(const void* data, std::uint64_t size)
    : view_(static_cast<const char*>(data), static_cast<std::size_t>(size)) {
  Core::CheckArgument(data);
  CheckLength(size);
  if (size == 0)
    throw std::runtime_error(
        "Size cannot be 0. We don't call strlen internally because data might not contain null "
        "terminator!");
}

InputBytes::InputBytes(const char* path) {
  Core::CheckArgument(path);
  constexpr std::size_t kUnknownSize = std::size_t{1} << 16;
  Platform::InputFile file(path);
  std::size_t capacity = file.Size() == 0 ? kUnknownSize : static_cast<std::size_t>(file.Size());
  // Room for one byte more, which shows the end of the file, and for the terminator.
  capacity += 2;
  Grow(capacity);
  std::size_t size = 0;
  while (const std::size_t got = file.Read(content_.get() + size, capacity - size - 1)) {
    size += got;
    view_ = {content_.get(), size};
    if (size + 1 == capacity) Grow(capacity *= 2);
  }
  content_[size] = '\0';
  view_ = {content_.get(), size};
}

void InputBytes::Grow(std::size_t capacity) {
  auto larger = std::make_unique_for_overwrite<char[]>(capacity);
  std::copy(view_.begin(), view_.end(), larger.get());
  content_ = std::move(larger);
}

InputText::InputText(const InputBytes& bytes, std::uint32_t codePage)
    : bytes_(bytes.View()),
      isTerminated_(bytes.IsTerminated()),
      codePage_(codePage != 0 ? codePage : CodePageOf(bytes_)) {
  if (codePage_ == kUtf8) return;
  const bool isBigEndian = codePage_ == kUtf16BigEndian;
  converted_ = codePage_ == kUtf16 || isBigEndian ? FromUtf16(bytes_, isBigEndian)
                                                  : FromCodePage(bytes_, codePage_);
  isConverted_ = true;
}

void InputText::Terminate() {
  if (isTerminated_ || isConverted_) return;
  converted_ = bytes_;
  isConverted_ = true;
}

}  // namespace Data::c
