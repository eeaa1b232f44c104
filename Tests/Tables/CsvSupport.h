#pragma once

#include "Prelude.h"

namespace Data::tests {

enum class CsvMode { Detect, KeepRows, SkipRows };

/// What came of reading: a table, messages of bad lines, or a failure.
struct CsvResult {
  Core::Ptr<Interfaces::ITable> table;
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

inline CsvResult ReadCsv(std::string_view text, CsvMode mode = CsvMode::Detect) {
  const auto copy = ExactCopy(text);
  CsvResult result;
  Core::Ptr<Core::IErrorCode> error;
  Core::Ptr<Interfaces::IObjectList> problems;
  const bool succeeded =
      mode == CsvMode::Detect
          ? Data_ParseCsv(copy.get(), text.size(), result.table.Receive(), error.Receive())
          : Data_ParseCsvWithErrors(copy.get(), result.table.Receive(), problems.Receive(),
                                    text.size(), mode == CsvMode::KeepRows, error.Receive());
  result.failure = MessageOf(error);
  EXPECT_EQ(succeeded, static_cast<bool>(result.table));
  EXPECT_EQ(succeeded, !error);
  for (std::uint64_t i = 0; problems && i < problems->GetCount(); ++i)
    result.problems.emplace_back(
        Core::CastToInterface<Interfaces::IString>(problems->GetAt(i))->GetUtf8());
  return result;
}

inline CsvResult ReadSeparatedBy(const char* separator, std::string_view text) {
  const auto copy = ExactCopy(text);
  CsvResult result;
  Core::Ptr<Core::IErrorCode> error;
  Data_ParseCsvWithSeparator(copy.get(), separator, result.table.Receive(), text.size(),
                             error.Receive());
  result.failure = MessageOf(error);
  return result;
}

/// ~ for Null, 12 an Int64, 1.5f a Double, @2024-... a DateTime, 'abc' a String.
inline std::string ShowCell(const Structures::_VARIANT& cell) {
  char digits[32];
  switch (Core::TypeOf(cell)) {
    case Core::ValueType::Null:
      return "~";
    case Core::ValueType::Int64:
      return Core::ToText(cell);
    case Core::ValueType::Double:
      return std::string(digits,
                         std::to_chars(digits, std::end(digits), Core::ToDouble(cell)).ptr) +
             "f";
    case Core::ValueType::DateTime:
      return "@" + Core::ToText(cell).substr(0, 23);
    case Core::ValueType::String:
      return "'" + Core::ToText(cell) + "'";
    default:
      return "?" + std::string(Core::GetValueTypeName(Core::TypeOf(cell)));
  }
}

/// The names on the first line, then the cells, separated by "|".
inline std::string ShowTable(Interfaces::ITable& table) {
  std::string text;
  const auto columns = static_cast<std::int32_t>(table.GetColumnCount());
  for (std::int32_t i = 0; i < columns; ++i)
    text += (i == 0 ? "" : "|") + std::string(table.GetColumn(i)->GetName());
  for (std::int64_t row = 0; row < table.GetRowCount(); ++row) {
    EXPECT_EQ(table.GetRow(row)->GetCellCount(), columns);
    for (std::int32_t i = 0; i < columns; ++i)
      text += (i == 0 ? "\n" : "|") + ShowCell(*table.GetRow(row)->GetCellAt(i));
  }
  return text;
}

/// The table, or "! " and the failure.
inline std::string Show(const CsvResult& result) {
  return result.table ? ShowTable(*result.table) : "! " + result.failure;
}

}  // namespace Data::tests
