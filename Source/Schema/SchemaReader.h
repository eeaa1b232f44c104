#pragma once

#include "Core/Ptr.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Schema/SchemaImpl.h"

namespace Data {

/// The schema of a layer schema document; an empty one if its text is not a JSON
/// object.
/// @throws as `Data_ParseSchema` says
Core::Ptr<SchemaImpl> ReadSchema(Interfaces::IJsonDocument& document);

}  // namespace Data
