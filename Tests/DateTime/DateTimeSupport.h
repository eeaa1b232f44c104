#pragma once

#include "Prelude.h"

namespace Data::tests {

inline constexpr char kDateTimeCases[] = "DateTimes.txt";

inline Ptr<IDateTime> DateTimeOf(std::string_view iso8601) {
  return Date(std::string(iso8601).c_str()).As<Ptr<IDateTime>>();
}

inline Ptr<IDateTime> DateTimeOfTicks(std::uint64_t ticks) {
  return Made<IDateTime>(Data_CreateDateTimeFromFileTime, ticks);
}

/// What one of the four printers gives.
template <class Printer>
std::string Print(IDateTime& value, Printer printer) {
  return Made<IString>(printer, &value)->GetUtf8();
}

/// "2024-11-14T10:20:30.123000000Z"
inline std::string TextOf(const Ptr<IDateTime>& value) {
  return Print(*value, &IDateTime::ToIso8601);
}

inline std::int32_t Number(std::string_view text) { return std::stoi(std::string(text)); }
inline DateTimeUnit Unit(std::string_view text) { return static_cast<DateTimeUnit>(Number(text)); }

}  // namespace Data::tests
