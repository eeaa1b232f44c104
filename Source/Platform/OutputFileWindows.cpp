#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "Platform/CodePages.h"
#include "Platform/OutputFile.h"

namespace Data::Platform {

namespace {

constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::wstring WideText(std::string_view utf8) {
  std::wstring wide(MaxWideLength(utf8.size()), L'\0');
  wide.resize(ToWide(CP_UTF8, utf8, reinterpret_cast<char16_t*>(wide.data())));
  return wide;
}

std::string Utf8Text(std::wstring_view wide) {
  std::string utf8(MaxByteLength(CP_UTF8, wide.size()), '\0');
  const std::u16string_view text(reinterpret_cast<const char16_t*>(wide.data()), wide.size());
  utf8.resize(ToMultiByte(CP_UTF8, text, utf8.data()));
  return utf8;
}

HANDLE Handle(std::intptr_t file) { return reinterpret_cast<HANDLE>(file); }
int LastError() { return static_cast<int>(GetLastError()); }

/// The path of an open file without links; empty if the system does not tell it.
std::string FinalPath(HANDLE file) {
  std::wstring path(GetFinalPathNameByHandleW(file, nullptr, 0, 0), L'\0');
  if (path.empty()) return {};
  path.resize(GetFinalPathNameByHandleW(file, path.data(), static_cast<DWORD>(path.size()), 0));
  return Utf8Text(path);
}

bool IsDirectory(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

OutputFile::OutputFile(const char* path) : path_(path), target_(path) {
  const std::wstring name = WideText(path_);
  // Without this the reason for a directory would be that access is denied.
  if (IsDirectory(name)) throw std::runtime_error("Cannot write \"" + path_ + "\": Is a directory");
  HANDLE existing =
      CreateFileW(name.c_str(), GENERIC_WRITE, kShared, nullptr, OPEN_EXISTING, 0, nullptr);
  replaces_ = existing != INVALID_HANDLE_VALUE;
  if (!replaces_ && GetLastError() != ERROR_FILE_NOT_FOUND) Fail(LastError());
  if (replaces_ && GetFileType(existing) != FILE_TYPE_DISK) {
    file_ = reinterpret_cast<std::intptr_t>(existing);
    return;
  }
  if (replaces_) {
    std::string finalPath = FinalPath(existing);
    CloseHandle(existing);
    if (!finalPath.empty()) target_ = std::move(finalPath);
  }
  OpenBeside();
}

void OutputFile::OpenBeside() {
  temporary_ = target_.substr(0, target_.find_last_of("\\/:") + 1) + TemporaryName();
  file_ = reinterpret_cast<std::intptr_t>(CreateFileW(WideText(temporary_).c_str(), GENERIC_WRITE,
                                                      0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                                                      nullptr));
  if (file_ != kClosed) return;
  const int reason = LastError();
  temporary_.clear();
  Fail(reason);
}

OutputFile::~OutputFile() {
  if (file_ != kClosed) CloseHandle(Handle(file_));
  if (!temporary_.empty()) DeleteFileW(WideText(temporary_).c_str());
}

void OutputFile::Write(std::string_view bytes) {
  constexpr std::size_t kMost = std::size_t{1} << 30;
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto count = static_cast<DWORD>(std::min(bytes.size(), kMost));
    if (!WriteFile(Handle(file_), bytes.data(), count, &written, nullptr)) Fail(LastError());
    bytes.remove_prefix(written);
  }
}

void OutputFile::Commit() {
  if (!temporary_.empty() && !FlushFileBuffers(Handle(file_))) Fail(LastError());
  if (!CloseHandle(Handle(std::exchange(file_, kClosed)))) Fail(LastError());
  if (temporary_.empty()) return;
  const std::wstring from = WideText(temporary_), to = WideText(target_);
  // Replacing keeps the permissions, but not every file system can do it.
  const bool isDone =
      (replaces_ && ReplaceFileW(to.c_str(), from.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS,
                                 nullptr, nullptr)) ||
      MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
  if (!isDone) Fail(LastError());
  temporary_.clear();
}

void OutputFile::Fail(int reason) const {
  throw std::runtime_error("Cannot write \"" + path_ +
                           "\": " + std::system_category().message(reason));
}

}  // namespace Data::Platform
