#pragma once

#include "Prelude.h"

namespace Data::tests {

/// A document of any kind with content.
template <class Interface>
Core::Ptr<Interface> DocumentOf(bool (*factory)(Interface**), std::string_view text) {
  const auto document = New(factory);
  document->SetContent(text.data(), text.size());
  return document;
}

inline Core::Ptr<Interfaces::IJsonDocument> Json(std::string_view text) {
  return DocumentOf(Data_CreateJsonDocument, text);
}

inline std::string Repeated(std::string_view part, std::size_t count) {
  std::string text;
  while (count-- > 0) text += part;
  return text;
}

inline std::string Nested(std::string_view open, std::string_view inner, std::string_view close,
                          std::size_t depth) {
  return Repeated(open, depth).append(inner) + Repeated(close, depth);
}

}  // namespace Data::tests
