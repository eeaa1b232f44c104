#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace Data::c {

/// The bytes that a caller gives, in memory or as a file.
class InputBytes {
 public:
  /// The caller's memory, which is not copied.
  /// @throws std::runtime_error "Pointer of void must not be null!", "Size cannot be 0. We don't
  ///         call strlen internally because data might not contain null terminator!", "The length
  ///         is too large!"
  InputBytes(const void* data, std::uint64_t size);
  /// The content of a file.
  /// @param path  UTF-8
  /// @throws std::runtime_error "Pointer of char must not be null!", `Cannot read "%s": ` and the
  ///         system's reason
  explicit InputBytes(const char* path);

  std::string_view View() const { return view_; }
  /// Whether a zero byte follows the bytes.
  bool IsTerminated() const { return content_ != nullptr; }

 private:
  void Grow(std::size_t capacity);

  std::unique_ptr<char[]> content_;  ///< of a file
  std::string_view view_;
};

/// Bytes as UTF-8. They must outlive the text.
class InputText {
 public:
  /// @param codePage  0: as the byte-order mark says, UTF-8 without one; 1200: UTF-16LE; 1201:
  ///                  UTF-16BE; or a code page. UTF-8 is not validated.
  /// @throws std::runtime_error "The code page %d is unknown!"
  InputText(const InputBytes& bytes, std::uint32_t codePage);
  InputText(const InputText&) = delete;
  InputText& operator=(const InputText&) = delete;

  /// A byte-order mark is still there, as UTF-8.
  std::string_view View() const { return isConverted_ ? std::string_view(converted_) : bytes_; }
  /// Copies the text unless a zero byte follows it already.
  void Terminate();
  /// The one that was used, never 0.
  std::uint32_t CodePage() const { return codePage_; }

 private:
  std::string_view bytes_;
  bool isTerminated_;
  std::uint32_t codePage_;
  bool isConverted_ = false;
  std::string converted_;
};

}  // namespace Data::c
