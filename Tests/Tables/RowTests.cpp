#include "Tables/TableSupport.h"

namespace Data::tests {

TEST(Row, AnUndefinedRecordIsStoredAsPlainBytes) {
  const auto table = MakeTable({"a"}, {{1}});
  const _VARIANT undefined{28u | 1u << 16, {0xDEAD, 0}};  // looks like a reference
  table->GetRow(0)->SetCell(0, &undefined);
  table->AddRow(&undefined, 1);
  EXPECT_EQ(table->GetCellAt(1, 0)->value[0], 0xDEADu);
}

TEST(Row, KnowsItsNeighboursAndWhetherItWasModified) {
  const auto table = MakeTable({"a", "b"}, {{1}, {2}});
  IRow &first = *table->GetRow(0), &second = *table->GetRow(1);
  EXPECT_EQ(first.GetNextRow(), &second);
  EXPECT_EQ(second.GetNextRow(), nullptr);
  EXPECT_EQ(second.GetPreviousRow(), &first);
  EXPECT_EQ(first.GetPreviousRow(), nullptr);
  EXPECT_EQ(first.GetCellAt(2), nullptr);
  EXPECT_EQ(first.GetCellAt(-1), nullptr);
  first.SetModified(7);
  EXPECT_EQ(first.IsModified(), 7) << "a byte, kept as it is";
}

TEST(Column, KnowsItsNeighboursAndTable) {
  const auto table = MakeTable({"a", "b"}), other = MakeTable({"a"});
  IColumn &a = *table->GetColumn(0), &b = *table->GetColumn(1);
  EXPECT_EQ(a.GetNextColumn(), &b);
  EXPECT_EQ(b.GetNextColumn(), nullptr);
  EXPECT_EQ(b.GetPreviousColumn(), &a);
  EXPECT_EQ(a.GetPreviousColumn(), nullptr);
  EXPECT_TRUE(a.BelongsTo(table.Get()));
  EXPECT_FALSE(a.BelongsTo(other.Get()));
  EXPECT_FALSE(a.BelongsTo(nullptr));
}

TEST(Value, IsACopyOfACell) {
  const auto table = MakeTable({"a"}, {{2.5}});
  IRow& row = *table->GetRow(0);
  Ptr<IValue> value;
  ASSERT_TRUE(row.GetValue(0, value.Receive()));
  row.SetCell(0, Given(std::string(20, 'x')));
  EXPECT_EQ(value->GetType(), ValueType::Double);
  value->SetValue(row.GetCellAt(0));
  table->ClearRows();
  Ptr<IString> text;
  ASSERT_TRUE(value->GetText(text.Receive()));
  EXPECT_EQ(text->GetUtf8(), std::string(20, 'x'));
  EXPECT_EQ(Core::ToText(*value->GetRecord()), std::string(20, 'x'));
  EXPECT_EQ(ThrownBy([&] { value->SetValue(nullptr); }), kNullRecord);
  EXPECT_EQ(ThrownBy([&] { value->GetValue(nullptr); }), "Cannot be nullptr!");
}

TEST(Table, ItsRowsAndColumnsOutliveIt) {
  const struct {
    std::function<void(Ptr<ITable>&)> depart;
    bool takesRow, takesColumn;
  } cases[] = {
      {[](auto& table) { table.Reset(); }, true, true},
      {[](auto& table) { table->RemoveRow(0); }, true, false},
      {[](auto& table) { table->ClearRows(); }, true, false},
      {[](auto& table) { table->RemoveColumn("a"); }, false, true},
  };
  for (const auto& c : cases) {
    auto table = MakeTable({"a", "b"}, {{std::string(30, 'x'), 2}});
    const Ptr<IRow> row(table->GetRow(0));
    const Ptr<IColumn> column(table->GetColumn(0));
    column->SetWidth(5);
    c.depart(table);
    Variant value(1);
    Ptr<IVariantList> values;
    const std::function<void()> onRow[] = {[&] { row->GetCellByName("a", &value); },
                                           [&] { row->GetCell(0, &value); },
                                           [&] { row->SetCellByName("a", &value); },
                                           [&] { row->SetCell(0, &value); },
                                           [&] { row->GetCellOfColumn(column.Get(), &value); },
                                           [&] { row->SetCellOfColumn(column.Get(), &value); },
                                           [&] { row->SetCells(&value, 1); },
                                           [&] { row->GetNextRow(); },
                                           [&] { row->GetPreviousRow(); },
                                           [&] { row->GetColumn(0); },
                                           [&] { row->GetColumnByName("a"); }};
    const std::function<void()> onColumn[] = {
        [&] { column->SetName("c"); },    [&] { column->GetValues(values.Receive()); },
        [&] { column->FindRow(&value); }, [&] { column->Fill(&value); },
        [&] { column->GetNextColumn(); }, [&] { column->GetPreviousColumn(); }};
    if (c.takesRow) {
      EXPECT_EQ(TextOf(*row), std::string(30, 'x') + ",2");
      EXPECT_EQ(row->GetIndex(), -1);
      EXPECT_EQ(row->GetTable(), nullptr);
      for (const auto& operation : onRow) EXPECT_EQ(ThrownBy(operation), kNullTable);
      EXPECT_EQ(Failure([&](auto e) { return row->TrySetCellByName("a", &value, e); }), kNullTable);
    }
    if (c.takesColumn) {
      EXPECT_STREQ(column->GetName(), "a");
      EXPECT_EQ(column->GetWidth(), 5u);
      EXPECT_EQ(column->GetType(), ValueType::String);
      EXPECT_EQ(column->GetIndex(), table ? -1 : 0);
      EXPECT_FALSE(column->BelongsTo(table.Get()));
      for (const auto& operation : onColumn) EXPECT_EQ(ThrownBy(operation), kNullTable);
      EXPECT_EQ(Failure([&](auto e) { return column->GetValue(0, &value, e); }), kNullTable);
    }
  }
}

TEST(TableHeader, OutlivesItsTableWithItsColumns) {
  auto table = MakeTable({"a", "b"}, {{1, 2}});
  table->GetHeader()->SetName("T");
  const Ptr<ITableHeader> header(table->GetHeader());
  ASSERT_TRUE(table->BuildIndex(0, table->GetColumn(0), nullptr));
  const Ptr<IColumn> kept(table->GetColumn(1));
  table.Reset();
  EXPECT_STREQ(header->GetName(), "T");
  EXPECT_STREQ(header->GetIndexName(), "");
  EXPECT_EQ(header->GetColumn(1, nullptr), kept.Get());
  EXPECT_EQ(ThrownBy([&] { kept->SetName("c"); }), kNullTable);
}

}  // namespace Data::tests
