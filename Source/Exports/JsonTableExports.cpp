#include "Core/Guard.h"
#include "Data/Exports.h"
#include "Documents/JsonText.h"
#include "Documents/JsonToTable.h"
#include "Documents/TableToJson.h"
#include "Exports/Factory.h"

using namespace Data::Interfaces;
using namespace Data::impl;

bool Data_JsonToTable(IJsonDocument* document, ITable** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(document);
    Core::CheckOutPointer(out);
    if (!document->IsValid()) throw std::runtime_error("JsonDocument content is not valid");
    HandOut<ITable>(ReadJsonTable(JsonTextOf(ContentOf(*document))), out);
  });
}

bool Data_TableToJson(ITable* table, IJsonDocument** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(table);
    Core::CheckOutPointer(out);
    HandOut<IJsonDocument>(WriteJsonTable(*table), out);
  });
}

bool Data_TableRowToJson(IRow* row, IJsonDocument** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckArgument(row);
    Core::CheckOutPointer(out);
    HandOut<IJsonDocument>(WriteJsonRow(*row), out);
  });
}
