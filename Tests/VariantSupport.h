#pragma once

#include <charconv>
#include <string>
#include <type_traits>

#include "Core/Variant.h"
#include "TestSupport.h"

/// Records of any tag and payload, and what an operation on them gives or throws.
namespace Data::tests {

/// @param low  for a reference: null, or an object whose reference is taken over
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
/// A record that says `type` and refers to some object, fitting or not.
template <class Interface>
Core::Variant Reference(Structures::ValueType type, Core::Ptr<Interface> object) {
  return Core::Variant::Adopt(Core::MakeReference(type, object.Detach()));
}

/// A new object of a factory without an error argument.
template <class Interface>
Core::Ptr<Interface> New(bool (*factory)(Interface**)) {
  Core::Ptr<Interface> object;
  EXPECT_TRUE(factory(object.Receive()));
  return object;
}

/// A new object of a factory that is guarded.
template <class Interface>
Core::Ptr<Interface> New(bool (*factory)(Interface**, Core::IErrorCode**)) {
  Core::Ptr<Interface> object;
  Core::Ptr<Core::IErrorCode> error;
  EXPECT_TRUE(factory(object.Receive(), error.Receive())) << MessageOf(error);
  return object;
}

inline constexpr const char* kNullRecord =
    "Pointer of struct Data::Structures::_VARIANT must not be null!";
inline constexpr const char* kNullText = "Pointer of char must not be null!";
inline constexpr const char* kUndefinedRecord =
    "Variant type is undefined! Did you forget to zero out the VARIANT structure? It appears "
    "uninitialized!";

/// What a guarded operation fails with, "" if it succeeds. A failed operation is
/// tried again without an error argument and with one that is taken.
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

/// An error object, by way of a call that fails with the given message.
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

/// The result of an operation as text (the shortest one for a double), or what
/// it throws.
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
