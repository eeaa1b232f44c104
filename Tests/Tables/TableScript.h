#include <charconv>
#include <map>
#include <sstream>

#include "Tables/TableSupport.h"

/// Tables and operations on them as text: the cases of Tests/Data/Tables.txt.
namespace Data::tests {

using Structures::MergeMode;

namespace {

/// A value as text: a number, "1L" an Int64, "Null", a record by name, anything else itself.
Variant ValueOf(const std::string& text) {
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
Cells CellsOf(const std::string& text) {
  Cells cells;
  std::istringstream list(text);
  for (std::string value; text != "-" && std::getline(list, value, ',');)
    cells.push_back(ValueOf(value));
  return cells;
}

/// The words after the name of an operation, the first one also as cells, and what it answers.
struct Args {
  explicit Args(std::istringstream& text) {
    for (std::string word; text >> word;) {
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
  const _VARIANT* Value(std::size_t i) { return words.at(i) == "null" ? nullptr : &values.at(i); }
  _VARIANT* Out(std::size_t i) { return i < words.size() ? nullptr : &out; }

  template <class Operation>
  void Check(Operation&& operation) {
    answer = Failure(operation);
  }

  std::vector<std::string> words;
  Cells values, cells;
  Variant out;
  std::string answer;
};

/// A table of text: "a b; 1,x; 2".
Ptr<ITable> TableOf(std::string_view text) {
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

/// The rows of a table, their cells separated by commas.
std::string RowsOf(ITable& table) {
  std::string text = TextOf(table);
  std::ranges::replace(text, '|', ',');
  return text;
}

std::string FirstOf(IRow* row) { return row ? Core::ToText(*row->GetCellAt(0)) : "none"; }

std::string FoundRows(ITable& table, Args& a) {
  Ptr<IObjectList> rows;
  a.Check([&](auto e) { return table.FindRows(a.Name(0), a.Value(1), rows.Receive(), e); });
  for (std::uint64_t i = 0; rows && i < rows->GetCount(); ++i)
    a.answer += (i == 0 ? "" : " ") + FirstOf(Core::CastToInterface<IRow>(rows->GetAt(i)).Get());
  return a.answer.empty() ? "none" : a.answer;
}

/// The declared types, with "+Null" where the column has seen one.
std::string TypesOf(ITable& table) {
  std::string types;
  for (std::int32_t i = 0; i < table.GetColumnCount(); ++i) {
    IColumn& column = *table.GetColumn(i);
    types.append(i == 0 ? "" : " ").append(Core::GetValueTypeName(column.GetType()));
    if (column.HasSeenNull()) types += "+Null";
  }
  return types;
}

const std::map<std::string, void (*)(ITable&, Args&)> kOperations = {
    {"AddColumn", [](ITable& t, Args& a) { t.AddColumn(a.Name(0)); }},
    {"InsertColumn", [](ITable& t, Args& a) { t.InsertColumn(a.Name(0), a.Number(1)); }},
    {"RemoveColumn", [](ITable& t, Args& a) { t.RemoveColumn(a.Name(0)); }},
    {"RemoveColumnAt", [](ITable& t, Args& a) { t.RemoveColumnAt(a.Number(0)); }},
    {"GetColumn", [](ITable& t, Args& a) { a.answer = t.GetColumn(a.Number(0))->GetName(); }},
    {"GetColumnByName",
     [](ITable& t, Args& a) { a.answer = t.GetColumnByName(a.Name(0))->GetName(); }},
    {"HasColumn", [](ITable& t, Args& a) { a.answer = t.HasColumn(a.Name(0)) ? "yes" : "no"; }},
    {"OnColumnAdded", [](ITable& t, Args& a) { t.OnColumnAdded(t.GetColumn(a.Number(0))); }},
    {"Names", [](ITable& t, Args& a) { a.answer = NamesOf(t); }},
    {"Types", [](ITable& t, Args& a) { a.answer = TypesOf(t); }},
    {"Rename", [](ITable& t, Args& a) { t.GetColumn(a.Number(0))->SetName(a.Name(1)); }},
    {"Fill", [](ITable& t, Args& a) { t.GetColumn(a.Number(0))->Fill(a.Value(1)); }},
    {"ColumnFindRow",
     [](ITable& t, Args& a) { a.answer = FirstOf(t.GetColumn(a.Number(0))->FindRow(a.Value(1))); }},
    {"GetCellAt",
     [](ITable& t, Args& a) { a.answer = Core::ToText(*t.GetCellAt(a.Number(0), a.Number(1))); }},
    {"SetCell", [](ITable& t, Args& a) { t.SetCell(a.Number(0), a.Number(1), a.Value(2)); }},
    {"SetCellByName",
     [](ITable& t, Args& a) { t.SetCellByName(a.Number(0), a.Name(1), a.Value(2)); }},
    {"GetCell", [](ITable& t, Args& a) { t.GetCell(a.Number(0), a.Number(1), a.Out(2)); }},
    {"GetCellByName",
     [](ITable& t, Args& a) { t.GetCellByName(a.Number(0), a.Name(1), a.Out(2)); }},
    {"AddRow", [](ITable& t, Args& a) { t.AddRow(a.cells.data(), a.cells.size()); }},
    {"AddNoValues", [](ITable& t, Args&) { t.AddRow(nullptr, 1); }},
    {"InsertRow",
     [](ITable& t, Args& a) { t.InsertRow(a.Number(1), a.cells.data(), a.cells.size()); }},
    {"GetRow", [](ITable& t, Args& a) { a.answer = FirstOf(t.GetRow(a.Number(0))); }},
    {"AddRowCopy",
     [](ITable& t, Args& a) {
       t.AddRowCopy(a.words[0] == "null" ? nullptr : t.GetRow(a.Number(0)));
     }},
    {"InsertRowCopy",
     [](ITable& t, Args& a) { t.InsertRowCopy(a.Number(0), t.GetRow(a.Number(1))); }},
    {"AddRowFromNull", [](ITable& t, Args&) { t.AddRowFromDictionary(nullptr); }},
    {"RemoveRow", [](ITable& t, Args& a) { t.RemoveRow(a.Number(0)); }},
    {"RemoveRows", [](ITable& t, Args& a) { t.RemoveRows(a.Number(0), a.Number(1)); }},
    {"ClearRows", [](ITable& t, Args&) { t.ClearRows(); }},
    {"BuildIndex",
     [](ITable& t, Args& a) {
       a.Check([&](auto e) { return t.BuildIndex(0, t.GetColumn(a.Number(0)), e); });
     }},
    {"BuildSparseIndex",
     [](ITable& t, Args& a) {
       a.Check([&](auto e) { return t.BuildIndex(1, t.GetColumn(a.Number(0)), e); });
     }},
    {"ClearIndexes", [](ITable& t, Args&) { t.ClearIndexes(); }},
    {"FindRow", [](ITable& t, Args& a) { a.answer = FirstOf(t.FindRow(a.Value(0))); }},
    {"IndexName", [](ITable& t, Args& a) { a.answer = t.GetHeader()->GetIndexName(); }},
    {"FindRows", [](ITable& t, Args& a) { a.answer = FoundRows(t, a); }},
    {"row.GetCell", [](ITable& t, Args& a) { t.GetRow(0)->GetCell(a.Number(0), a.Out(1)); }},
    {"row.TryGetCell",
     [](ITable& t, Args& a) {
       a.Check([&](auto e) { return t.GetRow(0)->TryGetCell(a.Number(0), a.Out(1), e); });
     }},
    {"row.GetCellByName",
     [](ITable& t, Args& a) { t.GetRow(0)->GetCellByName(a.Name(0), a.Out(1)); }},
    {"row.TryGetCellByName",
     [](ITable& t, Args& a) {
       a.Check([&](auto e) { return t.GetRow(0)->TryGetCellByName(a.Name(0), a.Out(1), e); });
     }},
    {"row.SetCell", [](ITable& t, Args& a) { t.GetRow(0)->SetCell(a.Number(0), a.Value(1)); }},
    {"row.SetCellByName",
     [](ITable& t, Args& a) { t.GetRow(0)->SetCellByName(a.Name(0), a.Value(1)); }},
    {"row.TrySetCellByName",
     [](ITable& t, Args& a) {
       a.Check([&](auto e) { return t.GetRow(0)->TrySetCellByName(a.Name(0), a.Value(1), e); });
     }},
    {"row.SetCells",
     [](ITable& t, Args& a) { t.GetRow(0)->SetCells(a.cells.data(), a.cells.size()); }},
    {"row.SetNoCells", [](ITable& t, Args&) { t.GetRow(0)->SetCells(nullptr, 1); }},
    {"row.GetColumn",
     [](ITable& t, Args& a) { a.answer = t.GetRow(0)->GetColumn(a.Number(0))->GetName(); }},
    {"row.GetColumnByName",
     [](ITable& t, Args& a) { a.answer = t.GetRow(0)->GetColumnByName(a.Name(0))->GetName(); }},
    {"row.IsModified",
     [](ITable& t, Args& a) { a.answer = std::to_string(t.GetRow(0)->IsModified()); }},
    {"column.GetValue",
     [](ITable& t, Args& a) {
       a.Check([&](auto e) { return t.GetColumn(0)->GetValue(a.Number(0), a.Out(1), e); });
     }},
};

/// Runs operations separated by ";".
/// @return their failures and answers separated by " ~ "; without any, the rows
std::string AnswersOf(ITable& table, std::string_view script) {
  std::string answers;
  std::istringstream operations{std::string(script)};
  for (std::string text; std::getline(operations, text, ';');) {
    std::istringstream words(text);
    std::string name;
    words >> name;
    Args args(words);
    const auto before = RowsOf(table) + NamesOf(table);
    const auto thrown = ThrownBy([&] { kOperations.at(name)(table, args); });
    EXPECT_TRUE(thrown.empty() || RowsOf(table) + NamesOf(table) == before) << text;
    if (thrown.empty() && args.answer.empty()) continue;
    answers.append(answers.empty() ? "" : " ~ ").append(thrown.empty() ? args.answer : thrown);
  }
  return answers.empty() ? RowsOf(table) : answers;
}

}  // namespace

TEST(TableCases, OperationsAnswerFailOrChangeTheRows) {
  for (const char* section : {"rows", "columns", "failures", "row failures", "index"}) {
    for (const Case& c : Cases("Tables.txt", section)) {
      const auto table = TableOf(c[0]);
      table->GetHeader()->SetName("T");
      EXPECT_EQ(AnswersOf(*table, c[1]), c[2]) << c.where << ": " << c[3];
    }
  }
}

TEST(TableCases, MergesJoinRowsOfEqualKeys) {
  for (const Case& c : Cases("Tables.txt", "merge")) {
    const auto left = TableOf(c[0]), right = TableOf(c[1]);
    left->GetHeader()->SetName("cities");
    right->GetHeader()->SetName("countries");
    std::istringstream words{std::string(c[2])};
    int mode = 0;
    std::string leftKey, rightKey;
    words >> mode >> leftKey >> rightKey;
    Ptr<ITable> merged;
    const std::string failure = Failure([&](auto e) {
      const char* const names[] = {leftKey.c_str(), rightKey.c_str()};
      return left->MergeOn(right.Get(), names[0], names[1], MergeMode{mode}, merged.Receive(), e);
    });
    ASSERT_EQ(failure, merged ? "" : c[3]) << c.where << ": " << c[4];
    if (!merged) continue;
    EXPECT_EQ(NamesOf(*merged) + "; " + RowsOf(*merged), c[3]) << c.where << ": " << c[4];
    EXPECT_STREQ(merged->GetHeader()->GetName(), "cities_countries_merged");
  }
}

}  // namespace Data::tests
