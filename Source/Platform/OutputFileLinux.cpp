#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "Platform/OutputFile.h"

namespace Data::Platform {

namespace {

std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

int Descriptor(std::intptr_t file) { return static_cast<int>(file); }

/// Where a link leads to, even if nothing is there yet.
std::string WithoutLinks(std::string path) {
  constexpr int kMostLinks = 40;
  char link[PATH_MAX];
  for (int i = 0; i < kMostLinks; ++i) {
    const ssize_t size = readlink(path.c_str(), link, sizeof link);
    if (size < 0) break;
    const std::string_view next(link, static_cast<std::size_t>(size));
    path = next.starts_with('/') ? std::string(next) : FolderOf(path).append(next);
  }
  return path;
}

/// The name of a file is on the disk only when its folder is. A failure is ignored: not every file
/// system can do this.
void FlushFolder(const std::string& folder) {
  const int file = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return;
  fsync(file);
  close(file);
}

}  // namespace

OutputFile::OutputFile(const char* path) : path_(path), target_(WithoutLinks(path_)) {
  struct stat status {};
  replaces_ = stat(path, &status) == 0;
  if (!replaces_ && errno != ENOENT) Fail(errno);
  if (replaces_ && S_ISDIR(status.st_mode)) Fail(EISDIR);
  if (replaces_ && !S_ISREG(status.st_mode)) {
    file_ = open(path, O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (file_ < 0) Fail(errno);
    return;
  }
  if (replaces_ && faccessat(AT_FDCWD, path, W_OK, AT_EACCESS) != 0) Fail(errno);
  OpenBeside();
  if (!replaces_) return;
  // The owner can often not be changed; the file then belongs to the process.
  if (fchown(Descriptor(file_), status.st_uid, status.st_gid) != 0) status.st_mode &= 0777;
  fchmod(Descriptor(file_), status.st_mode & 07777);
}

void OutputFile::OpenBeside() {
  temporary_ = FolderOf(target_) + TemporaryName();
  file_ = open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (file_ >= 0) return;
  const int reason = errno;
  temporary_.clear();
  Fail(reason);
}

OutputFile::~OutputFile() {
  if (file_ >= 0) close(Descriptor(file_));
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

void OutputFile::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(Descriptor(file_), bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      Fail(errno);
    }
  }
}

void OutputFile::Commit() {
  if (!temporary_.empty() && fsync(Descriptor(file_)) != 0) Fail(errno);
  if (close(Descriptor(std::exchange(file_, kClosed))) != 0) Fail(errno);
  if (temporary_.empty()) return;
  if (rename(temporary_.c_str(), target_.c_str()) != 0) Fail(errno);
  temporary_.clear();
  FlushFolder(FolderOf(target_));
}

void OutputFile::Fail(int reason) const {
  throw std::runtime_error("Cannot write \"" + path_ +
                           "\": " + std::generic_category().message(reason));
}

}  // namespace Data::Platform
