#include <windows.h>

#include <memory>
#include <string_view>

#include "Platform/CodePages.h"
#include "Platform/SystemErrorText.h"

namespace Data::Platform {

namespace {

struct LocalFreer {
  void operator()(wchar_t* buffer) const { LocalFree(buffer); }
};
using SystemText = std::unique_ptr<wchar_t, LocalFreer>;

/// Null if the system module has no text for the code.
SystemText FindMessage(std::int32_t status) {
  constexpr DWORD flags =
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_IGNORE_INSERTS;
  wchar_t* buffer = nullptr;
  FormatMessageW(flags, GetModuleHandleW(L"Ntdll.dll"), static_cast<DWORD>(status), 0,
                 reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
  return SystemText(buffer);
}

std::string ToUtf8(std::u16string_view text) {
  std::string utf8(MaxByteLength(CP_UTF8, text.size()), '\0');
  utf8.resize(ToMultiByte(CP_UTF8, text, utf8.data()));
  return utf8;
}

}  // namespace

std::string SystemErrorText(std::int32_t status) {
  const SystemText message = FindMessage(status);
  if (!message) return "<Error message could not be obtained from Ntdll.dll>";
  return ToUtf8(reinterpret_cast<const char16_t*>(message.get()));
}

}  // namespace Data::Platform
