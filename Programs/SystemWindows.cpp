#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cerrno>
#include <filesystem>

#include "System.h"

namespace program {

namespace {

std::string Utf8Text(const wchar_t* wide) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
  text.resize(text.size() - 1);
  return text;
}

}  // namespace

void PrepareStreams() {
  for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  SetConsoleOutputCP(CP_UTF8);
}

std::vector<std::string> Arguments(int, char**) {
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(Utf8Text(wide[i]));
  LocalFree(wide);
  return arguments;
}

std::FILE* OpenFile(const std::string& path, const char* mode) {
  const std::u8string utf8(path.begin(), path.end());
  const std::string_view narrow(mode);
  return _wfopen(std::filesystem::path(utf8).c_str(),
                 std::wstring(narrow.begin(), narrow.end()).c_str());
}

// Files are read, and standard output is written at the end of the work.
MappedFile::MappedFile(std::FILE*) {}
MappedFile::~MappedFile() = default;
void MappedFile::Forget() const {}
bool CanWriteThrough() { return false; }
int WriteThrough(const std::function<void(const std::string& path)>&) { return ENOSYS; }

bool IsTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }

std::size_t TerminalWidth() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info)) return 80;
  return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
}

}  // namespace program
