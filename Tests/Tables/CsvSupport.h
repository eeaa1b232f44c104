#pragma once

#include "Prelude.h"

namespace Data::tests {

/// The result of reading: a table and the messages for bad lines, or a failure.
struct CsvResult {
  Ptr<ITable> table;
  std::vector<std::string> problems;
  std::string failure;
};

/// A block of exactly the text's size: reading a byte too far shows under the
/// address sanitizer.
inline std::unique_ptr<char[]> ExactCopy(std::string_view text) {
  auto copy = std::make_unique<char[]>(text.size());
  text.copy(copy.get(), text.size());
  return copy;
}

/// @param separator  null to detect it
inline CsvResult ReadCsv(std::string_view text, const char* separator = nullptr) {
  CsvResult result;
  Ptr<IErrorCode> error;
  ITable** const out = result.table.Receive();
  const auto copy = ExactCopy(text);
  const bool succeeded = separator ? Data_ParseCsvWithSeparator(copy.get(), separator, out,
                                                                text.size(), error.Receive())
                                   : Data_ParseCsv(copy.get(), text.size(), out, error.Receive());
  EXPECT_EQ(succeeded, result.table && !error);
  result.failure = MessageOf(error);
  return result;
}

inline CsvResult ReadCsvWithErrors(std::string_view text, std::int32_t keepRows) {
  CsvResult result;
  Ptr<IObjectList> problems;
  EXPECT_TRUE(Data_ParseCsvWithErrors(ExactCopy(text).get(), result.table.Receive(),
                                      problems.Receive(), text.size(), keepRows, nullptr));
  for (std::uint64_t i = 0; i < problems->GetCount(); ++i)
    result.problems.emplace_back(Core::CastToInterface<IString>(problems->GetAt(i))->GetUtf8());
  return result;
}

/// ~ for Null, 12 an Int64, 1.5f a Double, @2024-... a DateTime, 'abc' a String,
/// true a Bool, the text of a document.
inline std::string ShowCell(const _VARIANT& cell) {
  switch (Core::TypeOf(cell)) {
    case ValueType::Null:
      return "~";
    case ValueType::Int64:
    case ValueType::Bool:
    case ValueType::JsonDocument:
      return Core::ToText(cell);
    case ValueType::Double:
      return Outcome([&] { return Core::ToDouble(cell); }) + "f";
    case ValueType::DateTime:
      return "@" + Core::ToText(cell).substr(0, 23);
    case ValueType::String:
      return "'" + Core::ToText(cell) + "'";
    default:
      return "?" + std::string(Core::GetValueTypeName(Core::TypeOf(cell)));
  }
}

/// The names on the first line, then the cells, separated by " / ".
inline std::string ShowTable(ITable& table) {
  std::string text;
  const auto columns = static_cast<std::int32_t>(table.GetColumnCount());
  for (std::int32_t i = 0; i < columns; ++i)
    text += (i == 0 ? "" : " / ") + std::string(table.GetColumn(i)->GetName());
  for (std::int64_t row = 0; row < table.GetRowCount(); ++row) {
    EXPECT_EQ(table.GetRow(row)->GetCellCount(), columns);
    for (std::int32_t i = 0; i < columns; ++i)
      text += (i == 0 ? "\n" : " / ") + ShowCell(*table.GetRow(row)->GetCellAt(i));
  }
  return text;
}

/// The table, or "! " and the failure.
inline std::string Show(const CsvResult& result) {
  return result.table ? ShowTable(*result.table) : "! " + result.failure;
}

}  // namespace Data::tests
