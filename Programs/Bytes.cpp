#include "Bytes.h"

#include <LayerData/Error.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include "System.h"

namespace program {

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

[[noreturn]] void FailToRead(const std::string& path, int reason) {
  const std::string name = path == "-" ? "standard input" : '"' + path + '"';
  throw layerdata::Error("Cannot read " + name + ": " + std::generic_category().message(reason));
}

std::string ReadAll(std::FILE* file, std::size_t expected, const std::string& path) {
  constexpr std::size_t kLeast = std::size_t{1} << 16;
  std::string bytes;
  std::size_t size = 0;
  // A byte more than expected shows that the file ends there.
  for (std::size_t room = std::max(expected + 1, kLeast);; room *= 2) {
    bytes.resize(room);
    size += std::fread(bytes.data() + size, 1, room - size, file);
    if (size < room) break;
  }
  if (std::ferror(file)) FailToRead(path, errno);
  bytes.resize(size);
  return bytes;
}

/// The length of the character that begins here; 0 if none does.
std::size_t LengthOfCharacter(const unsigned char* at, const unsigned char* end) {
  const unsigned char first = *at;
  if (first < 0x80) return 1;
  const std::size_t length = first >= 0xC2 && first < 0xE0   ? 2
                             : first >= 0xE0 && first < 0xF0 ? 3
                             : first >= 0xF0 && first < 0xF5 ? 4
                                                             : 0;
  if (length == 0 || static_cast<std::size_t>(end - at) < length) return 0;
  // The second byte excludes what is too large, a surrogate, or has a shorter form.
  const unsigned char least = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
  const unsigned char most = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
  if (at[1] < least || at[1] > most) return 0;
  for (std::size_t i = 2; i < length; ++i)
    if ((at[i] & 0xC0) != 0x80) return 0;
  return length;
}

}  // namespace

Bytes::Bytes(const std::string& path) {
  if (path == "-") {
    read_ = ReadAll(stdin, 0, path);
    return;
  }
  const std::filesystem::path file(std::u8string(path.begin(), path.end()));
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) FailToRead(path, EISDIR);
  const std::unique_ptr<std::FILE, CloseFile> stream(OpenFile(path, "rb"));
  if (!stream) FailToRead(path, errno);
  mapped_ = MappedFile(stream.get());
  isMapped_ = !mapped_.View().empty();
  if (isMapped_) return;
  const auto size = std::filesystem::file_size(file, ignored);
  read_ = ReadAll(stream.get(), ignored ? 0 : static_cast<std::size_t>(size), path);
}

std::string DisplayName(const std::string& path) { return path == "-" ? "standard input" : path; }

std::size_t FindInvalidUtf8(std::string_view bytes) {
  const auto* const begin = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto* const end = begin + bytes.size();
  for (const auto* at = begin; at != end;) {
    std::uint64_t block = 0;
    if (end - at >= 8) std::memcpy(&block, at, 8);
    if (end - at >= 8 && (block & 0x8080808080808080) == 0) {
      at += 8;
      continue;
    }
    const std::size_t length = LengthOfCharacter(at, end);
    if (length == 0) return static_cast<std::size_t>(at - begin);
    at += length;
  }
  return std::string_view::npos;
}

std::uint64_t LineOf(std::string_view bytes, std::size_t position) {
  const std::string_view before = bytes.substr(0, position);
  return 1 + static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n'));
}

}  // namespace program
