#include "Target.h"

#include <LayerData/Error.h>
#include <LayerData/Handle.h>
#include <LayerData/Text.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "Console.h"
#include "System.h"

namespace fs = std::filesystem;

namespace program {

namespace {

[[noreturn]] void FailToWrite(const std::string& path, const std::string& reason) {
  throw layerdata::Error("Cannot write " + (path == "-" ? "standard output" : '"' + path + '"') +
                         ": " + reason);
}

std::string ReasonOf(int error) { return std::generic_category().message(error); }

fs::path PathOf(const std::string& utf8) { return std::u8string(utf8.begin(), utf8.end()); }

std::string Utf8Of(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

/// A file that does not outlive this object unless it takes the place of another.
class FileBeside {
 public:
  /// @param target  the file itself, not a link to it
  FileBeside(fs::path target, const std::string& path) : target_(std::move(target)), path_(path) {
    ld_uuid uuid;
    layerdata::detail::Call(ld_new_uuid, &uuid);
    const layerdata::Text name(layerdata::detail::Receive<ld_string>(
        ld_uuid_to_string, static_cast<const ld_uuid*>(&uuid)));
    beside_ = target_.parent_path() / PathOf("layerdata-" + name.ToString() + ".tmp");
    file_ = OpenFile(Utf8Of(beside_), "wb");
    if (!file_) FailToWrite(path_, ReasonOf(errno));
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;
  ~FileBeside() {
    if (file_) std::fclose(file_);
    std::error_code ignored;
    fs::remove(beside_, ignored);
  }

  void Write(std::string_view text) {
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), file_) == text.size();
    const bool isClosed = std::fclose(std::exchange(file_, nullptr)) == 0;
    if (!isWritten || !isClosed) FailToWrite(path_, ReasonOf(errno));
  }
  void TakePlace() {
    std::error_code problem;
    if (fs::exists(target_, problem))
      fs::permissions(beside_, fs::status(target_).permissions(), problem);
    fs::rename(beside_, target_, problem);
    if (problem) FailToWrite(path_, problem.message());
  }

 private:
  fs::path target_, beside_;
  std::string path_;
  std::FILE* file_ = nullptr;
};

/// Where links lead to.
fs::path WithoutLinks(fs::path path) {
  constexpr int kMostLinks = 40;
  std::error_code problem;
  for (int i = 0; i < kMostLinks && fs::is_symlink(path, problem); ++i)
    path = path.parent_path() / fs::read_symlink(path, problem);
  return path;
}

void WriteTo(std::FILE* stream, std::string_view text, const std::string& path) {
  if (std::fwrite(text.data(), 1, text.size(), stream) != text.size() || std::fflush(stream) != 0)
    FailToWrite(path, ReasonOf(errno));
}

/// Whether there is something that is no file, such as a pipe or a device.
bool IsDevice(const fs::path& path) {
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

}  // namespace

Target::Target(std::string path) : path_(std::move(path)) {
  if (IsStandardOutput() || IsDevice(PathOf(path_))) return;
  std::error_code ignored;
  if (fs::is_directory(PathOf(path_), ignored)) FailToWrite(path_, ReasonOf(EISDIR));
  if (fs::exists(PathOf(path_), ignored)) {
    std::FILE* const file = OpenFile(path_, "r+b");
    if (!file) FailToWrite(path_, ReasonOf(errno));
    std::fclose(file);
  }
  const HoldInterrupts held;
  const FileBeside probe(WithoutLinks(PathOf(path_)), path_);
}

void Target::Write(std::string_view text) const {
  if (IsStandardOutput()) return WriteTo(stdout, text, path_);
  if (!IsDevice(PathOf(path_))) return WriteBeside(text);
  std::FILE* const file = OpenFile(path_, "wb");
  if (!file) FailToWrite(path_, ReasonOf(errno));
  const bool isWritten = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  const int reason = errno;
  if (std::fclose(file) != 0 || !isWritten)
    FailToWrite(path_, ReasonOf(isWritten ? errno : reason));
}

bool Target::WriteByPath(const std::function<void(const std::string& path)>& write) const {
  if (!IsStandardOutput()) {
    const HoldInterrupts held;
    write(path_);
    return true;
  }
  if (!CanWriteThrough()) return false;
  if (const int problem = WriteThrough(write)) FailToWrite(path_, ReasonOf(problem));
  return true;
}

void Target::WriteBeside(std::string_view text) const {
  const HoldInterrupts held;
  FileBeside file(WithoutLinks(PathOf(path_)), path_);
  file.Write(text);
  if (!IsInterrupted()) file.TakePlace();
}

}  // namespace program
