#pragma once

#include "Prelude.h"

namespace Data::tests {

/// Takes the text up to the next space.
inline std::string_view TakeWord(std::string_view& text) {
  const std::size_t space = std::min(text.find(' '), text.size());
  const std::string_view word = text.substr(0, space);
  text.remove_prefix(std::min(space + 1, text.size()));
  return word;
}

/// A type by its name or its number.
inline ValueType TypeNamed(std::string_view name) {
  for (std::uint32_t code = 0; code < Core::kValueTypes.size(); ++code)
    if (Core::kValueTypes[code].name == name) return static_cast<ValueType>(code);
  return static_cast<ValueType>(std::stoul(std::string(name)));
}

inline std::uint64_t PayloadWord(ValueType type, std::string_view digits) {
  if (digits.empty()) return 0;
  if (digits.starts_with("0x")) return std::stoull(std::string(digits), nullptr, 16);
  const std::string number(digits);
  if (type == ValueType::Double) return std::bit_cast<std::uint64_t>(std::stod(number));
  if (type == ValueType::Float) return std::bit_cast<std::uint32_t>(std::stof(number));
  return number.starts_with('-') ? static_cast<std::uint64_t>(std::stoll(number))
                                 : std::stoull(number);
}

/// A reference to a new object, or Unknown if the text describes none.
inline Variant ObjectOf(std::string_view text) {
  const std::string_view kind = TakeWord(text);
  if (kind == "array") return New(Data_CreateArray);
  if (kind == "list") return New(Data_CreateObjectList);
  if (kind == "encoding") return Variant(Ptr<IObject>(New(Data_CreateEncodingInstanceBase64)));
  if (kind == "error") return SomeError();
  if (kind == "string") return New(Data_CreateString);
  if (kind == "text" || kind == "wide") {
    const auto string = MakeString(text);
    if (kind == "wide") string->GetWide();
    return string;
  }
  if (kind == "date") return Date(std::string(text).c_str());
  if (kind == "json" && text.empty()) return New(Data_CreateJsonDocument);
  if (kind == "json") return JsonVariant(text);
  if (kind != "xml") return {};
  const auto document = New(Data_CreateXmlDocument);
  document->SetContent(text.data(), text.size());
  return document;
}

/// The record that a data file describes:
///
///     Int32 -7, Int16 0xFFFE, Int128 5 0x1   the payload of any type by value, as
///                                            one or two words
///     "abc                                   a text
///     String &, Array & list, 28 & 0xBAD     a null reference, one to an object, one to no object
///     Pointer * 5                            an address
///     Int32 ? 7                              a storage form that does not exist
///     28                                     a type that does not exist
///
/// Objects: `array`, `list`, `encoding`, `error`, `string` and `json` (new ones), `text abc`,
/// `wide abc` (in UTF-16), `date 2024`, `json [1]`, `xml <a/>`. Without a type before it, an object
/// gives a reference of its own type.
inline Variant RecordOf(std::string_view text) {
  if (text.starts_with('"')) return text.substr(1);
  Variant object = ObjectOf(text);
  if (object.Type() != ValueType::Unknown) return object;

  const ValueType type = TypeNamed(TakeWord(text));
  if (text.starts_with('&')) {
    text.remove_prefix(std::min<std::size_t>(2, text.size()));
    object = ObjectOf(text);
    if (object.Type() == ValueType::Unknown) object.value[0] = PayloadWord(type, text);
    object.type = Core::MakeTag(type, Core::StorageForm::Reference);
    return object;
  }
  auto form = Core::StorageForm::Value;
  if (text.starts_with('*')) form = Core::StorageForm::Pointer;
  if (text.starts_with('?')) form = static_cast<Core::StorageForm>(3);
  if (form != Core::StorageForm::Value) TakeWord(text);
  const std::uint64_t low = PayloadWord(type, TakeWord(text));
  return Record(type, form, low, PayloadWord(type, text));
}

}  // namespace Data::tests
