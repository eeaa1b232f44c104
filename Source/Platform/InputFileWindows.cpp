#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "Platform/CodePages.h"
#include "Platform/InputFile.h"

namespace Data::Platform {

namespace {

std::wstring WideText(std::string_view utf8) {
  std::wstring wide(MaxWideLength(utf8.size()), L'\0');
  wide.resize(ToWide(CP_UTF8, utf8, reinterpret_cast<char16_t*>(wide.data())));
  return wide;
}

HANDLE Handle(std::intptr_t file) { return reinterpret_cast<HANDLE>(file); }

}  // namespace

InputFile::InputFile(const char* path) : path_(path) {
  const std::wstring name = WideText(path_);
  // Without this the reason for a directory would be that access is denied.
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
    throw std::runtime_error("Cannot read \"" + path_ + "\": Is a directory");
  constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  file_ = reinterpret_cast<std::intptr_t>(CreateFileW(name.c_str(), GENERIC_READ, kShared, nullptr,
                                                      OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN,
                                                      nullptr));
  if (Handle(file_) == INVALID_HANDLE_VALUE) Fail(static_cast<int>(GetLastError()));
  LARGE_INTEGER size{};
  if (GetFileSizeEx(Handle(file_), &size)) size_ = static_cast<std::uint64_t>(size.QuadPart);
}

InputFile::~InputFile() { CloseHandle(Handle(file_)); }

std::size_t InputFile::Read(char* out, std::size_t count) {
  constexpr std::size_t kMost = std::size_t{1} << 30;
  DWORD got = 0;
  if (!::ReadFile(Handle(file_), out, static_cast<DWORD>(std::min(count, kMost)), &got, nullptr)) {
    const DWORD reason = GetLastError();
    // The other end of a pipe was closed.
    if (reason != ERROR_BROKEN_PIPE && reason != ERROR_HANDLE_EOF) Fail(static_cast<int>(reason));
  }
  return got;
}

void InputFile::Fail(int reason) const {
  throw std::runtime_error("Cannot read \"" + path_ +
                           "\": " + std::system_category().message(reason));
}

}  // namespace Data::Platform
