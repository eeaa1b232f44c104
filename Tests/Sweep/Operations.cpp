#include "Sweep/Made.h"
#include "Sweep/Operation.h"

namespace Data::tests {
using Structures::MergeMode;

std::vector<Operation> Operations() {
  // clang-format off: a line for an operation
  std::vector<Operation> operations = {
      {"Data_CreateHashingInstanceSha2", [](Call& c) { return Data_CreateHashingInstanceSha2(1, c, c); }},
      {"Data_CreateHashingInstanceHmacSha2", [](Call& c, IArray* key) { return Data_CreateHashingInstanceHmacSha2(0, key, c, c); }, Bytes},
      {"Data_CreateEnum", [](Call& c, IObjectList* texts) { return Data_CreateEnum(texts, c, c); }, Texts},
      {"Data_CreateConstrainedValue", [](Call& c) { return Data_CreateConstrainedValue(&c.text, &c.text, &c.text, c, c); }},
      {"Data_CreateAllowedValue", [](Call& c) { return Data_CreateAllowedValue(&c.text, {}, kText, kText, kName, kName, c, c); }},
      {"Data_CreateSecureString", [](Call& c, IString* s) { return Data_CreateSecureString(s, c, c); }, Utf8},
      {"Data_UuidToString", [](Call& c) { return Data_UuidToString(&kUuid, c); }},
      {"Data_ParseCsv", [](Call& c) { return Data_ParseCsv(kCsv, std::size(kCsv) - 1, c, c); }},
      {"Data_ParseCsv_Large", [](Call& c) { return Data_ParseCsv(kLargeCsv.data(), kLargeCsv.size(), c, c); }},
      {"Data_ParseCsvWithErrors_Keep", [](Call& c) { return Data_ParseCsvWithErrors(kBadCsv, c, c, std::size(kBadCsv) - 1, 1, c); }},
      {"Data_ParseCsvWithErrors_Skip", [](Call& c) { return Data_ParseCsvWithErrors(kBadCsv, c, c, std::size(kBadCsv) - 1, 0, c); }},
      {"Data_ParseCsvWithSeparator", [](Call& c) { return Data_ParseCsvWithSeparator(kCsv, ";", c, std::size(kCsv) - 1, c); }},
      {"Data_ParseCsv_Fails", [](Call& c) { return Data_ParseCsv(kBadCsv, std::size(kBadCsv) - 1, c, c); }},
      {"Data_ConvertTableToCsv", [](Call& c, ITable* t) { return Data_ConvertTableToCsv(t, ";", c, true, c); }, Table},
      {"Data_JsonToTable", [](Call& c, IJsonDocument* d) { return Data_JsonToTable(d, c, c); }, Json},
      {"Data_JsonToTable_Fails", [](Call& c, IJsonDocument* d) { return Data_JsonToTable(d, c, c); }, Document<Data_CreateJsonDocument, kOtherJson>},
      {"Data_TableToJson", [](Call& c, ITable* t) { return Data_TableToJson(t, c, c); }, Table},
      {"Data_TableRowToJson", [](Call& c, ITable* t) { return Data_TableRowToJson(t->GetRow(1), c, c); }, Table},
      {"Data_CreateSchema", [](Call& c) { return Data_CreateSchema(&kUuid, kName, kText, c, c); }},
      {"Data_ParseSchema", [](Call& c, IJsonDocument* d) { return Data_ParseSchema(d, c, c); }, SchemaDocument},
      {"Data_ParseSchema_Unexpected", [](Call& c, IJsonDocument* d) { return Data_ParseSchema(d, c, c); }, Document<Data_CreateJsonDocument, kOddSchema>},
      {"Data_ParseSchema_Fails", [](Call& c, IJsonDocument* d) { return Data_ParseSchema(d, c, c); }, Json},
      {"Data_CreateDateTimeFromIso8601", [](Call& c) { return Data_CreateDateTimeFromIso8601("2024-11-14T10:20:30.5", c, c); }},
      {"Data_CreateDateTimeFromIso8601_Fails", [](Call& c) { return Data_CreateDateTimeFromIso8601(kText, c, c); }},
      {"Data_CreateDateTimeFromPosixTime", [](Call& c) { return Data_CreateDateTimeFromPosixTime(1, c); }},
      {"Data_CreateDateTimeFromFileTime", [](Call& c) { return Data_CreateDateTimeFromFileTime(1, c); }},
      {"IString_SetWide", [](IString* s) { s->SetWide(u"a text of more than any other text that the string holds", 57); }, Utf8},
      {"IString_SetMultiByte", [](IString* s) { s->SetMultiByte(kJson, std::size(kJson) - 1, 1252); }, Utf8},
      {"IString_SetUtf8", [](IString* s) { s->SetUtf8(kJson, std::size(kJson) - 1); }, Wide},
      {"IString_GetUtf8", [](IString* s) { return s->GetUtf8(); }, Wide},
      {"IString_GetUtf8_TwoSteps", [](IString* s) { return s->GetUtf8(); }, Text<1252>},
      {"IString_GetWide", [](IString* s) { return s->GetWide() != nullptr; }, Utf8},
      {"IString_Compare", [](IString* s, IString* other) { return s->Compare(other, false); }, Utf8, Wide},
      {"IArray_SetData", [](IArray* a) { a->SetData(kJson, 1, sizeof kJson); }, Bytes},
      {"IArray_Resize", [](IArray* a) { a->Resize(16, 10); }, Bytes},
      {"IArray_Write", [](IArray* a) { return a->Write(3, kJson, sizeof kJson); }, Bytes},
      {"IArray_Append", [](IArray* a) { return a->Append(kJson, sizeof kJson); }, Bytes},
      {"IArray_GetPointer_Fails", [](Call& c, IArray* a) { return a->GetPointer(1000, 1, c) != nullptr; }, Bytes},
      {"IObjectList_Add", [](IObjectList* l, IString* s) { l->Add(s); }, Texts, Utf8},
      {"IVariantList_Add", [](Call& c, IVariantList* l) { l->Add(&c.text); }, [] { return New(Data_CreateVariantList); }},
      {"IVariantPairList_Add", [](Call& c, IVariantPairList* l) { return l->Add(&c.text, &c.date, c); }, [] { return New(Data_CreateVariantPairList); }},
      {"IVariantDictionary_Set", [](Call& c, IVariantDictionary* d) { return d->Set(&c.text, &c.date, c); }, Dictionary},
      {"IVariantDictionary_Get", [](Call& c, IVariantDictionary* d) { return d->Get(&c.json, c, c); }, Dictionary},
      {"IVariantDictionary_GetKeys", [](Call& c, IVariantDictionary* d) { return d->GetKeys(c, c); }, Dictionary},
      {"IConfiguration_Set", [](Call& c, IConfiguration* o) { o->Set(kJson, &c.text); }, Configuration},
      {"IProperties_Register", [](Call& c, IProperties* p) { return p->Register(kJson, ValueType::String, true, &c.text, c); }, Properties},
      {"IProperties_Set_Fails", [](Call& c, IProperties* p) { return p->Set(kName, &c.date, c); }, Properties},
      {"IProperties_GetMissing", [](Call& c, IProperties* p) { return p->GetMissing(c, c); }, Properties},
      {"IEnum_SelectOption_Fails", [](Call& c, IEnum* e) { return e->SelectOption(kJson, c); }, Enum},
      {"IEnum_GetOptions", [](Call& c, IEnum* e) { return e->GetOptions(c, c); }, Enum},
      {"IConstrainedValue_SetValue", [](Call& c, IConstrainedValue* v) { return v->SetValue(&c.text, c); }, Constrained},
      {"IAllowedValue_GetValueText", [](Call& c, IAllowedValue* v) { return v->GetValueText(c, c); }, Allowed},
      {"IDateTime_Clone", [](Call& c, IDateTime* m) { m->Clone(c); }, Moment},
      {"IDateTime_SetTimeZone", [](IDateTime* m) { return m->SetTimeZone(kName); }, Moment},
      {"IEncoding_Encode", [](Call& c, IEncoding* e, IArray* a) { return e->Encode(a, c, c); }, [] { return New(Data_CreateEncodingInstanceBase64); }, Bytes},
      {"IEncoding_Decode", [](Call& c, IEncoding* e, IArray* a) { return e->Decode(a, c, c); }, [] { return New(Data_CreateEncodingInstanceBase64); }, Bytes},
      {"IHashing_Hash", [](Call& c, IHashing* h) { return h->Hash(kJson, sizeof kJson, c, c); }, [] { return New(Data_CreateHashingInstanceMD5); }},
      {"IHashing_Hash_Keyed", [](Call& c, IHashing* h) { return h->Hash(kJson, sizeof kJson, c, c); }, Hmac},
      {"ISecureString_GetText", [](Call& c, ISecureString* s) { return s->GetText(c, c); }, Secret},
      {"IValue_GetText", [](Call& c, IValue* v) { return v->GetText(c); }, Value},
      {"IColumn_SetName", [](ITable* t) { t->GetColumn(0)->SetName(kJson); }, Indexed},
      {"IColumn_GetValues", [](Call& c, ITable* t) { return t->GetColumn(1)->GetValues(c); }, Table},
      {"IRow_GetCellText", [](Call& c, ITable* t) { return t->GetRow(1)->GetCellText(2, c); }, Table},
      {"IRow_GetCellByName_Fails", [](Call& c, ITable* t) { return t->GetRow(1)->GetCellByName(kText, c); }, Table},
      {"IRow_TrySetCellByName", [](Call& c, ITable* t) { return t->GetRow(3)->TrySetCellByName("id", &c.text, c); }, Indexed},
      {"IRow_SetCell", [](Call& c, ITable* t) { t->GetRow(3)->SetCell(0, &c.text); }, Indexed},
      {"IRow_SetCells", [](Call& c, ITable* t) { t->GetRow(1)->SetCells(&c.text, 1); }, Indexed},
      {"IRow_GetValue", [](Call& c, ITable* t) { return t->GetRow(1)->GetValue(1, c); }, Table},
      {"ITableHeader_GetColumn_Fails", [](Call& c, ITable* t) { return t->GetHeader()->GetColumn(9, c); }, Table},
      {"ITableHeader_GetColumns", [](Call& c, ITable* t) { return t->GetHeader()->GetColumns(c, c); }, Table},
      {"ITableHeader_SetName", [](ITable* t) { t->GetHeader()->SetName(kJson); }, Table},
      {"ITable_AddColumn", [](ITable* t) { return t->AddColumn(kJson); }, Indexed},
      {"ITable_InsertColumn", [](ITable* t) { return t->InsertColumn(kJson, 3); }, Indexed},
      {"ITable_RemoveColumn", [](ITable* t) { t->RemoveColumn(kName); }, Indexed},
      {"ITable_AddRowFromDictionary", [](ITable* t, IVariantDictionary* d) { return t->AddRowFromDictionary(d); }, Indexed, Dictionary},
      {"ITable_AddRow", [](Call& c, ITable* t) { return t->AddRow(&c.text, 1); }, Indexed},
      {"ITable_InsertRow", [](Call& c, ITable* t) { return t->InsertRow(1, &c.text, 1); }, Indexed},
      {"ITable_AddRowCopy", [](ITable* t, ITable* from) { return t->AddRowCopy(from->GetRow(1)); }, Table, Indexed},
      {"ITable_InsertRowCopy", [](ITable* t, ITable* from) { return t->InsertRowCopy(1, from->GetRow(1)); }, Table, Indexed},
      {"ITable_RemoveRows", [](ITable* t) { t->RemoveRows(1, 2); }, Indexed},
      {"ITable_RemoveRow", [](ITable* t) { t->RemoveRow(1); }, Indexed},
      {"ITable_SetCell_Wide", [](ITable* t) { t->SetCell(3, 0, t->GetCellAt(1, 1)); }, Indexed},
      {"ITable_SetCellByName", [](Call& c, ITable* t) { t->SetCellByName(3, "id", &c.text); }, Indexed},
      {"ITable_SetCell", [](Call& c, ITable* t) { t->SetCell(3, 0, &c.text); }, Indexed},
      {"ITable_GetRows", [](Call& c, ITable* t) { return t->GetRows(c, c); }, Table},
      {"ITable_BuildIndex", [](Call& c, ITable* t) { return t->BuildIndex(1, t->GetColumn(0), c); }, Table},
      {"ITable_FindRow_Fails", [](Call& c, ITable* t) { return t->FindRow(&c.text); }, Table},
      {"ITable_FindRows", [](Call& c, ITable* t) { return t->FindRows("name", t->GetCellAt(0, 1), c, c); }, Table},
      {"ITable_FindRows_Indexed", [](Call& c, ITable* t) { return t->FindRows("id", t->GetCellAt(1, 0), c, c); }, Indexed},
      {"ITable_Merge_Matching", [](Call& c, ITable* t, ITable* right) { return t->Merge(right, "id", MergeMode::Matching, c, c); }, Table, Indexed},
      {"ITable_Merge_All", [](Call& c, ITable* t, ITable* right) { return t->Merge(right, "id", MergeMode::All, c, c); }, Table, Indexed},
      {"ITable_MergeOn", [](Call& c, ITable* t, ITable* right) { return t->MergeOn(right, "name", "name", MergeMode::All, c, c); }, Table, Table},
      {"ITable_MergeOnColumns", [](Call& c, ITable* t, ITable* right) { return t->MergeOnColumns(right, MergeMode::All, c, c, 2, "id", "name"); }, Table, Table},
      {"IJsonDocument_SetContent", [](IJsonDocument* d) { d->SetContent(kOtherJson, std::size(kOtherJson) - 1); }, Json},
      {"IJsonDocument_Equals", [](IJsonDocument* d, IJsonDocument* other) { return d->Equals(other); }, Json, Json},
      {"IXmlDocument_SetContent", [](IXmlDocument* d) { d->SetContent(kOtherXml, std::size(kOtherXml) - 1); }, Xml},
      {"IXmlDocument_Equals", [](IXmlDocument* d, IXmlDocument* other) { return d->Equals(other); }, Xml, Xml},
      {"IJsonDocument_ToCompactString", [](Call& c, IJsonDocument* d) { return d->ToCompactString(c, c); }, Json},
      {"ISchema_SetTitle", [](ISchema* s) { s->SetTitle(kJson); }, Schema},
      {"ISchema_SetDescription", [](ISchema* s) { s->SetDescription(kJson); }, Schema},
      {"ISchema_SetIdentifierColumn", [](ISchema* s) { s->SetIdentifierColumn(kJson); }, Schema},
      {"ISchema_GetColumnNames", [](Call& c, ISchema* s) { return s->GetColumnNames(c, c); }, Schema},
      {"ISchema_AddAllowedValue", [](Call& c, ISchema* s, IAllowedValue* v) { return s->AddAllowedValue(kName, v, c); }, Schema, Allowed},
      {"ISchema_AddAllowedValue_Empty", [](Call& c, ISchema* s, IAllowedValue* v) { return s->AddAllowedValue("new", v, c); }, EmptySchema, Allowed},
      {"ISchema_AddAllowedValue_First", [](Call& c, ISchema* s, IAllowedValue* v) { return s->AddAllowedValue("new", v, c); }, UnitSchema, Allowed},
      {"ISchema_AddAllowedValue_New", [](Call& c, ISchema* s, IAllowedValue* v) { return s->AddAllowedValue(kJson, v, c); }, Schema, Allowed},
      {"ISchema_SetAllowedValues", [](Call& c, ISchema* s, IObjectList* l) { return s->SetAllowedValues(kName, l, c); }, Schema, AllowedValues},
      {"ISchema_GetAllowedValues", [](Call& c, ISchema* s) { return s->GetAllowedValues(kName, c, c); }, Schema},
      {"ISchema_SetDefaultValue_New", [](Call& c, ISchema* s) { return s->SetDefaultValue(kJson, &c.other, c); }, Schema},
      {"ISchema_SetReadOnly_New", [](Call& c, ISchema* s) { return s->SetReadOnly(kJson, true, c); }, Schema},
      {"ISchema_SetType_New", [](Call& c, ISchema* s) { return s->SetType(kJson, ValueType::Int32, c); }, Schema},
      {"ISchema_GetUnit_Fails", [](Call& c, ISchema* s) { return s->GetUnit(kJson, c); }, Schema},
      {"ISchema_AddColumn", [](Call& c, ISchema* s) { return s->AddColumn(kJson, ValueType::Int32, 1, 1, c); }, Schema},
      {"ISchema_AddColumnWithText", [](Call& c, ISchema* s) { return s->AddColumnWithText(kJson, kName, kName, ValueType::Double, kText, kName, c); }, Schema},
      {"ISchema_AddColumnFull", [](Call& c, ISchema* s) { return s->AddColumnFull(kJson, kName, kName, ValueType::Double, 1, 1, kText, kName, c); }, Schema},
      {"ISchema_ToJson", [](Call& c, ISchema* s) { return s->ToJson(c, ' ', 2, c); }, Schema},
      {"ISchema_GetJsonSchema", [](Call& c, ISchema* s) { return s->GetJsonSchema(c, c); }, Schema},
      {"ISchema_CloneWithUuid", [](Call& c, ISchema* s) { return s->CloneWithUuid(&kUuid, c, c); }, Schema},
      {"ISchema_Clone", [](Call& c, ISchema* s) { return s->Clone(c, c); }, Schema},
  };
  // clang-format on
  const auto add = [&]<class... Create>(Create... create) {
    (operations.emplace_back("Data_Create_" + std::to_string(operations.size()),
                             [=](Call& c) {
                               if constexpr (std::is_invocable_v<Create, Call&>)
                                 return create(c);
                               else
                                 return create(c, c);
                             }),
     ...);
  };
  add(Data_CreateArray, Data_CreateObjectList, Data_CreateVariantList, Data_CreateString,
      Data_CreateJsonDocument, Data_CreateXmlDocument, Data_CreateHtmlDocument,
      Data_CreateRtfDocument, Data_CreateVariantDictionary, Data_CreateVariantPairList,
      Data_CreateConfiguration, Data_CreateProperties, Data_CreateTable,
      Data_CreateEncodingInstanceBase64, Data_CreateEncodingInstanceBase64Url,
      Data_CreateHashingInstanceMD5, Data_CreateHashingInstanceSha1, Data_CreateMinimumDateTime,
      Data_CreateMaximumDateTime);
  using SetText = bool (ISchema::*)(const char*, const char*, IErrorCode**);
  for (const SetText set : {&ISchema::SetColumnDescription, &ISchema::SetUpdateExpression,
                            &ISchema::SetInsertExpression, &ISchema::SetUnit,
                            &ISchema::SetDisplayName, &ISchema::SetGroup, &ISchema::SetHelpUri})
    for (const char* column : {"width", "new"})
      operations.emplace_back(
          "ISchema_SetText_" + std::to_string(operations.size()),
          [=](Call& c, ISchema* s) { return (s->*set)(column, kText, c); }, Schema);
  using ToText = void (IDateTime::*)(IString**);
  for (const ToText write : {&IDateTime::ToIso8601, &IDateTime::ToIso8601Time,
                             &IDateTime::ToIso8601Date, &IDateTime::ToIso8601Basic})
    operations.emplace_back(
        "IDateTime_ToText_" + std::to_string(operations.size()),
        [=](Call& c, IDateTime* d) { (d->*write)(c); }, Moment);
  return operations;
}

}  // namespace Data::tests
