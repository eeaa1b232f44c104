#include <sys/ioctl.h>
#include <unistd.h>

#include "System.h"

namespace program {

void PrepareStreams() {}

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

std::FILE* OpenFile(const std::string& path, const char* mode) {
  return std::fopen(path.c_str(), mode);
}

bool IsTerminal(std::FILE* stream) { return isatty(fileno(stream)) != 0; }

std::size_t TerminalWidth() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return 80;
  return size.ws_col;
}

}  // namespace program
