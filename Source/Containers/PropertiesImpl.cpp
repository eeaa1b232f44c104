#include "Containers/PropertiesImpl.h"

#include <stdexcept>

#include "Containers/ObjectListImpl.h"
#include "Core/Guard.h"

namespace Data::impl {

using Structures::_VARIANT;
using Structures::ValueType;

namespace {

void CheckConcrete(ValueType type) {
  if (!Core::IsConcrete(type))
    throw std::runtime_error(Core::StringFormat(
        "Unsupported variantValueType (%d)! Use valid value from Structures::ValueType which is "
        "not null, unknown, invalid or reserved!",
        static_cast<int>(type)));
}

void CheckType(const char* name, ValueType type, const _VARIANT& value) {
  Core::CheckDefined(value);
  const ValueType given = Core::TypeOf(value);
  if (given != type)
    throw std::runtime_error(Core::StringFormat(
        "Types of Value and Property don't match! Property [%s] is of type %s, Value is of type %s",
        name, Core::GetValueTypeName(type).data(), Core::GetValueTypeName(given).data()));
}

}  // namespace

PropertiesImpl::Property& PropertiesImpl::Find(const char* name) {
  Core::CheckArgument(name);
  Property* property = properties_.Find(name);
  if (!property) Core::ThrowMissingKey();
  return *property;
}

bool PropertiesImpl::Register(const char* name, ValueType type, bool isRequired,
                              const _VARIANT* defaultValue, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(name);
    CheckConcrete(type);
    if (properties_.Find(name))
      throw std::runtime_error(Core::StringFormat("Property with name [%s] already exists!", name));
    Property property{type, isRequired};
    if (defaultValue && !Core::IsNull(*defaultValue)) {
      CheckType(name, type, *defaultValue);
      property.defaultValue = Core::Variant(*defaultValue);
    }
    properties_.Add(name, std::move(property));
  });
}

bool PropertiesImpl::Set(const char* name, const _VARIANT* value, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Property& property = Find(name);
    Core::CheckArgument(value);
    CheckType(name, property.type, *value);
    property.value = Core::Variant(*value);
  });
}

bool PropertiesImpl::Get(const char* name, _VARIANT* destination, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(destination);
    Core::CopyVariant(&Find(name).Effective(), destination);
  });
}

bool PropertiesImpl::Contains(const char* name, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(name);
    return properties_.Find(name) != nullptr;
  });
}

bool PropertiesImpl::HasValue(const char* name, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] { return !Find(name).Effective().IsNull(); });
}

bool PropertiesImpl::Reset(const char* name, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] { Find(name).value = Core::Null; });
}

ValueType PropertiesImpl::GetType(const char* name, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] { return Find(name).type; });
}

bool PropertiesImpl::IsRequired(const char* name, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] { return Find(name).isRequired; });
}

bool PropertiesImpl::GetDefault(const char* name, _VARIANT* destination, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(destination);
    Core::CopyVariant(&Find(name).defaultValue, destination);
  });
}

const char* PropertiesImpl::GetNameAt(std::uint64_t index) {
  return index < properties_.Count() ? properties_.NameAt(index) : nullptr;
}

bool PropertiesImpl::GetMissing(Interfaces::IObjectList** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    std::vector<std::string> missing;
    for (std::uint64_t i = 0; i < properties_.Count(); ++i) {
      const Property& property = properties_.ValueAt(i);
      if (property.isRequired && property.Effective().IsNull())
        missing.emplace_back(properties_.NameAt(i));
    }
    *out = MakeStringList(missing).Detach();
  });
}

}  // namespace Data::impl
