#include "Data/Exports.h"
#include "Exports/Factory.h"
#include "Platform/Uuids.h"
#include "Text/MultiByteStringImpl.h"

using namespace Data;
using namespace Data::Interfaces;
using Data::Structures::_UUID;

bool Data_NewUuid(_UUID* out) {
  if (!out) return false;
  Platform::NewUuid(*out);
  return true;
}

bool Data_UuidToString(const _UUID* uuid, IString** out) {
  char16_t text[Platform::kUuidTextLength];
  if (!uuid || !out || !Platform::UuidToText(*uuid, text)) return false;
  auto string = Core::MakePtr<impl::MultiByteStringImpl>();
  string->SetWide(text, Platform::kUuidTextLength);
  *out = string.Detach();
  return true;
}

bool Data_UuidFromString(const char* text, _UUID* out) {
  return text && out && Platform::UuidFromText(text, *out);
}
