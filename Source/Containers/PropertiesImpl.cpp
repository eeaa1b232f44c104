#include "Containers/PropertiesImpl.h"

#include <stdexcept>

#include "Containers/CallingBack.h"
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

/// Rejects a record whose storage form, or whose object's interface, does not match its type.
void CheckForm(const _VARIANT& value) {
  switch (Core::KindOf(Core::TypeOf(value))) {
    case Core::ValueKind::Object:
      Core::GetObject<Core::IObject>(value);
      break;
    case Core::ValueKind::List:
      Core::GetObject<Interfaces::IObjectList>(value);
      break;
    case Core::ValueKind::Array:
      Core::GetObject<Interfaces::IArray>(value);
      break;
    case Core::ValueKind::Text:
      if (!Core::HasForm(value, Core::StorageForm::Value)) Core::ToStringObject(value);
      break;
    case Core::ValueKind::DateTime:
      Core::GetDateTime(value);
      break;
    case Core::ValueKind::Document:
      if (Core::TypeOf(value) == ValueType::JsonDocument) {
        Core::GetJsonDocument(value);
      } else {
        Core::GetXmlDocument(value);
      }
      break;
    case Core::ValueKind::Error:
      Core::GetErrorCode(value);
      break;
    case Core::ValueKind::Address:
      if (!Core::HasForm(value, Core::StorageForm::Pointer))
        throw std::runtime_error("Must be pointer type!");
      break;
    default:
      if (!Core::HasForm(value, Core::StorageForm::Value)) Core::ThrowMustBeValue();
  }
}

void CheckType(const char* name, ValueType type, const _VARIANT& value) {
  Core::CheckDefined(value);
  const ValueType given = Core::TypeOf(value);
  if (given != type)
    throw std::runtime_error(Core::StringFormat(
        "Types of Value and Property don't match! Property [%s] is of type %s, Value is of type %s",
        name, Core::GetValueTypeName(type).data(), Core::GetValueTypeName(given).data()));
  CheckForm(value);
}

}  // namespace

PropertiesImpl::Property& PropertiesImpl::Find(const char* name) {
  Core::CheckArgument(name);
  Property* property = properties_.Find(name);
  if (!property) Core::ThrowMissingKey();
  return *property;
}

void PropertiesImpl::CheckIsNew(const char* name) {
  if (properties_.Find(name))
    throw std::runtime_error(Core::StringFormat("Property with name [%s] already exists!", name));
}

void PropertiesImpl::ReleaseItems(Teardown& teardown) {
  for (std::uint64_t i = 0; i < properties_.Count(); ++i) {
    Property& property = properties_.ValueAt(i);
    teardown.Release(property.defaultValue);
    teardown.Release(property.value);
  }
}

bool PropertiesImpl::Register(const char* name, ValueType type, bool isRequired,
                              const _VARIANT* defaultValue, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(name);
    CheckConcrete(type);
    CheckIsNew(name);
    Property property{type, isRequired};
    // Using the default value may call code that changes or releases this bag.
    const auto held = HeldIf(defaultValue && CallsBack(*defaultValue), this);
    if (defaultValue && !Core::IsNull(*defaultValue)) {
      CheckType(name, type, *defaultValue);
      property.defaultValue = Core::Variant(*defaultValue);
      CheckIsNew(name);  // again: adding a reference may call code that registers it
    }
    properties_.Add(name, std::move(property));
  });
}

bool PropertiesImpl::Set(const char* name, const _VARIANT* value, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Property& property = Find(name);
    Core::CheckArgument(value);
    const auto held = HeldIf(CallsBack(*value), this);
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
    auto missing = Core::MakePtr<ObjectListImpl>();
    for (std::uint64_t i = 0; i < properties_.Count(); ++i) {
      const Property& property = properties_.ValueAt(i);
      if (property.isRequired && property.Effective().IsNull())
        missing->AddText(properties_.NameAt(i));
    }
    *out = missing.Detach();
  });
}

}  // namespace Data::impl
