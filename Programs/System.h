#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What the program needs of the system beyond the standard library.
namespace program {

/// Prepares the standard streams for bytes and UTF-8.
void PrepareStreams();

/// The arguments as UTF-8, without the name of the program.
std::vector<std::string> Arguments(int argc, char** argv);

/// Opens a file for reading or writing ("rb", "wb"); null with `errno` if it cannot.
/// @param path  UTF-8
std::FILE* OpenFile(const std::string& path, const char* mode);

/// A regular file as memory, into which the system reads what is used. If somebody makes the file
/// shorter meanwhile, the program says so and ends.
class MappedFile {
 public:
  MappedFile() noexcept = default;
  /// Empty if the file cannot be mapped.
  explicit MappedFile(std::FILE* file);
  MappedFile(MappedFile&& other) noexcept : view_(std::exchange(other.view_, {})) {}
  MappedFile& operator=(MappedFile&& other) noexcept {
    std::swap(view_, other.view_);
    return *this;
  }
  ~MappedFile();

  std::string_view View() const { return view_; }
  /// Gives the memory back; what is used afterwards is read again.
  void Forget() const;

 private:
  std::string_view view_;
};

/// Calls `write` with the path of a file that stands for standard output: what is written to it
/// goes there at once.
/// @return 0, or why standard output could not be written: an `errno`
/// @throws what `write` throws
int WriteThrough(const std::function<void(const std::string& path)>& write);
/// Whether the system has paths for `WriteThrough`.
bool CanWriteThrough();

bool IsTerminal(std::FILE* stream);
/// The columns of the terminal at standard output; 80 if it is none.
std::size_t TerminalWidth();

}  // namespace program
