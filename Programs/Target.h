#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace program {

/// Where a result goes: a file, or standard output for "-". Whether it can be written is checked
/// before the work begins.
class Target {
 public:
  /// @throws layerdata::Error `Cannot write "PATH": ` and the reason
  explicit Target(std::string path);

  bool IsStandardOutput() const { return path_ == "-"; }
  const std::string& Path() const { return path_; }

  /// Calls `write` with a path that it can write to: of standard output, or of the file.
  /// @return whether it did: not every system has a path of standard output
  bool WriteByPath(const std::function<void(const std::string& path)>& write) const;
  /// Writes a whole text. A file is written beside its place and takes it when it is complete.
  void Write(std::string_view text) const;

 private:
  void WriteBeside(std::string_view text) const;

  std::string path_;
};

}  // namespace program
