#include <chrono>

#include "Tables/TableSupport.h"

namespace Data::tests {

namespace {

/// Columns a, b, c and rows 1|x|, 2|y|, 3|z|.
Ptr<ITable> ThreeRows() { return MakeTable({"a", "b", "c"}, {{1, "x"}, {2, "y"}, {3, "z"}}); }

}  // namespace

TEST(Table, FactoryIsGuarded) {
  EXPECT_FALSE(Data_CreateTable(nullptr, nullptr));
  const auto table = MakeTable({});
  ITable* held = table.Get();
  Ptr<IErrorCode> error;
  EXPECT_FALSE(Data_CreateTable(&held, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer of struct Data::Interfaces::ITable must be null in order to avoid memory "
            "leaks!");
  EXPECT_EQ(held, table.Get());
  EXPECT_EQ(TextOf(*held) + NamesOf(*held) + held->GetHeader()->GetName(), "");
}

// -- Columns --

TEST(Table, AddColumnGivesTheExistingColumnOfAName) {
  const auto table = MakeTable({"a", "b"});
  IColumn* a = table->GetColumnByName("a");
  EXPECT_EQ(table->AddColumn("a"), a);
  EXPECT_EQ(table->InsertColumn("a", -5), a) << "the name is looked at before the index";
  EXPECT_NE(table->AddColumn("A"), a) << "names differ by case";
  EXPECT_EQ(table->InsertColumn("c", 3)->GetIndex(), 3) << "at the end as AddColumn";
  EXPECT_EQ(NamesOf(*table.Get()), "a b A c");
}

TEST(Table, NewColumnsGiveEveryRowANullCell) {
  const auto table = MakeTable({"a"}, {{1}, {std::string(40, 'x')}});
  for (int i = 0; i < 100; ++i) {  // far beyond the room a row was made with
    table->AddColumn(("more" + std::to_string(i)).c_str());
    const _VARIANT cell = *table->GetCellAt(1, i + 1);
    EXPECT_EQ(cell.type, 2u);
    table->SetCell(1, i + 1, Given(i));
  }
  EXPECT_EQ(table->GetRow(1)->GetCellCount(), 101);
  EXPECT_EQ(Core::ToText(*table->GetCellAt(1, 0)), std::string(40, 'x'));
  for (int i = 0; i < 100; ++i) EXPECT_EQ(Core::ToInt64(*table->GetCellAt(1, i + 1)), i);
}

TEST(Table, AnInsertionBeforeOtherColumnsNeverReturns) {
  // In a process of its own, which ends while the insertion still runs.
  EXPECT_EXIT(
      {
        const auto table = MakeTable({"a", "b"}, {{1, 2}});
        IColumn* const a = table->GetColumnByName("a");
        std::atomic<bool> hasReturned{false};
        std::thread([&] {
          table->InsertColumn("new", 0);
          hasReturned = true;
        }).detach();
        while (a->GetIndex() < 1000) std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        const bool isFirst = NamesOf(*table.Get()) == "new a b" &&
                             table->GetColumnByName("new")->GetIndex() == 0 &&
                             table->GetRow(0)->GetCellCount() == 2;
        std::_Exit(isFirst && !hasReturned ? 7 : 1);
      },
      testing::ExitedWithCode(7), "");
}

TEST(Table, RemovedColumnsTakeTheirCellsAlong) {
  const auto table = ThreeRows();
  const Ptr<IColumn> removed(table->GetColumnByName("a"));
  table->RemoveColumn("a");
  EXPECT_EQ(NamesOf(*table.Get()), "b c");
  EXPECT_EQ(TextOf(*table.Get()), "x| y| z|");
  EXPECT_EQ(table->GetColumnByName("c")->GetIndex(), 1);
  EXPECT_EQ(removed->GetIndex(), -1);
  EXPECT_FALSE(removed->BelongsTo(table.Get()));
  table->RemoveColumnAt(1);
  EXPECT_EQ(TextOf(*table.Get()), "x y z");
  EXPECT_EQ(table->AddColumn("a")->GetIndex(), 1) << "the name is free again";
  EXPECT_EQ(TextOf(*table.Get()), "x| y| z|");
}

TEST(Table, OnColumnAddedInsertsACellAtTheColumnsIndex) {
  const auto table = ThreeRows();
  table->OnColumnAdded(table->GetColumn(1));
  EXPECT_EQ(TextOf(*table->GetRow(0)), "1||x|");
  EXPECT_EQ(ThrownBy([&] { table->OnColumnAdded(MakeTable({"a"})->GetColumn(0)); }),
            "Column does not belong to the current table!");
}

// -- Rows --

TEST(Table, AddRowStoresCellsInColumnOrder) {
  const struct {
    const char* what;
    Cells given;
    const char* stored;
    const char* error;
  } cases[] = {
      {"a cell for every column", {1, "x"}, "1|x", ""},
      {"missing cells become Null", {1}, "1|", ""},
      {"no cell at all", {}, "|", ""},
      {"too many cells add nothing", {1, 2, 3}, "", "Error while setting cell value"},
  };
  for (const auto& c : cases) {
    const auto table = MakeTable({"a", "b"});
    EXPECT_EQ(ThrownBy([&] { table->AddRow(c.given.data(), c.given.size()); }), c.error) << c.what;
    EXPECT_EQ(TextOf(*table.Get()), c.stored) << c.what;
    if (table->GetRowCount() > 0) {
      EXPECT_EQ(table->GetRow(0)->IsModified(), 0) << c.what;
    }
  }
}

TEST(Table, AddRowTellsTheColumnsOfGivenValuesOnly) {
  const auto table = MakeTable({"a", "b", "c"}, {{1, Null}});
  const struct {
    const char* name;
    ValueType type;
    int hasSeenNull;
  } cases[] = {
      {"a", ValueType::Int32, 0},
      {"b", ValueType::Null, 1},
      {"c", ValueType::Null, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(table->GetColumnByName(c.name)->GetType(), c.type) << c.name;
    EXPECT_EQ(table->GetColumnByName(c.name)->HasSeenNull(), c.hasSeenNull) << c.name;
  }
}

TEST(Table, RowsAreInsertedAndRemovedAnywhere) {
  const auto table = ThreeRows();
  const Cells cells = {9};
  const struct {
    const char* what;
    std::function<void()> change;
    const char* rows;
  } steps[] = {
      {"first", [&] { table->InsertRow(0, cells.data(), 1); }, "9|| 1|x| 2|y| 3|z|"},
      {"last", [&] { table->InsertRow(4, cells.data(), 1); }, "9|| 1|x| 2|y| 3|z| 9||"},
      {"between", [&] { table->InsertRow(2, nullptr, 0); }, "9|| 1|x| || 2|y| 3|z| 9||"},
      {"several out", [&] { table->RemoveRows(0, 2); }, "|| 2|y| 3|z| 9||"},
      {"one out", [&] { table->RemoveRow(1); }, "|| 3|z| 9||"},
      {"none out", [&] { table->RemoveRows(3, 0); }, "|| 3|z| 9||"},
      {"its own copy", [&] { table->InsertRowCopy(0, table->GetRow(1)); }, "3|z| || 3|z| 9||"},
      {"its own cells", [&] { table->AddRow(table->GetCellAt(0, 0), 2); }, "3|z| || 3|z| 9|| 3|z|"},
      {"all out", [&] { table->ClearRows(); }, ""},
  };
  for (const auto& step : steps) {
    step.change();
    EXPECT_EQ(TextOf(*table.Get()), step.rows) << step.what;
  }
  EXPECT_EQ(NamesOf(*table.Get()), "a b c");
}

TEST(Table, CopiesARowOfAnotherTableByColumnName) {
  const auto source = MakeTable({"c", "x", "a"}, {{1.5, "left out", std::string(30, 'a')}});
  const auto table = MakeTable({"a", "b", "c"});
  IRow* row = table->AddRowCopy(source->GetRow(0));
  EXPECT_EQ(TextOf(*row), std::string(30, 'a') + "||1.500000");
  EXPECT_EQ(row->IsModified(), 0);
  EXPECT_EQ(table->GetColumnByName("c")->GetType(), ValueType::Double);
  EXPECT_EQ(table->GetColumnByName("b")->HasSeenNull(), 0) << "not written";
  EXPECT_EQ(row->GetCellAt(0)->value[0], source->GetCellAt(0, 2)->value[0]) << "text is shared";

  table->GetColumn(1)->SetType(ValueType::Int32);
  table->AddRowCopy(row);
  EXPECT_EQ(table->GetColumnByName("b")->HasSeenNull(), 0) << "still not written";
  table->SetCell(0, 1, Given(Null));
  table->AddRowCopy(MakeTable({"c"}, {{Null}})->GetRow(0));
  EXPECT_EQ(table->GetColumnByName("c")->HasSeenNull(), 1) << "a Null that was written";

  const Ptr<IRow> removed(source->GetRow(0));
  source->RemoveRow(0);
  EXPECT_EQ(ThrownBy([&] { table->AddRowCopy(removed.Get()); }), kNullTable)
      << "without a table its cells have no names";
}

TEST(Table, FillsARowFromADictionary) {
  const auto table = MakeTable({"a", "a name of more than 16 bytes", "missing", "null"});
  const auto values = New(Data_CreateVariantDictionary);
  const std::pair<Variant, Variant> entries[] = {
      {"a", 5}, {"a name of more than 16 bytes", "text"}, {"null", Null}, {"no column", 1}};
  for (const auto& [key, value] : entries) values->Set(&key, &value, nullptr);
  IRow* row = table->AddRowFromDictionary(values.Get());
  EXPECT_EQ(TextOf(*row), "5|text||");
  EXPECT_EQ(row->IsModified(), 0);
  EXPECT_EQ(table->GetColumnByName("missing")->HasSeenNull(), 0);
  EXPECT_EQ(table->GetColumnByName("null")->HasSeenNull(), 1);
  EXPECT_EQ(table->GetColumnByName("a")->GetType(), ValueType::Int32);
}

TEST(Table, CellsAreReadAndWrittenByPositionAndName) {
  const auto table = ThreeRows();
  table->SetCellByName(0, "c", Given(7));
  table->SetCell(1, 2, Given(8));
  EXPECT_EQ(TextOf(*table.Get()), "1|x|7 2|y|8 3|z|");
  Variant out;
  EXPECT_TRUE(table->GetCellByName(2, "b", &out));
  EXPECT_EQ(out.As<std::string>(), "z");
  EXPECT_TRUE(table->GetCell(0, 0, &out));
  EXPECT_EQ(out.As<int>(), 1);
  EXPECT_TRUE(table->GetCell(0, 99, &out)) << "only the row is looked at";
  EXPECT_EQ(out.As<int>(), 1);
}

TEST(Table, FailuresNameThePositionAndChangeNothing) {
  const auto table = ThreeRows();
  const auto noColumns = MakeTable({});
  noColumns->GetHeader()->SetName("T");
  const Variant value(1);
  Variant out;
  ITable* const t = table.Get();
  const char* const needsColumns =
      "Table T must contain at least one column before you insert new row!";
  const char* const nullInterface = "Null pointer exception! Interface is not accessible: struct ";
  const struct {
    std::function<void()> operation;
    std::string error;
  } cases[] = {
      {[&] { t->AddColumn(nullptr); }, kNullText},
      {[&] { t->InsertColumn(nullptr, 0); }, kNullText},
      {[&] { t->InsertColumn("d", -1); }, "Column index < 0 [-1]!"},
      {[&] { t->InsertColumn("d", 4); }, "Column index out of range [4/3]!"},
      {[&] { t->RemoveColumn("d"); }, "Column d does not exists"},
      {[&] { t->RemoveColumn(nullptr); }, kNullText},
      {[&] { t->RemoveColumnAt(3); }, "Column index out of range [3/3]!"},
      {[&] { t->GetColumn(-1); }, "Column index out of range [-1/3]!"},
      {[&] { t->GetColumnByName("d"); }, kMissingName},
      {[&] { t->GetColumnByName(nullptr); }, kNullText},
      {[&] { t->HasColumn(nullptr); }, kNullText},
      {[&] { t->GetCellAt(3, 0); }, "Index out of range (3, 0) [3, 3]!"},
      {[&] { t->GetCellAt(0, -1); }, "Index out of range (0, -1) [3, 3]!"},
      {[&] { t->SetCell(0, 3, &value); }, "Index out of range (0, 3) [3, 3]!"},
      {[&] { t->SetCell(0, 0, nullptr); }, kNullRecord},
      {[&] { t->SetCellByName(0, "d", &value); }, "Column d does not exists"},
      {[&] { t->SetCellByName(-1, "a", &value); }, "Row index out of range [-1/3]!"},
      {[&] { t->SetCellByName(0, "a", nullptr); }, kNullRecord},
      {[&] { t->GetCellByName(0, "d", &out); }, "Column d does not exists"},
      {[&] { t->GetCellByName(0, "a", nullptr); }, "Cannot be nullptr!"},
      {[&] { t->GetCell(3, 0, &out); }, "Row index out of range [3/3]!"},
      {[&] { t->GetRow(-1); }, "Row index out of range [-1/3]!"},
      {[&] { t->GetRow(3); }, "Row index out of range [3/3]!"},
      {[&] { t->AddRow(nullptr, 1); }, kNullRecord},
      {[&] { t->InsertRow(4, nullptr, 0); }, "Row index out of range [4/3]!"},
      {[&] { t->InsertRow(-1, nullptr, 0); }, "Row index out of range [-1/3]!"},
      {[&] { t->InsertRowCopy(4, t->GetRow(0)); }, "Row index out of range [4/3]!"},
      {[&] { t->RemoveRow(3); }, "Row index out of range [3/3]!"},
      {[&] { t->RemoveRows(-1, 1); }, "Row index out of range [-1/3]!"},
      {[&] { t->RemoveRows(1, 3); }, "Row index out of range [3/3]!"},
      {[&] { t->RemoveRows(1, INT64_MAX); }, "Row index out of range [3/3]!"},
      {[&] { t->RemoveRows(1, -1); }, "Row index out of range [1/3]!"},
      {[&] { t->AddRowCopy(nullptr); }, nullInterface + std::string("Data::Interfaces::IRow")},
      {[&] { t->AddRowFromDictionary(nullptr); },
       nullInterface + std::string("Data::Interfaces::IVariantDictionary")},
      {[&] { t->OnColumnAdded(nullptr); },
       nullInterface + std::string("Data::Interfaces::IColumn")},
      {[&] { noColumns->AddRow(nullptr, 0); }, needsColumns},
      {[&] { noColumns->AddRow(&value, 1); }, needsColumns},
      {[&] { noColumns->InsertRow(5, nullptr, 0); }, needsColumns},
      {[&] { noColumns->AddRowCopy(t->GetRow(0)); }, needsColumns},
      {[&] { noColumns->InsertRowCopy(0, t->GetRow(0)); }, needsColumns},
      {[&] { noColumns->AddRowFromDictionary(New(Data_CreateVariantDictionary).Get()); },
       needsColumns},
  };
  for (const auto& c : cases) EXPECT_EQ(ThrownBy(c.operation), c.error);
  EXPECT_EQ(TextOf(*t), "1|x| 2|y| 3|z|");
  EXPECT_EQ(NamesOf(*t), "a b c");
  EXPECT_THROW(t->GetColumnByName("d"), std::out_of_range);
}

TEST(Table, ObjectsOfAnotherInterfaceAreRefused) {
  const auto table = ThreeRows();
  ITable* const t = table.Get();
  auto* const row = reinterpret_cast<IRow*>(t);
  auto* const column = reinterpret_cast<IColumn*>(t);
  auto* const dictionary = reinterpret_cast<Interfaces::IVariantDictionary*>(t);
  auto* const right = reinterpret_cast<ITable*>(t->GetRow(0));
  const Variant value(1);
  Ptr<ITable> merged;
  Ptr<IErrorCode> error;
  const std::string invalid = "Memory address [";
  const std::string foreign = "Column does not belong to the current table!";
  const struct {
    std::function<void()> operation;
    std::string error;
  } cases[] = {
      {[&] { t->AddRowCopy(row); }, invalid},
      {[&] { t->InsertRowCopy(0, row); }, invalid},
      {[&] { t->AddRowFromDictionary(dictionary); }, invalid},
      {[&] { t->OnColumnAdded(column); }, invalid},
      {[&] { t->GetHeader()->Contains(column); }, invalid},
      {[&] { t->GetRow(0)->SetCellOfColumn(column, &value); }, foreign},
  };
  for (const auto& c : cases) EXPECT_EQ(ThrownBy(c.operation).substr(0, c.error.size()), c.error);
  EXPECT_FALSE(t->BuildIndex(0, column, error.Receive()));
  EXPECT_EQ(MessageOf(error), "Invalid column!");
  EXPECT_FALSE(t->Merge(right, "a", Structures::MergeMode::All, merged.Receive(), error.Receive()));
  EXPECT_EQ(MessageOf(error).substr(0, invalid.size()), invalid);
  EXPECT_EQ(TextOf(*t), "1|x| 2|y| 3|z|");
}

TEST(Table, ListsItsRows) {
  const auto table = ThreeRows();
  Ptr<Interfaces::IObjectList> rows;
  Ptr<IErrorCode> error;
  ASSERT_TRUE(table->GetRows(rows.Receive(), nullptr));
  ASSERT_EQ(rows->GetCount(), 3u);
  EXPECT_EQ(rows->GetAt(2), table->GetRow(2));
  EXPECT_FALSE(table->GetRows(nullptr, error.Receive()));
  EXPECT_EQ(MessageOf(error),
            "Pointer to a pointer of struct Data::Interfaces::IObjectList must not be null! "
            "Address of return must be specified!");
}

TEST(Table, OwnsEveryReferenceOfItsCellsOnce) {
  const auto text = New(Data_CreateString);
  text->SetUtf8("shared text", 11);
  const Variant value(text);
  auto table = MakeTable({"a", "b"}, {{value}, {value, value}});
  EXPECT_EQ(ReferencesTo(text), 5u);
  table->AddRowCopy(table->GetRow(1));
  EXPECT_EQ(ReferencesTo(text), 7u);
  table->SetCell(1, 0, Given(1));
  EXPECT_EQ(ReferencesTo(text), 6u);
  table->RemoveRow(2);
  EXPECT_EQ(ReferencesTo(text), 4u);
  table->RemoveColumn("b");
  EXPECT_EQ(ReferencesTo(text), 3u);
  EXPECT_NE(ThrownBy([&] { table->AddRow(Cells{value, value}.data(), 2); }), "");
  table.Reset();
  EXPECT_EQ(ReferencesTo(text), 2u);
}

// -- The header --

TEST(TableHeader, HoldsTheNameOfTheTable) {
  const auto table = MakeTable({});
  auto* header = table->GetHeader();
  EXPECT_STREQ(header->GetName(), "");
  header->SetName("Roads");
  EXPECT_STREQ(header->GetName(), "Roads");
  header->SetName(nullptr);
  EXPECT_STREQ(header->GetName(), "");
}

TEST(TableHeader, FindsAndListsColumns) {
  const auto table = MakeTable({"a", "b"});
  auto* header = table->GetHeader();
  Ptr<IErrorCode> error;
  EXPECT_EQ(header->GetColumn(1, nullptr), table->GetColumnByName("b"));
  EXPECT_EQ(header->GetColumn(2, error.Receive()), nullptr);
  EXPECT_EQ(MessageOf(error), "Column index out of range [2/2]!");
  EXPECT_EQ(header->GetColumnByName("a"), table->GetColumn(0));
  EXPECT_EQ(ThrownBy([&] { header->GetColumnByName("c"); }), kMissingName);
  EXPECT_EQ(header->GetColumnCount(), 2);
  EXPECT_TRUE(header->HasColumn("b"));
  EXPECT_FALSE(header->HasColumn("c"));
  EXPECT_TRUE(header->Contains(table->GetColumn(0)));
  EXPECT_FALSE(header->Contains(MakeTable({"a"})->GetColumn(0))) << "of that name, not that one";
  EXPECT_EQ(ThrownBy([&] { header->Contains(nullptr); }),
            "Null pointer exception! Interface is not accessible: struct "
            "Data::Interfaces::IColumn");
  Ptr<Interfaces::IObjectList> columns;
  ASSERT_TRUE(header->GetColumns(columns.Receive(), nullptr));
  ASSERT_EQ(columns->GetCount(), 2u);
  EXPECT_EQ(columns->GetAt(1), table->GetColumn(1));
}

}  // namespace Data::tests
