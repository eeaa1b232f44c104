#include "Data/Ranges.h"

#include <ranges>

#include "Tables/TableSupport.h"

namespace Data::tests {

static_assert(std::ranges::forward_range<decltype(Rows(nullptr))>);
static_assert(std::ranges::sized_range<decltype(Columns(nullptr))>);

namespace {

Ptr<ITable> Peaks() {
  return MakeTable({"name", "height"},
                   {{"Glittertind", 2465.5}, {"Unknown", Null}, {"Snota", 1669}});
}

}  // namespace

TEST(Ranges, RowsAndColumnsAreIterated) {
  std::string names;
  double total = 0;
  for (const Row row : Rows(Peaks())) {  // the temporary table lives on in the range
    names += row.Get<std::string>("name") + std::to_string(row.Index()) + " ";
    total += row.GetOr<double>("height", 1.0);
  }
  for (IColumn* column : Columns(Peaks())) names.append(column->GetName()).append(" ");
  EXPECT_EQ(names, "Glittertind0 Unknown1 Snota2 name height ");
  EXPECT_EQ(total, 2465.5 + 1 + 1669);
  const auto rows = Rows(Peaks());
  EXPECT_EQ(rows.size(), 3u);
  EXPECT_EQ(std::ranges::count_if(rows, [](const Row& row) { return row.IsNull("height"); }), 1);
}

TEST(Ranges, CellsAreMeantByPositionNameOrColumn) {
  auto table = Peaks();
  Row row(table->GetRow(0));
  IColumn* height = table->GetColumnByName("height");
  EXPECT_EQ(row.Get<double>(1), 2465.5);
  EXPECT_EQ(row.Get<int>(height), 2465);
  EXPECT_EQ(row.Get<std::string_view>(std::string("name")), "Glittertind");
  EXPECT_EQ(&row[std::size_t{1}], row.Cells().data() + 1);
  row.Set("name"s, "a");
  row.Set(1, Null);
  EXPECT_TRUE(row.IsNull(height));
  row.Set(height, 3);
  table.Reset();
  EXPECT_EQ(TextOf(*row.Get()), "a,3") << "outlives its table";
  EXPECT_EQ(row->IsModified(), 1);
}

TEST(Ranges, FailuresAreThoseOfTheInterfaces) {
  const auto table = Peaks();
  const Row row(table->GetRow(1));
  EXPECT_EQ(ThrownBy([&] { row.Get<double>(2); }), "Column index out of range [2/2]!");
  EXPECT_EQ(ThrownBy([&] { row.Get<double>("none"); }), kMissingName);
  EXPECT_EQ(ThrownBy([&] { row.Get<double>("height"); }), "Invalid value!");
  EXPECT_EQ(ThrownBy([&] { Rows(nullptr); }), kNullTable);
}

}  // namespace Data::tests
