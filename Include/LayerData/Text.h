#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "LayerData/Handle.h"

namespace layerdata {

/// An immutable UTF-8 text. Copies share it, so the large results of the library are not copied. It
/// converts to std::string_view, and from and to UTF-16 and the code pages of Windows, whose
/// numbers layerdata.h lists at `ld_string`.
class Text {
 public:
  /// "", without an object.
  Text() noexcept = default;
  /// A copy, which ends at the first zero byte.
  explicit Text(std::string_view utf8) {
    detail::Handle<ld_string> string = New();
    detail::Call(ld_string_set_utf8, string.Get(), utf8.data(), std::uint64_t{utf8.size()});
    *this = Text(std::move(string));
  }
  /// Shares a string of the C interface, which nobody may change afterwards.
  explicit Text(detail::Handle<ld_string> string) : string_(std::move(string)) {
    const auto* utf8 = detail::Ask<const char*>(ld_string_get_utf8, string_.Get());
    view_ = {utf8, detail::Ask<std::uint64_t>(ld_string_get_length, string_.Get())};
  }
  Text(const Text&) = default;
  Text(Text&& other) noexcept
      : string_(std::move(other.string_)), view_(std::exchange(other.view_, {})) {}
  Text& operator=(Text other) noexcept {
    std::swap(string_, other.string_);
    std::swap(view_, other.view_);
    return *this;
  }
  ~Text() = default;

  /// Decodes UTF-16.
  static Text FromUtf16(std::u16string_view text) { return Text(Wide(text)); }
  /// Decodes text of a code page, such as 1252. An unknown code page gives the empty text.
  static Text FromCodePage(std::string_view bytes, std::uint32_t codePage) {
    detail::Handle<ld_string> string = New();
    detail::Call(ld_string_set_multi_byte, string.Get(), bytes.data(), std::uint64_t{bytes.size()},
                 codePage);
    return Text(std::move(string));
  }

  /// Encodes the text in UTF-16.
  std::u16string ToUtf16() const {
    const detail::Handle<ld_string> string = New();
    detail::Call(ld_string_set_utf8, string.Get(), view_.data(), std::uint64_t{view_.size()});
    const auto* text = detail::Ask<const std::uint16_t*>(ld_string_get_wide, string.Get());
    const auto length = detail::Ask<std::uint64_t>(ld_string_get_length, string.Get());
    return {reinterpret_cast<const char16_t*>(text), length};
  }
  /// Encodes the text in a code page. What the code page lacks becomes a similar character or its
  /// replacement character.
  std::string ToCodePage(std::uint32_t codePage) const {
    const detail::Handle<ld_string> string = Wide(ToUtf16());
    const auto* bytes = detail::Ask<const char*>(ld_string_get_multi_byte, string.Get(), codePage);
    return {bytes, detail::Ask<std::uint64_t>(ld_string_get_length, string.Get())};
  }

  /// The text, valid as long as this object or a copy.
  std::string_view View() const noexcept { return view_; }
  /// As `View`.
  operator std::string_view() const noexcept { return view_; }
  /// A copy of the text.
  std::string ToString() const { return std::string(view_); }
  /// Zero-terminated.
  const char* CStr() const noexcept { return view_.data() ? view_.data() : ""; }
  /// The length in bytes.
  std::size_t Size() const noexcept { return view_.size(); }
  /// Whether the length is 0.
  bool IsEmpty() const noexcept { return view_.empty(); }

  friend bool operator==(const Text& left, const Text& right) noexcept {
    return left.view_ == right.view_;
  }
  friend auto operator<=>(const Text& left, const Text& right) noexcept {
    return left.view_ <=> right.view_;
  }
  friend std::ostream& operator<<(std::ostream& out, const Text& text) { return out << text.view_; }

 private:
  static detail::Handle<ld_string> New() { return detail::Receive<ld_string>(ld_create_string); }
  static detail::Handle<ld_string> Wide(std::u16string_view text) {
    detail::Handle<ld_string> string = New();
    detail::Call(ld_string_set_wide, string.Get(),
                 reinterpret_cast<const std::uint16_t*>(text.data()), std::uint64_t{text.size()});
    return string;
  }

  detail::Handle<ld_string> string_;
  std::string_view view_;
};

}  // namespace layerdata
