#pragma once

#include <map>
#include <sstream>

#include "CallersText.h"
#include "Tables/TableSupport.h"

/// Tables and operations on them as text: what Tests/Data/Tables.txt consists of.
namespace Data::tests {

/// Called whenever the library uses a text of the caller's own.
inline const auto kOnUse = std::make_shared<std::function<void()>>([] {});

/// A value as text: a number, "1L" an Int64, "Null", a record by name, "~a" a text object of a
/// caller's own, anything else itself.
inline Variant ValueOf(const std::string& text) {
  if (text.starts_with('~')) {
    auto own = Core::MakePtr<CallersText>(text.c_str() + 1);
    own->onAddReference = own->onRelease = own->onRead = [onUse = kOnUse] { (*onUse)(); };
    return Reference(ValueType::String, std::move(own));
  }
  if (text == "Null") return Null;
  if (text == "Unknown") return ByValue(ValueType::Unknown);
  if (text == "undefined") return Variant::Adopt({28, {0, 0}});
  if (text == "nullText") return NullReference(ValueType::String);
  if (text == "nullDate") return NullReference(ValueType::DateTime);
  if (text == "error") return SomeError();
  const char *const begin = text.data(), *const end = begin + text.size();
  double real = 0;
  const auto parsed = std::from_chars(begin, end, real);
  if (parsed.ec != std::errc() || parsed.ptr + 1 < end) return text;
  if (parsed.ptr < end) return *parsed.ptr == 'L' ? Variant(static_cast<std::int64_t>(real)) : text;
  return text.find('.') == text.npos ? Variant(static_cast<int>(real)) : Variant(real);
}

/// Values separated by commas; none for "-".
inline Cells CellsOf(const std::string& text) {
  Cells cells;
  std::istringstream list(text);
  for (std::string value; text != "-" && std::getline(list, value, ',');)
    cells.push_back(ValueOf(value));
  return cells;
}

/// An operation: its name, the words behind it, the first one also as cells, and what it answers.
struct Step {
  explicit Step(std::string_view text) {
    std::istringstream parts{std::string(text)};
    parts >> name;
    for (std::string word; parts >> word;) {
      words.push_back(word);
      values.push_back(ValueOf(word));
    }
    if (!words.empty()) cells = CellsOf(words[0]);
  }

  std::int32_t Number(std::size_t i) const { return std::stoi(words.at(i)); }
  /// "null" is a null pointer.
  const char* Name(std::size_t i) const {
    return words.at(i) == "null" ? nullptr : words.at(i).c_str();
  }
  /// "cell" is the first cell of the table itself.
  const _VARIANT* Value(std::size_t i) {
    if (words.at(i) == "cell") return firstCell;
    return words[i] == "null" ? nullptr : &values.at(i);
  }
  /// The cells that the first word lists.
  const _VARIANT* First() {
    return words.at(0) == "null" || words[0] == "cell" ? Value(0) : cells.data();
  }
  /// A record that holds a reference; null for one more word.
  _VARIANT* Out(std::size_t i) {
    isRead = i >= words.size();
    return isRead ? &out : nullptr;
  }

  /// Runs a guarded operation; a failure is the answer.
  template <class Operation>
  void Check(Operation&& operation) {
    if (isRunOnce)
      operation(nullptr);
    else
      answer = Failure(operation);
  }
  std::string Answer() const { return answer.empty() && isRead ? Core::ToText(out) : answer; }

