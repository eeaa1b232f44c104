#pragma once

#include <string>

#include "Documents/RapidJson.h"

namespace Data {

/// What is wrong with a document by the JSON schema of layer schema documents,
/// three lines: the failing place of the JSON schema, its keyword, and the
/// failing place of the document. Empty for a document that conforms.
///
/// The time grows faster than the document's nesting: its depth is limited
/// before.
std::string ViolationsOf(const impl::JsonValue& document);

}  // namespace Data
