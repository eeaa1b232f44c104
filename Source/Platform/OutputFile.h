#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Data::Platform {

/// A file that takes the place of another once it is complete. Until then it stands beside it under
/// a name of its own; a symbolic link is followed. What exists and is no file, such as a pipe, is
/// written directly.
class OutputFile {
 public:
  /// @param path  UTF-8
  /// @throws std::runtime_error `Cannot write "%s": ` and the system's reason, also for a directory
  ///         and for a file that may not be written
  explicit OutputFile(const char* path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  /// Removes the file unless `Commit` was called.
  ~OutputFile();

  /// @throws as the constructor
  void Write(std::string_view bytes);
  /// Flushes the file to the disk and gives it its place and the permissions of the file that it
  /// replaces.
  /// @throws as the constructor
  void Commit();

 private:
  void OpenBeside();
  [[noreturn]] void Fail(int reason) const;

  static constexpr std::intptr_t kClosed = -1;

  std::string path_;       ///< as given
  std::string target_;     ///< the file itself, without links
  std::string temporary_;  ///< empty if the file is written directly, or has its place
  bool replaces_ = false;  ///< whether there is a file at the target
  std::intptr_t file_ = kClosed;
};

/// A name that no other file has.
std::string TemporaryName();

}  // namespace Data::Platform
