#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

#include "Platform/InputFile.h"

namespace Data::Platform {

InputFile::InputFile(const char* path)
    : path_(path), file_(open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY)) {
  if (file_ < 0) Fail(errno);
  struct stat status {};
  if (fstat(static_cast<int>(file_), &status) == 0 && S_ISREG(status.st_mode))
    size_ = static_cast<std::uint64_t>(status.st_size);
}

InputFile::~InputFile() { close(static_cast<int>(file_)); }

std::size_t InputFile::Read(char* out, std::size_t count) {
  for (;;) {
    const ssize_t got = read(static_cast<int>(file_), out, count);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR) Fail(errno);
  }
}

void InputFile::Fail(int reason) const {
  throw std::runtime_error("Cannot read \"" + path_ +
                           "\": " + std::generic_category().message(reason));
}

}  // namespace Data::Platform
