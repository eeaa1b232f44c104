// Any text gives a date-time or an error, and any date-time that was read can be shifted and
// printed.

#include <string>

#include "Core/Ptr.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IDateTime.h"
#include "Data/Interfaces/IString.h"

using Core::Ptr;
using namespace Data::Interfaces;

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
  Ptr<IDateTime> date;
  Ptr<IString> text;
  Ptr<Core::IErrorCode> error;
  Data_DetectValueType(data, size);
  const std::string terminated(data, size);
  if (!Data_CreateDateTimeFromIso8601(terminated.c_str(), date.Receive(), error.Receive()))
    return 0;
  date->AddMonths(1);
  date->AddDays(-1);
  date->GetWeekOfYear();
  date->ToIso8601(text.Receive());
  return 0;
}
