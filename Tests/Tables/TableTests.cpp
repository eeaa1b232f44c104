#include <chrono>

#include "Callers.h"
#include "Tables/TableSupport.h"

namespace Data::tests {

namespace {

/// Columns a, b, c and rows 1|x|, 2|y|, 3|z|.
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

// -- Rows --

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
  EXPECT_EQ(TextOf(*t), "1|x| 2|y| 3|z|");
  EXPECT_THROW(t->GetColumnByName("d"), std::out_of_range);
}

TEST(Table, ADictionaryThatFailsAddsNoRow) {
  struct Failing final : CallersOwn<IVariantDictionary> {
    explicit Failing(bool hasKey) : hasKey_(hasKey) {}
    bool Get(const _VARIANT*, _VARIANT*, IErrorCode**) override { return false; }
    bool Contains(const _VARIANT*, IErrorCode** error) override {
      if (!hasKey_) *error = SomeError().Detach();
      return hasKey_;
    }
    bool Set(const _VARIANT*, const _VARIANT*, IErrorCode**) override { return false; }
    bool IsEmpty() override { return false; }
    bool Clear() override { return false; }
    std::uint64_t GetCount() override { return 1; }
    bool GetKeys(IVariantList**, IErrorCode**) override { return false; }

   private:
    bool hasKey_;
  };
  const auto table = MakeTable({"a"});
  for (const bool hasKey : {false, true})
    EXPECT_EQ(ThrownBy([&] { table->AddRowFromDictionary(Core::MakePtr<Failing>(hasKey).Get()); }),
              "Error while setting cell value");
  EXPECT_EQ(table->GetRowCount(), 0);
}

TEST(Table, ListsItsRows) {
  const auto table = ThreeRows();
  Ptr<IObjectList> rows;
  ASSERT_TRUE(table->GetRows(rows.Receive(), nullptr));
  ASSERT_EQ(rows->GetCount(), 3u);
  EXPECT_EQ(rows->GetAt(2), table->GetRow(2));
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

TEST(TableHeader, HasANameAndListsColumns) {
  const auto table = MakeTable({"a", "b"});
  auto* header = table->GetHeader();
  EXPECT_STREQ(header->GetName(), "");
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
  EXPECT_TRUE(header->HasColumn("b"));
  EXPECT_FALSE(header->HasColumn("c"));
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
