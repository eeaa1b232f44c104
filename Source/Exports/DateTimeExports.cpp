#include "Data/Exports.h"
#include "DateTime/DateTimeImpl.h"
#include "DateTime/Iso8601.h"
#include "Exports/Factory.h"
#include "Platform/Clock.h"

using namespace Data::Interfaces;
using namespace Data::impl;

bool Data_CreateCurrentDateTime(IDateTime** out) {
  return Create<DateTimeImpl>(out, Data::Platform::CurrentFileTime());
}

bool Data_CreateMinimumDateTime(IDateTime** out) {
  return Create<DateTimeImpl>(out, kMinimumFields);
}

bool Data_CreateMaximumDateTime(IDateTime** out) {
  return Create<DateTimeImpl>(out, kTicksAtMaximum);
}

bool Data_CreateDateTimeFromIso8601(const char* text, IDateTime** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(text);
    Core::CheckOutPointer(out);
    *out = MakeDateTime(FieldsOfIso8601(text)).Detach();
  });
}

bool Data_CreateDateTimeFromPosixTime(int64_t seconds, IDateTime** out) {
  return Create<DateTimeImpl>(out, TicksOfPosixTime(seconds));
}

bool Data_CreateDateTimeFromFileTime(uint64_t ticks, IDateTime** out) {
  return ticks > INT64_MAX ? Create<DateTimeImpl>(out, ticks, CalendarFields())
                           : Create<DateTimeImpl>(out, ticks);
}
