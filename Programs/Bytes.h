#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "System.h"

namespace program {

/// The bytes of a file, or of standard input for "-".
class Bytes {
 public:
  /// @throws layerdata::Error `Cannot read "PATH": ` and the reason
  explicit Bytes(const std::string& path);

  std::string_view View() const { return isMapped_ ? mapped_.View() : std::string_view(read_); }
  /// Whether the bytes stay in the file, which is a regular one.
  bool IsMapped() const { return isMapped_; }
  /// Gives back the memory of what the file still holds; it is read again when it is used.
  void Forget() const { mapped_.Forget(); }

 private:
  MappedFile mapped_;
  std::string read_;
  bool isMapped_ = false;
};

/// How messages call a file: its path, or "standard input".
std::string DisplayName(const std::string& path);

/// Where the first byte stands that belongs to no UTF-8; npos for valid UTF-8.
std::size_t FindInvalidUtf8(std::string_view bytes);

/// The number of the line, counted from 1, in which a byte stands.
std::uint64_t LineOf(std::string_view bytes, std::size_t position);

}  // namespace program
