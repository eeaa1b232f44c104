#pragma once

#include "Core/Ptr.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Schema/SchemaImpl.h"

namespace Data {

/// The schema in a layer schema document; an empty one if its text is not a JSON object.
/// @throws as documented at `Data_ParseSchema`
Core::Ptr<SchemaImpl> ReadSchema(Interfaces::IJsonDocument& document);

}  // namespace Data
