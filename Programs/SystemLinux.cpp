#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <thread>

#include "System.h"

namespace program {

namespace {

void WriteAll(int file, std::string_view bytes, int& problem) {
  while (!bytes.empty() && problem == 0) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      problem = errno;
    }
  }
}

/// Somebody has cut a mapped file. Nothing is being written when files are read.
void EndAfterCut(int) {
  int ignored = 0;
  WriteAll(STDERR_FILENO, "layerdata: the input became shorter while it was read\n", ignored);
  _exit(1);
}

/// Copies what comes out of a pipe to standard output. After a failure the rest is dropped, so that
/// the writer never meets a closed pipe.
class CopyToOutput {
 public:
  explicit CopyToOutput(int from) : thread_([this, from] { Run(from); }) {}

  /// Call it when the other end of the pipe is closed.
  int Finish() {
    thread_.join();
    return problem_;
  }

 private:
  void Run(int from) {
    std::vector<char> buffer(std::size_t{1} << 16);
    for (;;) {
      const ssize_t size = read(from, buffer.data(), buffer.size());
      if (size < 0 && errno == EINTR) continue;
      if (size <= 0) break;
      WriteAll(STDOUT_FILENO, {buffer.data(), static_cast<std::size_t>(size)}, problem_);
    }
    close(from);
  }

  int problem_ = 0;
  std::thread thread_;
};

}  // namespace

// A file that reaches the limit of the process is a failure with a message.
void PrepareStreams() { std::signal(SIGXFSZ, SIG_IGN); }

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

std::FILE* OpenFile(const std::string& path, const char* mode) {
  return std::fopen(path.c_str(), mode);
}

MappedFile::MappedFile(std::FILE* file) {
  struct stat status {};
  if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size <= 0) return;
  const auto size = static_cast<std::size_t>(status.st_size);
  void* const begin = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, fileno(file), 0);
  if (begin == MAP_FAILED) return;
  view_ = {static_cast<const char*>(begin), size};
  std::signal(SIGBUS, EndAfterCut);
}

MappedFile::~MappedFile() {
  if (!view_.empty()) munmap(const_cast<char*>(view_.data()), view_.size());
}

void MappedFile::Forget() const {
  if (!view_.empty()) madvise(const_cast<char*>(view_.data()), view_.size(), MADV_DONTNEED);
}

bool CanWriteThrough() { return access("/dev/fd/1", F_OK) == 0; }

int WriteThrough(const std::function<void(const std::string& path)>& write) {
  std::fflush(stdout);
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return errno;
  CopyToOutput copy(ends[0]);
  try {
    write("/dev/fd/" + std::to_string(ends[1]));
  } catch (...) {
    close(ends[1]);
    copy.Finish();
    throw;
  }
  close(ends[1]);
  return copy.Finish();
}

bool IsTerminal(std::FILE* stream) { return isatty(fileno(stream)) != 0; }

std::size_t TerminalWidth() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 80;
  return size.ws_col;
}

}  // namespace program
