#pragma once

#include <string>

#include "Documents/RapidJson.h"

namespace Data {

/// Validates a document against the JSON schema of layer schema documents. The result is empty if
/// it conforms, else three lines: the location of the violated rule in the JSON schema, its
/// keyword, and the location in the document.
///
/// Recursive, and slower than linear in the document's nesting: callers limit its depth.
std::string ViolationsOf(const impl::JsonValue& document);

}  // namespace Data
