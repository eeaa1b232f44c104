#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "Cases.h"
#include "Core/Variant.h"
#include "Core/VariantComparison.h"
#include "Core/VariantConversions.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IAllowedValue.h"
#include "Data/Interfaces/IArray.h"
#include "Data/Interfaces/IColumn.h"
#include "Data/Interfaces/IConfiguration.h"
#include "Data/Interfaces/IConstrainedValue.h"
#include "Data/Interfaces/IDateTime.h"
#include "Data/Interfaces/IEncoding.h"
#include "Data/Interfaces/IEnum.h"
#include "Data/Interfaces/IHashing.h"
#include "Data/Interfaces/IHtmlDocument.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IProperties.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/IRtfDocument.h"
#include "Data/Interfaces/ISchema.h"
#include "Data/Interfaces/ISecureString.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"
#include "Data/Interfaces/ITableHeader.h"
#include "Data/Interfaces/IValue.h"
#include "Data/Interfaces/IVariantDictionary.h"
#include "Data/Interfaces/IVariantList.h"
#include "Data/Interfaces/IVariantPairList.h"
#include "Data/Interfaces/IXmlDocument.h"

/// What every test file uses: the public headers, their names, and helpers that create records and
/// report failures.
namespace Data::tests {

using namespace Interfaces;
using namespace std::string_literals;
using namespace std::string_view_literals;
using Core::IErrorCode;
using Core::IObject;
using Core::MakeString;
using Core::Null;
using Core::Ptr;
using Core::Variant;
using Structures::_UUID;
using Structures::_VARIANT;
using Structures::ComparisonOperator;
using Structures::DateTimeUnit;
using Structures::ValueType;

/// The message of an error object, "" if there is none.
inline std::string MessageOf(const Core::Ptr<Core::IErrorCode>& error) {
  return error ? error->GetMessage() : "";
}

/// The text of what an unguarded operation throws, "" if it does not throw.
template <class Operation>
std::string ThrownBy(Operation&& operation) {
  try {
    operation();
    return "";
  } catch (const std::exception& exception) {
    return exception.what();
  }
}

/// A record of any tag and payload.
/// @param low  for a reference: null, or the address of an object whose reference is taken over
inline Core::Variant Record(Structures::ValueType type, Core::StorageForm form,
                            std::uint64_t low = 0, std::uint64_t high = 0) {
  return Core::Variant::Adopt({Core::MakeTag(type, form), {low, high}});
}
inline Core::Variant ByValue(Structures::ValueType type, std::uint64_t low = 0,
                             std::uint64_t high = 0) {
  return Record(type, Core::StorageForm::Value, low, high);
}
inline Core::Variant NullReference(Structures::ValueType type) {
  return Record(type, Core::StorageForm::Reference);
}
inline Core::Variant Address(Structures::ValueType type, std::uint64_t address) {
  return Record(type, Core::StorageForm::Pointer, address);
}
/// A record of this type that refers to an object, which need not match the type.
template <class Interface>
Core::Variant Reference(Structures::ValueType type, Core::Ptr<Interface> object) {
  return Core::Variant::Adopt(Core::MakeReference(type, object.Detach()));
}

/// A new object from a factory without an error argument.
template <class Interface>
Core::Ptr<Interface> New(bool (*factory)(Interface**)) {
  Core::Ptr<Interface> object;
  EXPECT_TRUE(factory(object.Receive()));
  return object;
}

/// A new object from a guarded factory.
template <class Interface>
Core::Ptr<Interface> New(bool (*factory)(Interface**, Core::IErrorCode**)) {
  Core::Ptr<Interface> object;
  Core::Ptr<Core::IErrorCode> error;
  EXPECT_TRUE(factory(object.Receive(), error.Receive())) << MessageOf(error);
  return object;
}

/// The object that an export or an operation creates. The first argument of an operation is the
/// object on which it is called.
template <class Interface, class Function, class... Arguments>
Core::Ptr<Interface> Made(Function function, Arguments... arguments) {
  Core::Ptr<Interface> object;
  Core::Ptr<Core::IErrorCode> error;
  if constexpr (std::is_invocable_v<Function, Arguments..., Interface**, Core::IErrorCode**>) {
    EXPECT_TRUE(std::invoke(function, arguments..., object.Receive(), error.Receive()))
        << MessageOf(error);
  } else {
    std::invoke(function, arguments..., object.Receive());
    EXPECT_TRUE(object);
  }
  return object;
}

inline constexpr const char* kNullRecord =
    "Pointer of struct Data::Structures::_VARIANT must not be null!";
inline constexpr const char* kNullText = "Pointer of char must not be null!";
inline constexpr const char* kUndefinedRecord =
    "Variant type is undefined! Did you forget to zero out the VARIANT structure? It appears "
    "uninitialized!";

/// The message with which a guarded operation fails, "" if it succeeds. A failed operation is
/// repeated with an error that is already set, and without an error argument.
template <class Operation>
std::string Failure(Operation&& operation) {
  Core::Ptr<Core::IErrorCode> error;
  const bool succeeded = static_cast<bool>(operation(error.Receive()));
  EXPECT_EQ(succeeded, !error) << MessageOf(error);
  if (!error) return "";
  EXPECT_EQ(error->GetCode(), 2u);
  Core::IErrorCode* kept = error.Get();
  EXPECT_FALSE(static_cast<bool>(operation(&kept)));
  EXPECT_EQ(kept, error.Get()) << "an error already there is left alone";
  EXPECT_FALSE(static_cast<bool>(operation(static_cast<Core::IErrorCode**>(nullptr))));
  return MessageOf(error);
}

/// Some error object, from a call that fails.
inline Core::Ptr<Core::IErrorCode> SomeError() {
  Core::Ptr<Core::IErrorCode> error;
  EXPECT_FALSE(Data_CreateVariantDictionary(nullptr, error.Receive()));
  return error;
}

template <class Interface>
std::uint32_t ReferencesTo(const Core::Ptr<Interface>& object) {
  object->AddReference();
  return object->Release();
}

inline Core::Variant Date(const char* iso8601) {
  Core::Ptr<Interfaces::IDateTime> date;
  EXPECT_TRUE(Data_CreateDateTimeFromIso8601(iso8601, date.Receive(), nullptr)) << iso8601;
  return Core::Variant(std::move(date));
}
inline Core::Variant JsonVariant(std::string_view text) {
  const auto document = New(Data_CreateJsonDocument);
  document->SetContent(text.data(), text.size());
  return Core::Variant(document);
}

/// The result of an operation as text (in the shortest form for a double), or the text of what it
/// throws.
template <class Operation>
std::string Outcome(Operation&& operation) {
  std::string outcome;
  const std::string thrown = ThrownBy([&] {
    const auto result = operation();
    if constexpr (std::is_arithmetic_v<decltype(result)>) {
      char digits[64];
      outcome.assign(digits, std::to_chars(digits, digits + sizeof digits, result).ptr);
    } else {
      outcome = result;
    }
  });
  return thrown.empty() ? outcome : thrown;
}

}  // namespace Data::tests
