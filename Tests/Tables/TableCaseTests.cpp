#include <optional>

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

/// Replaces one operation of an object by the caller's, until it goes out of scope.
template <std::size_t slotCount>
class OwnSlots {
 public:
  OwnSlots(IObject* object, std::size_t slot, auto operation)
      : slots_(*reinterpret_cast<void***>(object)), before_(slots_) {
    std::copy_n(before_ - kPrefix, std::size(own_), own_);
    own_[kPrefix + slot] = reinterpret_cast<void*>(+operation);
    slots_ = own_ + kPrefix;
  }
  ~OwnSlots() { slots_ = before_; }
  OwnSlots(const OwnSlots&) = delete;
  OwnSlots& operator=(const OwnSlots&) = delete;

 private:
  static constexpr std::size_t kPrefix = 2;  // the ABI's own entries, the last for the type
  void**& slots_;
  void** before_;
  void* own_[kPrefix + slotCount];
};

/// Moves the cells of every row.
void AddColumns(ITable& table) {
  for (int i = 0; i < 20; ++i)
    table.AddColumn(("c" + std::to_string(table.GetColumnCount())).c_str());
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
  const auto noName = [](IColumn*) -> const char* { return nullptr; };
  std::optional<OwnSlots<27>> own(std::in_place, table->GetColumn(0), 6, noName);
  Ptr<ITable> merged;
  Ptr<IString> csv;
  Ptr<IJsonDocument> json;
  EXPECT_TRUE(table->Merge(table.Get(), "", MergeMode::All, merged.Receive(), nullptr));
  EXPECT_TRUE(Data_ConvertTableToCsv(table.Get(), ",", csv.Receive(), false, nullptr));
  EXPECT_TRUE(Data_TableToJson(table.Get(), json.Receive(), nullptr));
  own.reset();
  EXPECT_EQ(NamesOf(*merged) + TextOf(*merged), "x");
  EXPECT_STREQ(csv->GetUtf8(), "\nx");
  EXPECT_STREQ(json->GetContent()->GetUtf8(), R"([{"":"x"}])");
}

/// A row of the caller's own moves its cells when they are counted.
TEST(Tables, WriteRowsThatMoveTheirCells) {
  const auto table = TableOf("a b; ~x,2");
  table->AddColumn("c");
  const auto countCells = [](IRow* row) -> std::int64_t {
    AddColumns(*row->GetTable());
    return row->GetTable()->GetColumnCount();
  };
  Ptr<IJsonDocument> json;
  {
    const OwnSlots<28> own(table->GetRow(0), 17, countCells);
    EXPECT_TRUE(Data_TableRowToJson(table->GetRow(0), json.Receive(), nullptr));
  }
  EXPECT_STREQ(json->GetContent()->GetUtf8(), R"({"a":"x","b":2,"c":null})");
}

/// A table of the caller's own moves its cells when its rows are counted.
TEST(Tables, WriteTablesThatMoveTheirCells) {
  struct CallersTable : ITable {};
  static ITable* inner;
  const auto table = TableOf("a b; ~x,2");
  table->AddColumn("c");
  inner = table.Get();
  // Only the operations that a writer needs.
  void* slots[2 + 40] = {nullptr, const_cast<std::type_info*>(&typeid(CallersTable))};
  const auto set = [&](std::size_t slot, auto operation) {
    slots[2 + slot] = reinterpret_cast<void*>(+operation);
  };
  set(0, [](ITable*) {});
  set(1, [](ITable*) -> std::uint32_t { return 1; });
  set(9, [](ITable*, std::int32_t index) { return inner->GetColumn(index); });
  set(11, [](ITable*) { return inner->GetColumnCount(); });
  set(17, [](ITable*, std::int64_t index) { return inner->GetRow(index); });
  set(19, [](ITable*) {
    AddColumns(*inner);
    return inner->GetRowCount();
  });
  void** object = slots + 2;
  Ptr<IString> csv;
  EXPECT_TRUE(Data_ConvertTableToCsv(reinterpret_cast<ITable*>(&object), ",", csv.Receive(), false,
                                     nullptr));
  EXPECT_STREQ(csv->GetUtf8(), "a,b,c\nx,2,");
}

TEST(Tables, AddNoRowToOtherColumns) {
  for (const char* script :
       {"AddRowCopy row", "AddRowFromDictionary dictionary", "AddRow (~x 1)"}) {
    for (const char* change : {"RemoveColumn b", "AddColumn c"}) {
      Scene scene(TableOf("a b; ~x,1"));
      const auto dictionary = New(Data_CreateVariantDictionary);
      EXPECT_TRUE(dictionary->Set(Given("a"), Given(ValueOf("~x")), nullptr));
      scene.objects = {{"dictionary", dictionary}};
      bool isChanged = false;
      *kOnUse = [&] {
        if (!std::exchange(isChanged, true)) scene.Run(change);
      };
      EXPECT_EQ(ThrownBy([&] { scene.Run(script); }), "Error while setting cell value")
          << script << ": " << change;
      *kOnUse = [] {};
    }
  }
}

/// A cell whose reference could not be added is not released either.
TEST(Tables, AddNoRowWithoutItsReferences) {
  const auto table = TableOf("a b");
  const auto text = Core::MakePtr<CallersText>("x");
  const Cells cells = {1, Reference(ValueType::String, text)};
  text->onAddReference = [] { throw std::runtime_error("no more references"); };
  EXPECT_EQ(ThrownBy([&] { table->AddRow(cells.data(), 2); }), "no more references");
  text->onAddReference = [] {};
  EXPECT_EQ(ReferencesTo(text), 2u);
  EXPECT_EQ(table->GetRowCount(), 0);
}

}  // namespace Data::tests
