#include "Platform/OutputFile.h"

#include "Platform/Uuids.h"

namespace Data::Platform {

std::string TemporaryName() {
  Structures::_UUID uuid;
  NewUuid(uuid);
  char16_t text[kUuidTextLength];
  UuidToText(uuid, text);
  return "layerdata-" + std::string(std::begin(text), std::end(text)) + ".tmp";
}

}  // namespace Data::Platform
