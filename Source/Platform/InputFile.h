#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace Data::Platform {

/// A file that is read from its beginning to its end.
class InputFile {
 public:
  /// @param path  UTF-8
  /// @throws std::runtime_error `Cannot read "%s": ` and the system's reason, also for a directory
  explicit InputFile(const char* path);
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  /// In bytes; 0 if the system does not know it. The file may hold more or less.
  std::uint64_t Size() const { return size_; }
  /// Reads the next bytes.
  /// @return the number of bytes read, 0 only at the end of the file
  /// @throws as the constructor
  std::size_t Read(char* out, std::size_t count);

 private:
  [[noreturn]] void Fail(int reason) const;

  std::string path_;
  /// The system's handle or file descriptor.
  std::intptr_t file_ = -1;
  std::uint64_t size_ = 0;
};

}  // namespace Data::Platform
