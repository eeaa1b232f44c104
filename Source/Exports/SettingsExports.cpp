#include <algorithm>
#include <string>
#include <vector>

#include "Containers/AllowedValueImpl.h"
#include "Containers/ConfigurationImpl.h"
#include "Containers/ConstrainedValueImpl.h"
#include "Containers/EnumImpl.h"
#include "Containers/PropertiesImpl.h"
#include "Data/Exports.h"
#include "Exports/Factory.h"

using namespace Data;
using namespace Data::Interfaces;
using namespace Data::impl;
using Data::Structures::_VARIANT;

namespace {

std::vector<std::string> ReadOptions(IObjectList& list) {
  const Core::Ptr<IObjectList> held(&list);  // reading an option may run code that releases it
  std::vector<std::string> options;
  const std::uint64_t count = list.GetCount();  // of which an option may add or remove some
  for (std::uint64_t i = 0; i < std::min(count, list.GetCount()); ++i) {
    const auto option = Core::CastToInterface<IString>(list.GetAt(i));
    options.emplace_back(Core::Utf8View(*option));
  }
  return options;
}

Core::Variant DefinedOrNull(const _VARIANT* record) {
  if (!record) return Core::Null;
  Core::CheckDefined(*record);
  return Core::Variant(*record);
}

}  // namespace

bool Data_CreateConfiguration(IConfiguration** out, Core::IErrorCode** error) {
  return CreateGuarded<ConfigurationImpl>(out, error);
}

bool Data_CreateProperties(IProperties** out, Core::IErrorCode** error) {
  return CreateGuarded<PropertiesImpl>(out, error);
}

bool Data_CreateEnum(IObjectList* options, IEnum** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(options);
    Core::CheckOutPointer(out);
    *out = Core::MakePtr<EnumImpl>(ReadOptions(*options)).Detach();
  });
}

bool Data_CreateConstrainedValue(const _VARIANT* value, const _VARIANT* min, const _VARIANT* max,
                                 IConstrainedValue** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    *out = Core::MakePtr<ConstrainedValueImpl>(DefinedOrNull(value), DefinedOrNull(min),
                                               DefinedOrNull(max))
               .Detach();
  });
}

bool Data_CreateAllowedValue(const _VARIANT* value, Structures::ComparisonOperator comparison,
                             const char* displayName, const char* description, const char* category,
                             const char* helpUri, IAllowedValue** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(value);
    for (const char* text : {displayName, description, category, helpUri})
      Core::CheckArgument(text);
    Core::CheckOutPointer(out);
    Core::CheckInitialized(value);
    AllowedValueTexts texts{displayName, description, category, helpUri};
    *out = Core::MakePtr<AllowedValueImpl>(Core::Variant(*value), comparison, std::move(texts))
               .Detach();
  });
}
