#pragma once

#include <string_view>

namespace Data {

/// The JSON schema (draft-07) of layer schema documents.
extern const std::string_view kLayerSchemaText;

}  // namespace Data
