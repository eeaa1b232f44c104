#pragma once

namespace Data::impl {

/// The name of a column or of a table's header. Empty for a caller's object that returns null for
/// its name.
const char* NameOf(auto& object) {
  const char* name = object.GetName();
  return name ? name : "";
}

}  // namespace Data::impl
