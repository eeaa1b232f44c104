#pragma once

#include <cstdint>

#include "Core/Ptr.h"
#include "Data/Interfaces/IJsonDocument.h"

namespace Data {

struct SchemaImpl;

struct Indentation {
  char character;       ///< 0 for four spaces; the count is then ignored
  std::uint32_t count;  ///< characters per level
};

/// Writes the schema as a layer schema document.
/// @throws as documented at `ISchema::ToJson`
Core::Ptr<Interfaces::IJsonDocument> WriteSchema(const SchemaImpl& schema, Indentation indentation);

}  // namespace Data
