#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include "Core/Failures.h"
#include "Data/Interfaces/IString.h"

namespace Data::impl {

/// The content of any document.
/// @throws std::runtime_error "Null pointer exception! Interface is not
///         accessible: struct Data::Interfaces::IString" without content
template <class Interface>
Interfaces::IString& ContentOf(Interface& document) {
  Interfaces::IString* const content = document.GetContent();
  if (!content) Core::ThrowNullInterface<Interfaces::IString>();
  return *content;
}

/// The content of a document as its parser sees it: the stored bytes up to the
/// first zero byte, which stands right behind the result.
inline std::string_view ZeroTerminatedText(Interfaces::IString& content) {
  const auto* data = static_cast<const char*>(content.GetData());
  const void* end = data ? std::memchr(data, '\0', content.GetSize()) : nullptr;
  return end ? std::string_view(data,
                                static_cast<std::size_t>(static_cast<const char*>(end) - data))
             : std::string_view("");
}

}  // namespace Data::impl
