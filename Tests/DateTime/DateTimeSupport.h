#pragma once

#include "Prelude.h"

namespace Data::tests {

inline Core::Ptr<Interfaces::IDateTime> DateTimeOf(const char* iso8601) {
  Core::Ptr<Interfaces::IDateTime> result;
  Core::Ptr<Core::IErrorCode> error;
  EXPECT_TRUE(Data_CreateDateTimeFromIso8601(iso8601, result.Receive(), error.Receive()))
      << iso8601 << ": " << MessageOf(error);
  return result;
}

inline Core::Ptr<Interfaces::IDateTime> DateTimeOfTicks(std::uint64_t ticks) {
  Core::Ptr<Interfaces::IDateTime> result;
  EXPECT_TRUE(Data_CreateDateTimeFromFileTime(ticks, result.Receive()));
  return result;
}

/// What one of the four printers gives.
template <class Printer>
std::string Print(Interfaces::IDateTime& value, Printer printer) {
  Core::Ptr<Interfaces::IString> text;
  (value.*printer)(text.Receive());
  return std::string(Core::Utf8View(*text));
}

/// "2024-11-14T10:20:30.123000000Z"
inline std::string TextOf(const Core::Ptr<Interfaces::IDateTime>& value) {
  return Print(*value, &Interfaces::IDateTime::ToIso8601);
}

}  // namespace Data::tests
