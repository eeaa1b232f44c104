#include <cstring>
#include <string>

#include "C/Call.h"
#include "Core/Variant.h"
#include "Core/VariantComparison.h"
#include "Core/VariantConversions.h"
#include "Data/Interfaces/IArray.h"
#include "Data/Interfaces/IDateTime.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/IXmlDocument.h"

using namespace Data;
using namespace Data::c;
using Core::Variant;

static_assert(sizeof(ld_variant) == sizeof(Structures::_VARIANT));
static_assert(sizeof(ld_uuid) == sizeof(Structures::_UUID));

namespace {

const Structures::_VARIANT& Read(const ld_variant* value) {
  Core::CheckArgument(Record(value));
  return *Record(value);
}

/// Stores a value and releases the previous one last.
bool Store(ld_variant* out, Variant value) {
  CheckResult(out);
  std::swap<Structures::_VARIANT>(value, *Record(out));
  return true;
}

template <class... Interfaces>
struct Types {
  /// The value of an object as the first of the interfaces that it implements.
  static bool StoreAs(ld_variant* out, Core::IObject* object) {
    const auto store = [&](auto* typed) { return typed && Store(out, Variant(Core::Ptr(typed))); };
    return (store(Core::InterfaceOf<Interfaces>(object)) || ...);
  }
};

}  // namespace

void ld_variant_clear(ld_variant* value) {
  Call(nullptr, [&](Core::IErrorCode**) { return !value || Store(value, Variant()); });
}

bool ld_variant_copy(const ld_variant* value, ld_variant* out, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) { return Store(out, Variant(Read(value))); });
}

bool ld_variant_from_int64(int64_t number, ld_variant* out, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) { return Store(out, Variant(number)); });
}

bool ld_variant_from_double(double number, ld_variant* out, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) { return Store(out, Variant(number)); });
}

bool ld_variant_from_bool(bool truth, ld_variant* out, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) { return Store(out, Variant(truth)); });
}

bool ld_variant_from_text(const char* text, uint64_t length, ld_variant* out, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    if (length > 0) Core::CheckArgument(text);
    CheckLength(length);
    return Store(out, Variant(std::string_view(text, static_cast<std::size_t>(length))));
  });
}

bool ld_variant_from_uuid(const ld_uuid* uuid, ld_variant* out, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    Core::CheckArgument(Record(uuid));
    return Store(out, Variant(*Record(uuid)));
  });
}

bool ld_variant_from_object(void* object, ld_variant* out, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    using namespace Data::Interfaces;
    auto* const any = static_cast<Core::IObject*>(object);
    Core::CheckArgument(any);
    return Types<IString, IDateTime, IArray, IJsonDocument, IXmlDocument, Core::IErrorCode,
                 IObjectList, Core::IObject>::StoreAs(out, any);
  });
}

ld_value_type ld_variant_type(const ld_variant* value) {
  return value ? static_cast<ld_value_type>(Core::TypeOf(*Record(value)))
               : ld_value_type{LD_VALUE_TYPE_UNKNOWN};
}

bool ld_variant_to_int64(const ld_variant* value, int64_t* result, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(result);
    *result = Core::ToInt64(Read(value));
    return true;
  });
}

bool ld_variant_to_double(const ld_variant* value, double* result, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(result);
    *result = Core::ToDouble(Read(value));
    return true;
  });
}

bool ld_variant_to_text(const ld_variant* value, ld_string** result, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(result);
    GiveObject(result, Core::MakeString(Core::ToText(Variant(Read(value)))).Get());
    return true;
  });
}

bool ld_variant_to_object(const ld_variant* value, ld_object** result, ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(result);
    Core::IObject* object = Core::ReferencedObject(Read(value));
    if (object) GiveObject(result, object);
    return object != nullptr;
  });
}

bool ld_variant_compare(const ld_variant* left, const ld_variant* right, int32_t* result,
                        ld_error** error) {
  return Call(error, [&](Core::IErrorCode**) {
    CheckResult(result);
    *result = Core::Compare(Variant(Read(left)), Variant(Read(right)));
    return true;
  });
}
