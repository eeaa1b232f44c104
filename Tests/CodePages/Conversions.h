#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IString.h"

namespace Data::tests {

inline constexpr std::uint32_t kUtf8 = 65001;

inline std::u16string ToWide(std::uint32_t page, std::string_view bytes) {
  Core::Ptr<Interfaces::IString> text;
  Data_CreateString(text.Receive());
  text->SetMultiByte(bytes.data(), bytes.size(), page);
  const char16_t* units = text->GetWide();
  return {units, text->GetLength()};
}

inline std::string ToBytes(std::uint32_t page, std::u16string_view units) {
  Core::Ptr<Interfaces::IString> text;
  Data_CreateString(text.Receive());
  text->SetWide(units.data(), units.size());
  const char* bytes = text->GetMultiByte(page);
  return {bytes, text->GetLength()};
}

}  // namespace Data::tests
