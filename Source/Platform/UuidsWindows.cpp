#include <windows.h>
// Depend on the header above.
#include <objbase.h>
#include <rpc.h>

#include <cstring>

#include "Platform/Uuids.h"

namespace Data::Platform {

using Structures::_UUID;

static_assert(sizeof(UUID) == sizeof(_UUID));

void NewUuid(_UUID& uuid) {
  GUID guid{};
  CoCreateGuid(&guid);
  std::memcpy(&uuid, &guid, sizeof uuid);
}

bool UuidToText(const _UUID& uuid, char16_t* text) {
  UUID source;
  std::memcpy(&source, &uuid, sizeof source);
  RPC_WSTR printed = nullptr;
  if (UuidToStringW(&source, &printed) != RPC_S_OK) return false;
  std::memcpy(text, printed, kUuidTextLength * sizeof *text);
  RpcStringFreeW(&printed);
  return true;
}

bool UuidFromText(const char* text, _UUID& uuid) {
  UUID parsed;
  // The system's declaration lacks const; the text is only read.
  auto* readable = reinterpret_cast<RPC_CSTR>(const_cast<char*>(text));
  if (UuidFromStringA(readable, &parsed) != RPC_S_OK) return false;
  std::memcpy(&uuid, &parsed, sizeof uuid);
  return true;
}

}  // namespace Data::Platform
