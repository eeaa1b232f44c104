#include "Tables/TableSupport.h"

namespace Data::tests {

TEST(Column, ItsTypeIsDeclaredOrThatOfTheFirstCell) {
  const auto table = MakeTable({"a", "b"});
  IColumn& a = *table->GetColumn(0);
  EXPECT_EQ(a.GetType(), ValueType::Null) << "nothing declared, no rows";
  table->AddRow(nullptr, 0);
  EXPECT_EQ(a.GetType(), ValueType::Null) << "the cell of row 0";
  *table->GetCellAt(0, 0) = Variant(std::string(20, 'x')).Detach();  // past the column
  EXPECT_EQ(a.GetType(), ValueType::String) << "without the storage form";
  a.SetType(ValueType::Int16);
  EXPECT_EQ(a.GetType(), ValueType::Int16) << "declared";
  table->SetCell(0, 0, Given(2.5));
  EXPECT_EQ(a.GetType(), ValueType::Double) << "the last value written";
  a.SetType(ValueType::Null);
  EXPECT_EQ(a.GetType(), ValueType::Double) << "row 0 again";
  table->ClearRows();
  EXPECT_EQ(a.GetType(), ValueType::Null);
}

TEST(Column, KeepsWhatItsCallersNote) {
  const auto table = MakeTable({"a"});
  IColumn& a = *table->GetColumn(0);
  EXPECT_EQ(a.GetWidth() + a.GetDecimals() + a.IsHidden() + a.IsReadOnly() + a.HasSeenNull(), 0u);
  a.SetWidth(10);
  a.SetDecimals(UINT32_MAX);
  a.SetHidden(3);
  a.SetReadOnly(255);
  EXPECT_EQ(a.GetWidth(), 10u);
  EXPECT_EQ(a.GetDecimals(), UINT32_MAX);
  EXPECT_EQ(a.IsHidden(), 3) << "a byte, kept as it is";
  EXPECT_EQ(a.IsReadOnly(), 255);
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

TEST(Column, GivesItsCells) {
  const auto table = MakeTable({"a", "b"}, {{1, "x"}, {Null, "X"}});
  Ptr<IVariantList> values;
  ASSERT_TRUE(table->GetColumn(1)->GetValues(values.Receive()));
  EXPECT_EQ(values->GetCount(), 2u);
  Variant second;
  EXPECT_TRUE(values->GetAt(1, &second));
  EXPECT_EQ(second.As<std::string>(), "X");
}

TEST(Column, OutlivesItsTableWithItsName) {
  const std::function<void(Ptr<ITable>&)> departures[] = {
      [](Ptr<ITable>& table) { table.Reset(); },
      [](Ptr<ITable>& table) { table->RemoveColumn("a"); },
  };
  for (const auto& depart : departures) {
    auto table = MakeTable({"a", "b"}, {{1, 2}});
    const Ptr<IColumn> column(table->GetColumn(0));
    column->SetWidth(5);
    depart(table);
    Variant value(1);
    Ptr<IVariantList> values;
    EXPECT_STREQ(column->GetName(), "a");
    EXPECT_EQ(column->GetWidth(), 5u);
    EXPECT_EQ(column->GetType(), ValueType::Int32);
    EXPECT_FALSE(column->BelongsTo(nullptr));
    const std::function<void()> operations[] = {
        [&] { column->SetName("c"); },    [&] { column->GetValues(values.Receive()); },
        [&] { column->FindRow(&value); }, [&] { column->Fill(&value); },
        [&] { column->GetNextColumn(); }, [&] { column->GetPreviousColumn(); }};
    for (const auto& operation : operations) EXPECT_EQ(ThrownBy(operation), kNullTable);
    EXPECT_EQ(Failure([&](auto e) { return column->GetValue(0, &value, e); }), kNullTable);
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
