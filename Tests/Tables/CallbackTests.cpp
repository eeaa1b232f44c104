#include "Tables/TableScript.h"

namespace Data::tests {

using Structures::MergeMode;

namespace {

/// A table whose cells are texts of the caller's own, and what else operations take.
struct Scene {
  Scene() {
    const Variant key("key"), value = ValueOf("~new");
    dictionary->Set(&key, &value, nullptr);
  }

  Ptr<IVariantDictionary> dictionary = New(Data_CreateVariantDictionary);
  Ptr<ITable> table = TableOf("key n; ~k,~a; ~l,~b; ~same,~c");
  Ptr<ITable> other = TableOf("key n; ~o,~a; ~same,~b");
};

void CheckFound(Scene& scene, IRow* row) {
  EXPECT_TRUE(!row || !scene.table || row->GetTable() == scene.table.Get());
}

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

/// Operations beside those of scripts.
const std::map<std::string, void (*)(Scene&, ITable&, Step&)> kSceneOperations = {
    {"End", [](Scene& s, ITable&, Step&) { s.table.Reset(); }},
    {"AddRowFromDictionary",
     [](Scene& s, ITable& t, Step&) { t.AddRowFromDictionary(s.dictionary.Get()); }},
    {"AddRowOfOther", [](Scene& s, ITable& t, Step&) { t.AddRowCopy(s.other->GetRow(0)); }},
    {"InsertRowOfOther",
     [](Scene& s, ITable& t, Step&) { t.InsertRowCopy(3, s.other->GetRow(0)); }},
    {"SetValue",
     [](Scene&, ITable& t, Step& step) {
       Ptr<IValue> value;
       Ptr<IString> text;
       t.GetRow(1)->GetValue(0, value.Receive());
       value->SetValue(step.Value(0));
       value->GetText(text.Receive());
       EXPECT_STREQ(text->GetUtf8(), "new");
     }},
    {"ColumnFindRow", [](Scene& s, ITable& t,
                         Step& step) { CheckFound(s, t.GetColumn(0)->FindRow(step.Value(0))); }},
    {"FindRow", [](Scene& s, ITable& t, Step& step) { CheckFound(s, t.FindRow(step.Value(0))); }},
    {"Merge",
     [](Scene& s, ITable& t, Step&) {
       Ptr<ITable> merged;
       t.Merge(s.other.Get(), "key", MergeMode::All, merged.Receive(), nullptr);
       if (merged) CheckWhole(*merged, "merged");
     }},
    {"MergeWithItself",
     [](Scene&, ITable& t, Step&) {
       t.MergeOn(&t, "key", "n", MergeMode::AllLeft, Ptr<ITable>().Receive(), nullptr);
     }},
};

/// A script, ready to run while callbacks come.
std::function<void(Scene&, ITable&)> Script(std::string_view text) {
  const auto steps = std::make_shared<std::vector<Step>>(StepsOf(text));
  for (Step& step : *steps) {
    step.isRunOnce = true;
    step.out = ValueOf("~out");
  }
  return [steps](Scene& scene, ITable& table) {
    for (Step& step : *steps) {
      if (table.GetRowCount() > 0) step.firstCell = table.GetCellAt(0, 0);
      if (const auto special = kSceneOperations.find(step.name); special != kSceneOperations.end())
        special->second(scene, table, step);
      else
        kOperations.at(step.name)(table, step);
    }
  };
}

}  // namespace

TEST(TableCallbacks, LeaveTheTableWhole) {
  for (const Case& operation : Cases("Tables.txt", "callbacks")) {
    for (const Case& action : Cases("Tables.txt", "callback actions")) {
      for (const bool isIndexed : {false, true}) {
        for (int use = 1; use < 12; ++use) {
          const std::string what = operation.where + ", use " + std::to_string(use) + ": " +
                                   action.fields[0] + (isIndexed ? ", indexed" : "");
          {
            Scene scene;
            ITable& table = *scene.table;
            const auto run = Script(operation[0]), act = Script(action[0]);
            if (isIndexed) table.BuildIndex(0, table.GetColumn(0), nullptr);
            int usesLeft = use;
            *kOnUse = [&] {
              if (usesLeft > 0 && --usesLeft == 0) ThrownBy([&] { act(scene, table); });
            };
            ThrownBy([&] { run(scene, table); });
            *kOnUse = [] {};
            if (scene.table) CheckWhole(*scene.table, what);
          }
          ASSERT_EQ(kOnUse.use_count(), 1) << what << ": every reference is given back";
        }
      }
    }
  }
}

/// Operations end, though every use of a cell adds a row with such a cell.
TEST(TableCallbacks, DoNotFollowRowsThatTheyAdd) {
  const std::function<void(ITable&, const Variant&)> operations[] = {
      [](ITable& t, const Variant& own) { t.GetColumn(1)->Fill(&own); },
      [](ITable& t, const Variant&) {
        Ptr<IVariantList> values;
        t.GetColumn(0)->GetValues(values.Receive());
      },
      [](ITable& t, const Variant&) {
        Ptr<IObjectList> rows;
        t.FindRows("a", Given("none"), rows.Receive(), nullptr);
      },
      [](ITable& t, const Variant&) { t.BuildIndex(0, t.GetColumn(0), nullptr); },
      [](ITable& t, const Variant&) {
        Ptr<ITable> merged;
        t.Merge(&t, "b", MergeMode::All, merged.Receive(), nullptr);
      },
  };
  for (const auto& operation : operations) {
    const auto text = Core::MakePtr<CallersText>("text");
    const Variant own{Ptr<IString>(text.Get())};
    const auto table = MakeTable({"a", "b"}, {{own, 1}, {own, 2}});
    bool isAdding = false;
    text->onRead = text->onAddReference = [&] {
      if (std::exchange(isAdding, true)) return;
      if (table->GetRowCount() < 1000) table->AddRow(&own, 1);
      isAdding = false;
    };
    operation(*table, own);
    EXPECT_LT(table->GetRowCount(), 1000) << &operation - operations;
    text->onRead = text->onAddReference = [] {};
  }
}

TEST(TableCallbacks, MergeLooksUpColumnsAgain) {
  auto text = Core::MakePtr<CallersText>("text");
  const Variant own{Ptr<IString>(text.Get())};
  const auto left = MakeTable({"a", "b", "c"}, {{own, "b", "c"}, {"x", "b", "c"}});
  const auto right = MakeTable({"a"}, {{"x"}});
  bool isDone = false;
  text->onAddReference = [&] {
    if (!std::exchange(isDone, true)) left->RemoveColumn("b");
  };
  Ptr<ITable> merged;
  ASSERT_TRUE(left->Merge(right.Get(), "a", MergeMode::AllLeft, merged.Receive(), nullptr));
  EXPECT_EQ(TextOf(*merged), "text,,c x,,c");
}

/// A null name counts as empty.
TEST(TableCallbacks, ReadAColumnWithoutAName) {
  const auto table = MakeTable({"a"}, {{Ptr<IString>(Core::MakePtr<CallersText>("x"))}});
  // The column gets a virtual table of its own, in which one operation is the caller's.
  void**& slots = *reinterpret_cast<void***>(table->GetColumn(0));
  void** const before = slots;
  void* own[2 + 27];
  std::copy_n(before - 2, std::size(own), own);
  own[2 + 6] = reinterpret_cast<void*>(+[](IColumn*) -> const char* { return nullptr; });
  slots = own + 2;
  Ptr<ITable> merged;
  Ptr<IString> csv;
  Ptr<IJsonDocument> json;
  EXPECT_TRUE(table->Merge(table.Get(), "", MergeMode::All, merged.Receive(), nullptr));
  EXPECT_TRUE(Data_ConvertTableToCsv(table.Get(), ",", csv.Receive(), false, nullptr));
  EXPECT_TRUE(Data_TableToJson(table.Get(), json.Receive(), nullptr));
  slots = before;
  EXPECT_EQ(NamesOf(*merged) + TextOf(*merged), "x");
  EXPECT_STREQ(csv->GetUtf8(), "\nx");
  EXPECT_STREQ(json->GetContent()->GetUtf8(), R"([{"":"x"}])");
}

}  // namespace Data::tests
