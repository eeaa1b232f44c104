#pragma once

#include "Prelude.h"

namespace Data::tests {

using Cells = std::vector<Core::Variant>;

inline const char* const kNullTable =
    "Null pointer exception! Interface is not accessible: struct Data::Interfaces::ITable";
inline const char* const kMissingName = "invalid unordered_map<K, T> key";

/// A value as an argument; good until the end of the statement.
inline const Structures::_VARIANT* Given(const Core::Variant& value) { return &value; }

/// A table with the given columns and rows.
inline Core::Ptr<Interfaces::ITable> MakeTable(std::initializer_list<const char*> columns,
                                               std::initializer_list<Cells> rows = {}) {
  const auto table = New(Data_CreateTable);
  for (const char* name : columns) table->AddColumn(name);
  for (const Cells& row : rows) table->AddRow(row.data(), row.size());
  return table;
}

/// The column names, separated by spaces.
inline std::string NamesOf(Interfaces::ITable& table) {
  std::string names;
  for (std::int32_t i = 0; i < table.GetColumnCount(); ++i)
    names.append(i == 0 ? "" : " ").append(table.GetColumn(i)->GetName());
  return names;
}

/// The types of the columns, with "?" for one that has seen Null.
inline std::string ShowColumns(Interfaces::ITable& table) {
  std::string text;
  for (std::int32_t i = 0; i < table.GetColumnCount(); ++i) {
    text.append(i == 0 ? "" : " ").append(Core::GetValueTypeName(table.GetColumn(i)->GetType()));
    if (table.GetColumn(i)->HasSeenNull()) text += '?';
  }
  return text;
}

/// The display texts of a row's cells, separated by commas.
inline std::string TextOf(Interfaces::IRow& row) {
  std::string text;
  for (std::int32_t i = 0; i < row.GetCellCount(); ++i)
    text.append(i == 0 ? "" : ",").append(Core::ToText(*row.GetCellAt(i)));
  return text;
}

/// The rows, separated by spaces; a row that does not know its position shows it.
inline std::string TextOf(Interfaces::ITable& table) {
  std::string text;
  for (std::int64_t i = 0; i < table.GetRowCount(); ++i) {
    Interfaces::IRow& row = *table.GetRow(i);
    text.append(i == 0 ? "" : " ").append(TextOf(row));
    if (row.GetIndex() != i) text.append("@" + std::to_string(row.GetIndex()));
  }
  return text;
}

}  // namespace Data::tests
