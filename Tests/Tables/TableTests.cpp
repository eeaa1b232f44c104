#include <chrono>

#include "CallersText.h"
#include "Tables/TableSupport.h"

namespace Data::tests {

namespace {

/// Columns a, b, c and rows 1,x,; 2,y,; 3,z,.
Ptr<ITable> ThreeRows() { return MakeTable({"a", "b", "c"}, {{1, "x"}, {2, "y"}, {3, "z"}}); }

}  // namespace

// -- Columns --

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

// -- Rows --

TEST(Table, CopiesARowOfAnotherTableByColumnName) {
  const auto source = MakeTable({"c", "x", "a", "d"}, {{1.5, "out", std::string(30, 'a'), Null}});
  const auto table = MakeTable({"a", "b", "c", "d"});
  IRow* row = table->AddRowCopy(source->GetRow(0));
  EXPECT_EQ(TextOf(*row), std::string(30, 'a') + ",,1.500000,");
  EXPECT_EQ(row->IsModified(), 0);
  EXPECT_EQ(ShowColumns(*table), "String Null Double Null?") << "b was not written, d a Null";
  EXPECT_EQ(row->GetCellAt(0)->value[0], source->GetCellAt(0, 2)->value[0]) << "text is shared";

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
  EXPECT_EQ(TextOf(*row), "5,text,,");
  EXPECT_EQ(row->IsModified(), 0);
  EXPECT_EQ(ShowColumns(*table), "Int32 String Null Null?");
}

TEST(Table, ObjectsThatAreNotItsOwnAreRefused) {
  const auto table = ThreeRows(), other = MakeTable({"a"}), noColumns = MakeTable({});
  ITable* const t = table.Get();
  auto* const row = reinterpret_cast<IRow*>(t);
  auto* const column = reinterpret_cast<IColumn*>(t);
  const Variant value(1);
  Variant out;
  const std::string invalid = "Memory address";
  const std::string notOwn = "Column does not belong to the current table!";
  const struct {
    std::function<void()> operation;
    std::string error;
  } cases[] = {
      {[&] { t->AddRowCopy(row); }, invalid},
      {[&] { t->AddRowFromDictionary(reinterpret_cast<IVariantDictionary*>(t)); }, invalid},
      {[&] { t->OnColumnAdded(column); }, invalid},
      {[&] { t->GetHeader()->Contains(column); }, invalid},
      {[&] { t->GetRow(0)->SetCellOfColumn(column, &value); }, notOwn},
      {[&] { t->GetRow(0)->SetCellOfColumn(other->GetColumn(0), &value); }, notOwn},
      {[&] { t->GetRow(0)->GetCellOfColumn(other->GetColumn(0), &out); }, notOwn},
      {[&] { t->OnColumnAdded(other->GetColumn(0)); }, notOwn},
      {[&] { t->GetRow(0)->SetCellOfColumn(nullptr, &value); }, "Cannot be nullptr!"},
      {[&] { t->GetRow(0)->GetCellOfColumn(nullptr, &out); }, "Cannot be nullptr!"},
      {[&] { t->GetRow(0)->SetCellOfColumn(t->GetColumn(0), nullptr); }, kNullRecord},
      {[&] { noColumns->AddRowCopy(t->GetRow(0)); }, "Table  must contain"},
      {[&] { noColumns->InsertRowCopy(0, t->GetRow(0)); }, "Table  must contain"},
      {[&] { noColumns->AddRowFromDictionary(New(Data_CreateVariantDictionary).Get()); },
       "Table  must contain"},
  };
  for (const auto& c : cases) EXPECT_EQ(ThrownBy(c.operation).substr(0, c.error.size()), c.error);
  EXPECT_EQ(TextOf(*t), "1,x, 2,y, 3,z,");
  EXPECT_THROW(t->GetColumnByName("d"), std::out_of_range);
}

TEST(Table, ADictionaryThatFailsAddsNoRow) {
  const auto table = MakeTable({"a"});
  for (const int failingRead : {1, 2}) {  // of the search for the key, of that for its value
    const auto text = Core::MakePtr<CallersText>("a");
    const auto values = New(Data_CreateVariantDictionary);
    const Variant key = Reference(ValueType::String, Ptr<IString>(text)), value(1);
    ASSERT_TRUE(values->Set(&key, &value, nullptr));
    text->onRead = [readsLeft = failingRead]() mutable {
      if (--readsLeft == 0) throw std::runtime_error("unreadable");
    };
    EXPECT_EQ(ThrownBy([&] { table->AddRowFromDictionary(values.Get()); }),
              "Error while setting cell value");
  }
  EXPECT_EQ(table->GetRowCount(), 0);
}

// -- The index --

TEST(TableIndex, IsBuiltOverOneOfItsOwnColumns) {
  const auto table = MakeTable({"id"}, {{10}}), other = MakeTable({"id"});
  ASSERT_TRUE(table->BuildIndex(0, table->GetColumn(0), nullptr));
  auto* const noColumn = reinterpret_cast<IColumn*>(table.Get());
  for (IColumn* column : {static_cast<IColumn*>(nullptr), other->GetColumn(0), noColumn})
    EXPECT_EQ(Failure([&](auto e) { return table->BuildIndex(0, column, e); }), "Invalid column!");
  EXPECT_EQ(table->GetIndexColumn(), table->GetColumn(0)) << "an earlier index is kept";
  EXPECT_EQ(table->FindRow(Given(10)), table->GetRow(0));
}

TEST(TableIndex, IsDroppedWhenACellWasWrittenPastTheTable) {
  const std::function<void(ITable&)> changes[] = {
      [](ITable& t) { t.RemoveRow(0); },
      [](ITable& t) { t.SetCell(0, 0, Given(5)); },
  };
  for (const auto& change : changes) {
    const auto table = MakeTable({"id"}, {{10}, {20}});
    ASSERT_TRUE(table->BuildIndex(0, table->GetColumn(0), nullptr));
    table->GetCellAt(0, 0)->value[0] = 77;
    change(*table);
    EXPECT_EQ(table->GetIndexColumn(), nullptr);
  }
}

TEST(TableIndex, ValuesThatEqualNothingTakeNoTime) {
  const auto table = MakeTable({"id", "name"});
  const Cells cells{ByValue(ValueType::Unknown), "a"};
  for (int i = 0; i < 100'000; ++i) table->AddRow(cells.data(), 2);
  ASSERT_TRUE(table->BuildIndex(0, table->GetColumn(0), nullptr));
  EXPECT_EQ(table->FindRow(&cells[0]), nullptr);
}

// -- The header --

TEST(TableHeader, HasANameAndListsColumns) {
  const auto table = MakeTable({"a", "b"});
  auto* header = table->GetHeader();
  header->SetName("Roads");
  EXPECT_STREQ(header->GetName(), "Roads");
  header->SetName(nullptr);
  EXPECT_STREQ(header->GetName(), "");
  EXPECT_EQ(header->GetColumn(1, nullptr), table->GetColumnByName("b"));
  EXPECT_EQ(Failure([&](auto e) { return header->GetColumn(2, e); }),
            "Column index out of range [2/2]!");
  EXPECT_EQ(header->GetColumnByName("a"), table->GetColumn(0));
  EXPECT_EQ(ThrownBy([&] { header->GetColumnByName("c"); }), kMissingName);
  EXPECT_EQ(header->GetColumnCount(), 2);
  EXPECT_TRUE(header->HasColumn("b") && !header->HasColumn("c"));
  EXPECT_TRUE(header->Contains(table->GetColumn(0)));
  EXPECT_FALSE(header->Contains(MakeTable({"a"})->GetColumn(0))) << "of that name, not that one";
  EXPECT_EQ(ThrownBy([&] { header->Contains(nullptr); }),
            "Null pointer exception! Interface is not accessible: struct "
            "Data::Interfaces::IColumn");
  Ptr<IObjectList> columns;
  ASSERT_TRUE(header->GetColumns(columns.Receive(), nullptr));
  ASSERT_EQ(columns->GetCount(), 2u);
  EXPECT_EQ(columns->GetAt(1), table->GetColumn(1));
}

}  // namespace Data::tests
