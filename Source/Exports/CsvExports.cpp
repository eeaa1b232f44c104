#include "Containers/ObjectListImpl.h"
#include "Core/Guard.h"
#include "Data/Exports.h"
#include "Exports/Factory.h"
#include "Tables/Csv/CsvReader.h"
#include "Tables/Csv/CsvWriter.h"
#include "Tables/ValueTypeDetection.h"
#include "Text/TextOutput.h"

using namespace Data::Interfaces;
using namespace Data::impl;

namespace {

std::string_view CheckedContent(const char* content, std::uint64_t size) {
  Core::CheckArgument(content);
  if (size == 0)
    throw std::runtime_error(
        "Size cannot be 0. We don't call strlen "
        "internally because data might not contain null "
        "terminator!");
  return {content, size};
}

std::string_view CheckedSeparator(const char* separator) {
  Core::CheckArgument(separator);
  return *separator ? separator : ",";
}

/// @param separator  empty to detect it
CsvResult Read(std::string_view text, std::string_view separator, ExtraValues extraValues) {
  CsvOptions options;
  options.separator = separator;
  options.extraValues = extraValues;
  Core::Parts onePart;
  return ReadCsv(text, options, onePart);
}

Core::Ptr<IObjectList> ProblemsOf(const CsvResult& result) {
  auto list = Core::MakePtr<ObjectListImpl>();
  for (const LongLine& line : result.longLines)
    list->AddText(LongLineMessage(result.table->ColumnCount(), line));
  return list;
}

}  // namespace

bool Data_ParseCsv(const char* content, std::uint64_t size, ITable** table,
                   Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(table);
    const auto text = CheckedContent(content, size);
    *table = Read(text, {}, ExtraValues::Fail).table.Detach();
  });
}

bool Data_ParseCsvWithErrors(const char* content, ITable** table, IObjectList** errors,
                             std::uint64_t size, std::int32_t keepRows, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(table);
    Core::CheckOutPointer(errors);
    const auto text = CheckedContent(content, size);
    const auto longLines = keepRows > 0 ? ExtraValues::DropValues : ExtraValues::DropLine;
    auto result = Read(text, {}, longLines);
    auto problems = ProblemsOf(result);
    *table = result.table.Detach();
    *errors = problems.Detach();
  });
}

bool Data_ParseCsvWithSeparator(const char* content, const char* separator, ITable** table,
                                std::uint64_t size, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(table);
    const auto text = CheckedContent(content, size);
    *table = Read(text, CheckedSeparator(separator), ExtraValues::Fail).table.Detach();
  });
}

bool Data_ConvertTableToCsv(ITable* table, const char* separator, IString** text, bool alwaysQuote,
                            Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(text);
    Core::CheckArgument(table);
    Core::Parts parts;
    MemoryText csv;
    WriteCsv(*table, {CheckedSeparator(separator), alwaysQuote}, parts, csv);
    *text = csv.Take().Detach();
  });
}

Data::Structures::ValueType Data_DetectValueType(const char* text, std::uint64_t size) {
  return text ? DetectValueType({text, size}) : Data::Structures::ValueType::Unknown;
}
