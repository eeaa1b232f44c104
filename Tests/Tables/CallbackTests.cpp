#include "CallersText.h"
#include "Tables/TableSupport.h"

namespace Data::tests {

using Structures::MergeMode;

namespace {

/// What a program's own texts do while the library uses them: once, at the n-th use.
struct Script {
  int usesLeft = 0;
  std::function<void()> action;

  void Use() {
    if (usesLeft > 0 && --usesLeft == 0) action();
  }
};

/// A table whose cells are such texts, and values to be written to it. Every text shares the
/// script.
struct Scene {
  explicit Scene(std::shared_ptr<Script> s) : script(std::move(s)) {
    const Variant key("key"), n("n");
    dictionary->Set(&key, &given[0], nullptr);
    dictionary->Set(&n, &given[1], nullptr);
  }

  Variant Text(const char* content) {
    auto text = Core::MakePtr<CallersText>(content);
    text->onAddReference = text->onRelease = text->onRead = [use = script] { use->Use(); };
    return Reference(ValueType::String, std::move(text));
  }

  std::shared_ptr<Script> script;
  Cells given{Text("new key"), Text("new")};
  Ptr<IVariantDictionary> dictionary = New(Data_CreateVariantDictionary);
  Ptr<ITable> table = MakeTable(
      {"key", "n"}, {{Text("k"), Text("a")}, {Text("l"), Text("b")}, {Text("same"), Text("c")}});
  Ptr<ITable> other = MakeTable({"key", "n"}, {{Text("o"), Text("a")}, {Text("same"), Text("b")}});
};

/// Every row knows its position and has a cell per column, and an index finds each of them.
void CheckWhole(ITable& table, const std::string& what) {
  for (std::int64_t i = 0; i < table.GetRowCount(); ++i) {
    IRow& row = *table.GetRow(i);
    ASSERT_EQ(row.GetIndex(), i) << what;
    ASSERT_EQ(row.GetTable(), &table) << what;
    ASSERT_EQ(row.GetCellCount(), table.GetColumnCount()) << what;
    if (IColumn* column = table.GetIndexColumn()) {
      ASSERT_EQ(table.FindRow(row.GetCellAt(column->GetIndex())), &row) << what;
    }
  }
}

}  // namespace

TEST(TableCallbacks, LeaveTheTableWhole) {
  const struct {
    const char* what;
    std::function<void(Scene&, ITable&)> run;
  } operations[] = {
      {"SetCell of a key", [](Scene& s, ITable& t) { t.SetCell(1, 0, &s.given[0]); }},
      {"SetCell", [](Scene& s, ITable& t) { t.SetCell(1, 1, &s.given[1]); }},
      {"SetCell of a value that repeats",
       [](Scene&, ITable& t) { t.SetCellByName(0, "key", t.GetCellAt(2, 0)); }},
      {"SetCell of a plain value", [](Scene&, ITable& t) { t.SetCell(1, 0, Given(1)); }},
      {"TrySetCellByName",
       [](Scene& s, ITable& t) { t.GetRow(0)->TrySetCellByName("key", &s.given[0], nullptr); }},
      {"SetCells", [](Scene& s, ITable& t) { t.GetRow(1)->SetCells(s.given.data(), 2); }},
      {"SetCells to Null",
       [](Scene&, ITable& t) {
         t.GetRow(1)->SetCells(Cells{Null, Null}.data(), 2);
       }},
      {"Fill", [](Scene& s, ITable& t) { t.GetColumn(0)->Fill(&s.given[0]); }},
      {"Fill with a plain value", [](Scene&, ITable& t) { t.GetColumn(1)->Fill(Given(1)); }},
      {"AddRow", [](Scene& s, ITable& t) { t.AddRow(s.given.data(), 2); }},
      {"AddRow of a value that repeats", [](Scene&, ITable& t) { t.AddRow(t.GetCellAt(2, 0), 1); }},
      {"InsertRow", [](Scene& s, ITable& t) { t.InsertRow(1, s.given.data(), 2); }},
      {"AddRowFromDictionary",
       [](Scene& s, ITable& t) { t.AddRowFromDictionary(s.dictionary.Get()); }},
      {"AddRowCopy", [](Scene& s, ITable& t) { t.AddRowCopy(s.other->GetRow(0)); }},
      {"AddRowCopy of its own", [](Scene&, ITable& t) { t.AddRowCopy(t.GetRow(1)); }},
      {"InsertRowCopy", [](Scene& s, ITable& t) { t.InsertRowCopy(3, s.other->GetRow(0)); }},
      {"RemoveRow", [](Scene&, ITable& t) { t.RemoveRow(1); }},
      {"RemoveRows", [](Scene&, ITable& t) { t.RemoveRows(0, 2); }},
      {"RemoveColumn", [](Scene&, ITable& t) { t.RemoveColumn("n"); }},
      {"RemoveColumnAt of the keys", [](Scene&, ITable& t) { t.RemoveColumnAt(0); }},
      {"ClearRows", [](Scene&, ITable& t) { t.ClearRows(); }},
      {"the end of the table", [](Scene& s, ITable&) { s.table.Reset(); }},
      {"GetCell", [](Scene& s, ITable& t) { t.GetCell(1, 0, &s.given[1]); }},
      {"GetCellByName", [](Scene& s, ITable& t) { t.GetCellByName(1, "key", &s.given[1]); }},
      {"GetCellText",
       [](Scene&, ITable& t) {
         Ptr<IString> text;
         t.GetRow(1)->GetCellText(0, text.Receive());
       }},
      {"GetValue, SetValue, GetText",
       [](Scene& s, ITable& t) {
         Ptr<IValue> value;
         Ptr<IString> text;
         t.GetRow(1)->GetValue(0, value.Receive());
         value->SetValue(&s.given[0]);
         value->GetText(text.Receive());
         EXPECT_STREQ(text->GetUtf8(), "new key");
       }},
      {"GetValues",
       [](Scene&, ITable& t) {
         Ptr<IVariantList> values;
         t.GetColumn(0)->GetValues(values.Receive());
       }},
      {"IColumn::FindRow",
       [](Scene& s, ITable& t) {
         IRow* row = t.GetColumn(1)->FindRow(t.GetCellAt(2, 1));
         EXPECT_TRUE(!row || !s.table || row->GetTable() == &t);
       }},
      {"FindRow",
       [](Scene& s, ITable& t) {
         IRow* row = t.FindRow(t.GetCellAt(2, 0));
         EXPECT_TRUE(!row || !s.table || row->GetTable() == &t);
       }},
      {"FindRows",
       [](Scene&, ITable& t) {
         Ptr<IObjectList> rows;
         t.FindRows("key", Given("same"), rows.Receive(), nullptr);
       }},
      {"BuildIndex", [](Scene&, ITable& t) { t.BuildIndex(0, t.GetColumn(0), nullptr); }},
      {"Merge",
       [](Scene& s, ITable& t) {
         Ptr<ITable> merged;
         t.Merge(s.other.Get(), "key", MergeMode::All, merged.Receive(), nullptr);
         if (merged) CheckWhole(*merged, "merged");
       }},
      {"Merge with itself",
       [](Scene&, ITable& t) {
         Ptr<ITable> merged;
         t.MergeOn(&t, "key", "n", MergeMode::AllLeft, merged.Receive(), nullptr);
       }},
  };
  const struct {
    const char* what;
    std::function<void(Scene&, ITable&)> run;
  } actions[] = {
      {"writes a key", [](Scene&, ITable& t) { t.SetCell(1, 0, Given("other")); }},
      {"writes a cell", [](Scene&, ITable& t) { t.SetCell(1, 1, Given("other")); }},
      {"adds a row",
       [](Scene&, ITable& t) {
         t.InsertRow(0, Cells{"first", 1}.data(), 2);
       }},
      {"adds a column", [](Scene&, ITable& t) { t.AddColumn("more"); }},
      {"removes a row", [](Scene&, ITable& t) { t.RemoveRow(1); }},
      {"removes all rows", [](Scene&, ITable& t) { t.RemoveRows(0, t.GetRowCount()); }},
      {"clears the rows", [](Scene&, ITable& t) { t.ClearRows(); }},
      {"removes the keys", [](Scene&, ITable& t) { t.RemoveColumn("key"); }},
      {"removes a column, adds another",
       [](Scene&, ITable& t) {
         t.RemoveColumn("n");
         t.AddColumn("more");
       }},
      {"builds an index",
       [](Scene&, ITable& t) { t.BuildIndex(0, t.GetColumnByName("key"), nullptr); }},
      {"drops the index", [](Scene&, ITable& t) { t.ClearIndexes(); }},
      {"ends the table", [](Scene& s, ITable&) { s.table.Reset(); }},
  };
  for (const auto& operation : operations) {
    for (const auto& action : actions) {
      for (const bool isIndexed : {false, true}) {
        for (int use = 1; use < 12; ++use) {
          const std::string what = std::string(operation.what) + ", use " + std::to_string(use) +
                                   " " + action.what + (isIndexed ? ", indexed" : "");
          const auto script = std::make_shared<Script>();
          {
            Scene scene(script);
            ITable& table = *scene.table;
            if (isIndexed) table.BuildIndex(0, table.GetColumn(0), nullptr);
            script->action = [&] { ThrownBy([&] { action.run(scene, table); }); };
            script->usesLeft = use;
            ThrownBy([&] { operation.run(scene, table); });
            script->usesLeft = 0;
            script->action = {};
            if (scene.table) CheckWhole(*scene.table, what);
          }
          ASSERT_EQ(script.use_count(), 1) << what << ": every reference is given back";
        }
      }
    }
  }
}

}  // namespace Data::tests
