#include "Data/Exports.h"
#include "DateTime/DateTimeImpl.h"
#include "DateTime/Iso8601.h"
#include "Exports/Factory.h"
#include "Platform/Clock.h"

using namespace Data::Interfaces;
using namespace Data::impl;

namespace {

constexpr CalendarFields kMinimum = {.year = 1, .month = 1, .day = 1};
/// 9999-12-31T00:00:00: the start of the last day, not its end.
constexpr std::uint64_t kMaximumTicks = 2'650'466'880'000'000'000;

CalendarFields FieldsOfIso8601(std::string_view text) {
  CalendarFields fields;
  const Iso8601Result result = ReadIso8601(text, fields);
  if (result != Iso8601Result::Read) ThrowIso8601Failure(result, text);
  return fields;
}

}  // namespace

bool Data_CreateCurrentDateTime(IDateTime** out) {
  return Create<DateTimeImpl>(out, Data::Platform::CurrentFileTime());
}

bool Data_CreateMinimumDateTime(IDateTime** out) { return Create<DateTimeImpl>(out, kMinimum); }

bool Data_CreateMaximumDateTime(IDateTime** out) {
  return Create<DateTimeImpl>(out, kMaximumTicks);
}

bool Data_CreateDateTimeFromIso8601(const char* text, IDateTime** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(text);
    Core::CheckOutPointer(out);
    HandOut<IDateTime>(MakeDateTime(FieldsOfIso8601(text)), out);
  });
}

bool Data_CreateDateTimeFromPosixTime(int64_t seconds, IDateTime** out) {
  return Create<DateTimeImpl>(out, TicksOfPosixTime(seconds));
}

bool Data_CreateDateTimeFromFileTime(uint64_t ticks, IDateTime** out) {
  return ticks > INT64_MAX ? Create<DateTimeImpl>(out, ticks, CalendarFields())
                           : Create<DateTimeImpl>(out, ticks);
}