  std::string name, answer;
  std::vector<std::string> words;
  Cells values, cells;
  Variant out{std::string(40, 'o')};
  const _VARIANT* firstCell = nullptr;
  bool isRead = false;
  bool isRunOnce = false;  ///< a failure is not tried again
};

/// A table of text: "a b; 1,x; 2".
inline Ptr<ITable> TableOf(std::string_view text) {
  const auto table = New(Data_CreateTable);
  std::istringstream parts{std::string(text)};
  std::string part;
  std::getline(parts, part, ';');
  std::istringstream names(part);
  for (std::string name; names >> name;) table->AddColumn(name.c_str());
  while (parts >> std::ws && std::getline(parts, part, ';')) {
    const Cells cells = CellsOf(part);
    table->AddRow(cells.data(), cells.size());
  }
  return table;
}

inline std::string FirstOf(IRow* row) { return row ? Core::ToText(*row->GetCellAt(0)) : "none"; }

inline std::string FirstOf(IObjectList& rows) {
  std::string text;
  for (std::uint64_t i = 0; i < rows.GetCount(); ++i)
    text += (i == 0 ? "" : " ") + FirstOf(Core::CastToInterface<IRow>(rows.GetAt(i)).Get());
  return text.empty() ? "none" : text;
}

inline const std::map<std::string, void (*)(ITable&, Step&)> kOperations = {
    {"AddColumn", [](ITable& t, Step& s) { t.AddColumn(s.Name(0)); }},
    {"InsertColumn", [](ITable& t, Step& s) { t.InsertColumn(s.Name(0), s.Number(1)); }},
    {"RemoveColumn", [](ITable& t, Step& s) { t.RemoveColumn(s.Name(0)); }},
    {"RemoveColumnAt", [](ITable& t, Step& s) { t.RemoveColumnAt(s.Number(0)); }},
    {"GetColumn", [](ITable& t, Step& s) { s.answer = t.GetColumn(s.Number(0))->GetName(); }},
    {"GetColumnByName",
     [](ITable& t, Step& s) { s.answer = t.GetColumnByName(s.Name(0))->GetName(); }},
    {"HasColumn", [](ITable& t, Step& s) { s.answer = t.HasColumn(s.Name(0)) ? "yes" : "no"; }},
    {"OnColumnAdded", [](ITable& t, Step& s) { t.OnColumnAdded(t.GetColumn(s.Number(0))); }},
    {"Names", [](ITable& t, Step& s) { s.answer = NamesOf(t); }},
    {"Types", [](ITable& t, Step& s) { s.answer = ShowColumns(t); }},
    {"Rename", [](ITable& t, Step& s) { t.GetColumn(s.Number(0))->SetName(s.Name(1)); }},
    {"Fill", [](ITable& t, Step& s) { t.GetColumn(s.Number(0))->Fill(s.Value(1)); }},
    {"SetType", [](ITable& t, Step& s) { t.GetColumn(0)->SetType(ValueType(s.Number(0))); }},
    {"ColumnFindRow",
     [](ITable& t, Step& s) { s.answer = FirstOf(t.GetColumn(s.Number(0))->FindRow(s.Value(1))); }},
    {"GetCellAt",
     [](ITable& t, Step& s) { s.answer = Core::ToText(*t.GetCellAt(s.Number(0), s.Number(1))); }},
    {"SetCell", [](ITable& t, Step& s) { t.SetCell(s.Number(0), s.Number(1), s.Value(2)); }},
    {"SetCellByName",
     [](ITable& t, Step& s) { t.SetCellByName(s.Number(0), s.Name(1), s.Value(2)); }},
    {"GetCell", [](ITable& t, Step& s) { t.GetCell(s.Number(0), s.Number(1), s.Out(2)); }},
    {"GetCellByName",
     [](ITable& t, Step& s) { t.GetCellByName(s.Number(0), s.Name(1), s.Out(2)); }},
    {"AddRow", [](ITable& t, Step& s) { t.AddRow(s.First(), s.cells.size()); }},
    {"InsertRow", [](ITable& t, Step& s) { t.InsertRow(s.Number(1), s.First(), s.cells.size()); }},
    {"GetRow", [](ITable& t, Step& s) { s.answer = FirstOf(t.GetRow(s.Number(0))); }},
    {"AddRowCopy",
     [](ITable& t, Step& s) {
       t.AddRowCopy(s.words[0] == "null" ? nullptr : t.GetRow(s.Number(0)));
     }},
    {"InsertRowCopy",
     [](ITable& t, Step& s) { t.InsertRowCopy(s.Number(0), t.GetRow(s.Number(1))); }},
    {"AddRowFromNull", [](ITable& t, Step&) { t.AddRowFromDictionary(nullptr); }},
    {"RemoveRow", [](ITable& t, Step& s) { t.RemoveRow(s.Number(0)); }},
    {"RemoveRows", [](ITable& t, Step& s) { t.RemoveRows(s.Number(0), s.Number(1)); }},
    {"ClearRows", [](ITable& t, Step&) { t.ClearRows(); }},
    {"BuildIndex",
     [](ITable& t, Step& s) {
       s.Check(
           [&](auto e) { return t.BuildIndex(s.words.size() > 1, t.GetColumn(s.Number(0)), e); });
     }},
    {"ClearIndexes", [](ITable& t, Step&) { t.ClearIndexes(); }},
    {"FindRow", [](ITable& t, Step& s) { s.answer = FirstOf(t.FindRow(s.Value(0))); }},
    {"IndexName", [](ITable& t, Step& s) { s.answer = t.GetHeader()->GetIndexName(); }},
    {"FindRows",
     [](ITable& t, Step& s) {
       Ptr<IObjectList> rows;
       s.Check([&](auto e) { return t.FindRows(s.Name(0), s.Value(1), rows.Receive(), e); });
       if (rows && !s.isRunOnce) s.answer = FirstOf(*rows);
     }},
    {"GetRows",
     [](ITable& t, Step& s) {
       Ptr<IObjectList> rows;
       s.Check([&](auto e) { return t.GetRows(rows.Receive(), e); });
       s.answer = FirstOf(*rows);
     }},
    {"row.GetCell", [](ITable& t, Step& s) { t.GetRow(0)->GetCell(s.Number(0), s.Out(1)); }},
    {"row.TryGetCell",
     [](ITable& t, Step& s) {
       s.Check([&](auto e) { return t.GetRow(0)->TryGetCell(s.Number(0), s.Out(1), e); });
     }},
    {"row.GetCellByName",
     [](ITable& t, Step& s) { t.GetRow(0)->GetCellByName(s.Name(0), s.Out(1)); }},
    {"row.TryGetCellByName",
     [](ITable& t, Step& s) {
       s.Check([&](auto e) { return t.GetRow(0)->TryGetCellByName(s.Name(0), s.Out(1), e); });
     }},
    {"row.GetCellOfColumn",
     [](ITable& t, Step& s) { t.GetRow(0)->GetCellOfColumn(t.GetColumn(s.Number(0)), s.Out(1)); }},
    {"row.GetCellText",
     [](ITable& t, Step& s) {
       Ptr<IString> text;
       t.GetRow(0)->GetCellText(s.Number(0), text.Receive());
       s.answer = text->GetUtf8();
     }},
    {"row.GetValue",
     [](ITable& t, Step& s) {
       Ptr<IValue> value;
       t.GetRow(0)->GetValue(s.Number(0), value.Receive());
       value->GetValue(s.Out(1));
     }},
    {"row.SetCellOfColumn",
     [](ITable& t, Step& s) {
       t.GetRow(0)->SetCellOfColumn(t.GetColumn(s.Number(0)), s.Value(1));
     }},
    {"row.SetCell", [](ITable& t, Step& s) { t.GetRow(0)->SetCell(s.Number(0), s.Value(1)); }},
    {"row.SetCellByName",
     [](ITable& t, Step& s) { t.GetRow(0)->SetCellByName(s.Name(0), s.Value(1)); }},
    {"row.TrySetCellByName",
     [](ITable& t, Step& s) {
       s.Check([&](auto e) { return t.GetRow(0)->TrySetCellByName(s.Name(0), s.Value(1), e); });
     }},
    {"row.SetCells", [](ITable& t, Step& s) { t.GetRow(0)->SetCells(s.First(), s.cells.size()); }},
    {"row.GetColumn",
     [](ITable& t, Step& s) { s.answer = t.GetRow(0)->GetColumn(s.Number(0))->GetName(); }},
    {"row.GetColumnByName",
     [](ITable& t, Step& s) { s.answer = t.GetRow(0)->GetColumnByName(s.Name(0))->GetName(); }},
    {"row.IsModified",
     [](ITable& t, Step& s) { s.answer = std::to_string(t.GetRow(0)->IsModified()); }},
    {"column.GetValues",
     [](ITable& t, Step& s) {
       Ptr<IVariantList> values;
       t.GetColumn(0)->GetValues(values.Receive());
       for (std::uint64_t i = 0; values->GetAt(i, &s.out); ++i)
         s.answer += (i == 0 ? "" : " ") + Core::ToText(s.out);
     }},
    {"column.GetValue",
     [](ITable& t, Step& s) {
       s.Check([&](auto e) { return t.GetColumn(0)->GetValue(s.Number(0), s.Out(1), e); });
     }},
};

/// Operations separated by ";".
inline std::vector<Step> StepsOf(std::string_view script) {
  std::vector<Step> steps;
  std::istringstream operations{std::string(script)};
  for (std::string text; std::getline(operations, text, ';');) steps.emplace_back(text);
  return steps;
}

/// Runs a script.
/// @return the failures and answers of its operations, separated by " ~ "; without any, the rows
inline std::string AnswersOf(ITable& table, std::string_view script) {
  std::string answers;
  for (Step& step : StepsOf(script)) {
    if (table.GetRowCount() > 0) step.firstCell = table.GetCellAt(0, 0);
    const auto before = TextOf(table) + NamesOf(table);
    const auto thrown = ThrownBy([&] { kOperations.at(step.name)(table, step); });
    EXPECT_TRUE(thrown.empty() || TextOf(table) + NamesOf(table) == before) << step.name;
    const std::string answer = thrown.empty() ? step.Answer() : thrown;
    if (!answer.empty()) answers.append(answers.empty() ? "" : " ~ ").append(answer);
  }
  return answers.empty() ? TextOf(table) : answers;
}

}  // namespace Data::tests
