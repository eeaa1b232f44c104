#include "Tables/TableSupport.h"

namespace Data::tests {

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

}  // namespace Data::tests
