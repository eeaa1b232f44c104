#include "Fuzz.h"

#include "Data/Interfaces/IArray.h"
#include "Data/Interfaces/IDateTime.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"
#include "Data/Interfaces/IXmlDocument.h"

namespace Data::fuzz {

namespace {

template <class Document>
Variant DocumentOf(bool (*factory)(Document**), Input& input) {
  const auto document = New(factory);
  const std::string text = input.Text(24);
  document->SetContent(text.data(), text.size());
  return document;
}

Variant ArrayOf(Input& input) {
  const auto array = New(Data_CreateArray);
  const std::string bytes = input.Text(24);
  array->SetData(bytes.data(), 1, bytes.size());
  return array;
}

Variant DateTimeOf(Input& input) {
  Ptr<IDateTime> date;
  Require(Data_CreateDateTimeFromFileTime(input.Word(), date.Receive()));
  return date;
}

Variant ErrorOf() {
  Error error;
  Data_CreateTable(nullptr, error.Receive());
  return error;
}

}  // namespace

Variant AnyValue(Input& input) {
  const auto type = static_cast<ValueType>(input.Below(28));
  switch (type) {
    case ValueType::Null:
    case ValueType::Unknown:
    case ValueType::Invalid:
    case ValueType::Reserved:
      return Core::Null;
    case ValueType::Array:
      return ArrayOf(input);
    case ValueType::String:
      return Variant(input.Text(32));
    case ValueType::DateTime:
      return DateTimeOf(input);
    case ValueType::JsonDocument:
      return DocumentOf(Data_CreateJsonDocument, input);
    case ValueType::XmlDocument:
      return DocumentOf(Data_CreateXmlDocument, input);
    case ValueType::ErrorCode:
      return ErrorOf();
    case ValueType::IObject:
    case ValueType::ObjectList:
      return New(Data_CreateObjectList);
    case ValueType::StringList:
      return Variant::StringList(New(Data_CreateObjectList));
    case ValueType::Double:
      return input.Flag() ? Variant(static_cast<double>(input.Byte()))
                          : Variant(std::bit_cast<double>(input.Word()));
    case ValueType::Float:
      return Variant(std::bit_cast<float>(static_cast<std::uint32_t>(input.Word())));
    case ValueType::Bool:
      return Variant(input.Flag());
    case ValueType::Pointer:
      return Variant::Adopt({Core::MakeTag(type, Core::StorageForm::Pointer), {input.Word(), 0}});
    case ValueType::Int128:
    case ValueType::UInt128:
    case ValueType::Uuid:
      return Variant::Adopt(
          {Core::MakeTag(type, Core::StorageForm::Value), {input.Word(), input.Word()}});
    default:
      return Variant::Adopt(Core::MakeInteger(type, static_cast<std::int8_t>(input.Byte())));
  }
}

std::string CsvOf(const Ptr<ITable>& table) {
  Ptr<IString> text;
  Require(Data_ConvertTableToCsv(table.Get(), ",", text.Receive(), true, nullptr));
  const char* bytes = text->GetUtf8();
  return {bytes, text->GetLength()};
}

}  // namespace Data::fuzz
