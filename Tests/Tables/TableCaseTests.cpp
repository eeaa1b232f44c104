#include "Script.h"
#include "Tables/TableSupport.h"

namespace Data::tests {

using Structures::MergeMode;

namespace {

/// Every row knows its position and has a cell per column, and an index finds each of them and no
/// others.
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
  for (const char* key : {"k", "new"}) {
    IRow* const found = table.GetIndexColumn() ? table.FindRow(Given(key)) : nullptr;
    ASSERT_TRUE(!found || found->GetTable() == &table) << what;
  }
}

}  // namespace

TEST(Tables, AnswerFailOrChange) {
  for (const char* section : {"rows", "columns", "failures", "row failures", "index", "merge"}) {
    for (const Case& c : Cases("Tables.txt", section)) {
      const std::size_t slash = std::min(c[0].find(" / "), c[0].size());
      const auto other = TableOf(c[0].substr(std::min(slash + 3, c[0].size())));
      other->GetHeader()->SetName("O");
      Scene scene(TableOf(c[0].substr(0, slash)));
      scene.objects = {{"other", other},
                       {"@", New(Data_CreateArray)},
                       {"dictionary", New(Data_CreateVariantDictionary)}};
      scene.Run("header.SetName T");
      const std::string answers = scene.Answers(c[1]);
      EXPECT_EQ(answers.empty() ? scene.Answers("Rows") : answers, c[2]) << c.where << ": " << c[3];
    }
  }
}

TEST(Tables, StayWholeWhileCallbacksCome) {
  for (const bool isIndexed : {false, true}) {
    const auto make = [&] {
      Scene scene(TableOf("key n; ~k,~a; ~l,~b; ~same,~c; Null; 12345678a"));
      const auto other = TableOf("key n; ~o,~a; ~same,~b");
      const auto dictionary = New(Data_CreateVariantDictionary);
      const Variant key("key"), value = ValueOf("~new");
      dictionary->Set(&key, &value, nullptr);
      scene.objects = {
          {"other", other}, {"otherRow", Ptr<IRow>(other->GetRow(0))}, {"dictionary", dictionary}};
      if (isIndexed) scene.Run("BuildIndex 0, column");
      return scene;
    };
    const auto check = [](Scene& scene, const std::string& what) {
      if (scene.owner) CheckWhole(static_cast<ITable&>(*scene.self), what);
      if (const auto merged = scene.objects.find("merged"); merged != scene.objects.end())
        CheckWhole(*merged->second.As<Ptr<ITable>>(), "merged: " + what);
    };
    CallBackAtEveryUse("Tables.txt", "callbacks", "callback actions", make, check);
  }
}

/// Operations end, though every use of a cell adds a row with such a cell.
TEST(Tables, DoNotFollowRowsThatTheyAdd) {
  for (const char* script : {"column1.Fill ~text", "column.GetValues", "FindRows a, none",
                             "BuildIndex 0, column", "Merge self, b, 2"}) {
    const auto table = TableOf("a b; ~text,1; ~text,2");
    Scene scene(table);
    const Variant own = ValueOf("~text");
    bool isAdding = false;
    *kOnUse = [&] {
      if (std::exchange(isAdding, true)) return;
      if (table->GetRowCount() < 1000) table->AddRow(&own, 1);
      isAdding = false;
    };
    scene.Run(script);
    EXPECT_LT(table->GetRowCount(), 1000) << script;
    *kOnUse = [] {};
  }
}

TEST(TableMerge, LooksUpColumnsAgain) {
  Scene scene(TableOf("a b c; ~text,b,c; x,b,c"));
  scene.objects = {{"other", TableOf("a; x")}};
  *kOnUse = [&] {
    *kOnUse = [] {};
    scene.Run("RemoveColumn b");
  };
  scene.Run("merged = Merge other, a, 1");
  EXPECT_EQ(scene.Answers("merged.Names; merged.Rows"), "a b c ~ text,,c x,,c");
}

/// A null name counts as empty.
TEST(Tables, ReadAColumnWithoutAName) {
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
