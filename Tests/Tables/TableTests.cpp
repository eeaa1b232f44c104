#include <chrono>

#include "CallersText.h"
#include "Tables/TableSupport.h"

namespace Data::tests {

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
  EXPECT_THROW(table->GetColumnByName("d"), std::out_of_range);
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
