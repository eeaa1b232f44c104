#pragma once

#include <string>

#include "Documents/RapidJson.h"

namespace Data {

/// Validates a document against the JSON schema of layer schema documents. Empty
/// if it conforms, else three lines: the location in the JSON schema that fails,
/// its keyword, and the location in the document.
///
/// Recursive, and more than linear in the document's nesting: callers limit its
/// depth.
std::string ViolationsOf(const impl::JsonValue& document);

}  // namespace Data
