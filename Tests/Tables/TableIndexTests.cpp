#include "Tables/TableSupport.h"

namespace Data::tests {

namespace {

/// Columns id, name with an index over id: 10 a, 20 b, 30 c.
Ptr<ITable> Indexed() {
  const auto table = MakeTable({"id", "name"}, {{10, "a"}, {20, "b"}, {30, "c"}});
  EXPECT_TRUE(table->BuildIndex(0, table->GetColumn(0), nullptr));
  return table;
}

/// The name found for a key: "-" for no row, "dropped" without an index.
std::string Lookup(ITable& table, const Variant& key) {
  if (!table.GetIndexColumn()) return "dropped";
  IRow* row = table.FindRow(&key);
  return row ? Core::ToText(*row->GetCellAt(1)) : "-";
}

}  // namespace

TEST(TableIndex, FindsRowsByTheirKey) {
  const auto table = Indexed();
  EXPECT_EQ(table->GetIndexColumn(), table->GetColumn(0));
  EXPECT_STREQ(table->GetHeader()->GetIndexName(), "id");
  const struct {
    const char* what;
    Variant key;
    const char* found;
  } cases[] = {
      {"a key", 20, "b"},
      {"of another width", Variant(UINT64_C(30)), "c"},
      {"of no integer type", 20.0, "-"},
      {"of no number", "20", "-"},
      {"Null", Null, "-"},
      {"missing", 40, "-"},
  };
  for (const auto& c : cases) EXPECT_EQ(Lookup(*table.Get(), c.key), c.found) << c.what;
  table->GetColumn(0)->SetName("key");
  EXPECT_STREQ(table->GetHeader()->GetIndexName(), "key") << "follows the column";
}

TEST(TableIndex, StaysTrueOrIsDropped) {
  const Variant ten(10), twenty(20), forty(40), error(SomeError());
  const struct {
    const char* what;
    std::function<void(ITable&)> change;
    const char *ten, *forty;
  } cases[] = {
      {"a row added",
       [&](ITable& t) {
         t.AddRow(Cells{40, "d"}.data(), 2);
       },
       "a", "d"},
      {"a row inserted first",
       [&](ITable& t) {
         t.InsertRow(0, Cells{40, "d"}.data(), 2);
       },
       "a", "d"},
      {"a row removed", [&](ITable& t) { t.RemoveRow(0); }, "-", "-"},
      {"rows removed, one added",
       [&](ITable& t) {
         t.RemoveRows(0, 3);
         t.AddRow(Cells{10, "z"}.data(), 2);
       },
       "z", "-"},
      {"its cell written", [&](ITable& t) { t.SetCell(0, 0, &forty); }, "-", "a"},
      {"its cell written by name", [&](ITable& t) { t.GetRow(0)->SetCellByName("id", &forty); },
       "-", "a"},
      {"its cell written anew", [&](ITable& t) { t.SetCell(0, 0, &ten); }, "a", "-"},
      {"two cells swapped over a third value",
       [&](ITable& t) {
         t.SetCell(0, 0, &forty);
         t.SetCell(1, 0, &ten);
         t.SetCell(0, 0, &twenty);
       },
       "b", "-"},
      {"another cell written", [&](ITable& t) { t.SetCell(0, 1, &forty); }, "40", "-"},
      {"a column added", [&](ITable& t) { t.AddColumn("more"); }, "a", "-"},
      {"a column before it removed",
       [&](ITable& t) {
         t.BuildIndex(0, t.GetColumn(1), nullptr);
         t.RemoveColumnAt(0);
         t.AddColumn("new");
         t.SetCell(1, 0, &ten);
         t.SetCell(1, 1, &forty);
       },
       "40", "-"},
      {"its column removed", [&](ITable& t) { t.RemoveColumn("id"); }, "dropped", "dropped"},
      {"a value that repeats added", [&](ITable& t) { t.AddRow(&ten, 1); }, "dropped", "dropped"},
      {"a value that repeats written", [&](ITable& t) { t.SetCell(1, 0, &ten); }, "dropped",
       "dropped"},
      {"a value without a hash", [&](ITable& t) { t.SetCell(1, 0, &error); }, "dropped", "dropped"},
      {"a row without a key, then another",
       [&](ITable& t) {
         t.AddRow(nullptr, 0);
         EXPECT_TRUE(t.GetIndexColumn()) << "Null is a key like any other";
         t.AddRow(nullptr, 0);
       },
       "dropped", "dropped"},
      {"one value for all rows", [&](ITable& t) { t.GetColumn(0)->Fill(&ten); }, "dropped",
       "dropped"},
      {"a cell written past the table, then removed",
       [&](ITable& t) {
         t.GetCellAt(0, 0)->value[0] = 77;
         t.RemoveRow(0);
       },
       "dropped", "dropped"},
      {"cells shifted by hand", [&](ITable& t) { t.OnColumnAdded(t.GetColumn(0)); }, "dropped",
       "dropped"},
      {"rows cleared", [&](ITable& t) { t.ClearRows(); }, "dropped", "dropped"},
      {"indexes cleared", [&](ITable& t) { t.ClearIndexes(); }, "dropped", "dropped"},
  };
  for (const auto& c : cases) {
    const auto table = Indexed();
    c.change(*table.Get());
    EXPECT_EQ(Lookup(*table.Get(), ten), c.ten) << c.what;
    EXPECT_EQ(Lookup(*table.Get(), forty), c.forty) << c.what;
    const bool isDropped = std::string(c.ten) == "dropped";
    EXPECT_EQ(*table->GetHeader()->GetIndexName() == '\0', isDropped) << c.what;
  }
}

TEST(TableIndex, NullsMayBeLeftOut) {
  const auto table = MakeTable({"id", "name"}, {{1, "a"}, {Null, "b"}, {Null, "c"}});
  Ptr<IErrorCode> error;
  EXPECT_FALSE(table->BuildIndex(0, table->GetColumn(0), error.Receive()));
  EXPECT_EQ(MessageOf(error), "Index can be build only on top of unique values!");
  ASSERT_TRUE(table->BuildIndex(1, table->GetColumn(0), nullptr));
  EXPECT_EQ(Lookup(*table.Get(), Null), "-");
  table->SetCell(1, 0, Given(2));
  table->SetCell(0, 0, Given(Null));
  EXPECT_EQ(Lookup(*table.Get(), 2), "b");
  EXPECT_EQ(Lookup(*table.Get(), 1), "-");
  EXPECT_EQ(table->GetColumn(0)->FindRow(Given(Null)), table->GetRow(0))
      << "a search row by row still sees them";
}

TEST(TableIndex, ReferencesToNoObjectAreNulls) {
  const Variant noText = NullReference(ValueType::String),
                noDate = NullReference(ValueType::DateTime);
  const auto table = MakeTable({"id", "name"}, {{noText, "a"}, {1, "b"}, {noDate, "c"}});
  Ptr<IErrorCode> error;
  EXPECT_FALSE(table->BuildIndex(0, table->GetColumn(0), error.Receive()));
  EXPECT_EQ(MessageOf(error), "Index can be build only on top of unique values!");
  ASSERT_TRUE(table->BuildIndex(1, table->GetColumn(0), nullptr));
  EXPECT_EQ(Lookup(*table.Get(), 1), "b");
  EXPECT_EQ(Lookup(*table.Get(), noDate), "-");
  EXPECT_EQ(table->GetColumn(0)->FindRow(&noDate), table->GetRow(0));
}

TEST(TableIndex, ValuesThatEqualNothingTakeNoTime) {
  const auto table = MakeTable({"id", "name"});
  const Cells cells{ByValue(ValueType::Unknown), "a"};
  for (int i = 0; i < 100'000; ++i) table->AddRow(cells.data(), 2);
  ASSERT_TRUE(table->BuildIndex(0, table->GetColumn(0), nullptr));
  EXPECT_EQ(Lookup(*table.Get(), cells[0]), "-");
}

TEST(TableIndex, BuildingFailsWithoutTouchingAnEarlierIndex) {
  const auto table = Indexed();
  table->AddRow(Cells{40, "a"}.data(), 2);
  const auto other = MakeTable({"id"});
  const struct {
    IColumn* column;
    const char* error;
  } cases[] = {
      {nullptr, "Invalid column!"},
      {other->GetColumn(0), "Invalid column!"},
      {table->GetColumn(1), "Index can be build only on top of unique values!"},
  };
  for (const auto& c : cases) {
    Ptr<IErrorCode> error;
    EXPECT_FALSE(table->BuildIndex(0, c.column, error.Receive()));
    EXPECT_EQ(MessageOf(error), c.error);
    EXPECT_EQ(Lookup(*table.Get(), 20), "b");
  }
}

TEST(TableIndex, LookupsWithoutAnIndexOrAKeyFail) {
  const auto table = MakeTable({"id"});
  table->GetHeader()->SetName("T");
  EXPECT_EQ(ThrownBy([&] { table->FindRow(Given(1)); }), "Table T does not have an index!");
  EXPECT_EQ(ThrownBy([&] { table->FindRow(nullptr); }), kNullRecord);
}

TEST(TableIndex, ListsTheRowsOfAValue) {
  const auto table = MakeTable({"id", "kind"}, {{1, "x"}, {2, "y"}, {3, "x"}, {4}});
  const auto count = [&](const char* column, const Variant& key) {
    Ptr<IObjectList> rows;
    EXPECT_TRUE(table->FindRows(column, &key, rows.Receive(), nullptr));
    std::string ids;
    for (std::uint64_t i = 0; i < rows->GetCount(); ++i)
      ids += Core::ToText(*Core::CastToInterface<IRow>(rows->GetAt(i))->GetCellAt(0));
    return ids;
  };
  for (const bool isIndexed : {false, true}) {
    if (isIndexed) {
      ASSERT_TRUE(table->BuildIndex(0, table->GetColumn(0), nullptr));
    }
    EXPECT_EQ(count("kind", "x"), "13");
    EXPECT_EQ(count("kind", Null), "4");
    EXPECT_EQ(count("kind", "z"), "");
    EXPECT_EQ(count("id", 2), "2");
    EXPECT_EQ(count("id", 9), "");
  }
  Ptr<IObjectList> rows;
  Ptr<IErrorCode> error;
  EXPECT_FALSE(table->FindRows("none", Given(1), rows.Receive(), error.Receive()));
  EXPECT_EQ(MessageOf(error), "Column none does not exists");
}

TEST(TableIndex, FollowsManyChanges) {
  // Every row holds a distinct key at all times; whatever is changed, each key
  // finds its row.
  const auto table = MakeTable({"id", "name"});
  ASSERT_TRUE(table->BuildIndex(0, table->GetColumn(0), nullptr));
  std::uint32_t random = 1;
  for (int step = 0; step < 3000; ++step) {
    random = random * 1664525 + 1013904223;
    const std::int64_t count = table->GetRowCount(), row = count ? (random >> 8) % count : 0;
    const Cells cells = {step, step};
    if (random >> 30 != 0 || count == 0)
      table->InsertRow(row, cells.data(), 2);
    else if (random >> 29 & 1)
      table->RemoveRow(row);
    else
      table->GetRow(row)->SetCells(cells.data(), 2);
  }
  ASSERT_TRUE(table->GetIndexColumn());
  for (std::int64_t i = 0; i < table->GetRowCount(); ++i)
    EXPECT_EQ(table->FindRow(table->GetCellAt(i, 1)), table->GetRow(i));
}

}  // namespace Data::tests
