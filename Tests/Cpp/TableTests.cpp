#include <LayerData/Print.h>
#include <LayerData/Schema.h>
#include <LayerData/Table.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ranges>

#include "CppSupport.h"

namespace layerdata::tests {

static_assert(std::ranges::random_access_range<const Table>);
static_assert(std::ranges::random_access_range<const Row>);
static_assert(std::ranges::random_access_range<Rows> && std::ranges::view<Rows>);
static_assert(std::ranges::random_access_range<Columns> && std::ranges::view<Columns>);
static_assert(std::ranges::random_access_range<Column> && std::ranges::view<Column>);
static_assert(std::regular<Columns::Iterator> && std::copyable<Row> && std::copyable<Cell>);

namespace {

Table Peaks() {
  Table table{"name", "height", "first"};
  table.AddRow({"Eiger", 3967, DateTime(std::chrono::year(1858) / 8 / 11)});
  table.AddRow({"Mönch", 4110.5, DateTime(std::chrono::year(1857) / 8 / 15)});
  table.AddRow({"Unnamed"});
  return table;
}

}  // namespace

TEST(Table, IsARangeOfRowsOfCells) {
  const Table table = Peaks();
  EXPECT_EQ(table.RowCount(), 3);
  EXPECT_EQ(Print(table[1]), "Mönch | 4110.5 | 1857-08-15T00:00:00Z");
  EXPECT_EQ(table[0]["height"], 3967);
  EXPECT_EQ(table[0][1], table["height"][0]);
  EXPECT_EQ(table[0][table["name"]].As<std::string_view>(), "Eiger");
  EXPECT_EQ(table[2].Get<std::optional<double>>("height"), std::nullopt);
  EXPECT_TRUE(table[2]["height"].IsNull());
  std::string names;
  for (const Column column : table.Columns()) names += column.Name() + " ";
  for (const Row row : table) names += row["name"].ToText() + " ";
  for (const Cell cell : table[0]) names += cell.ToText() + " ";
  EXPECT_EQ(names, "name height first Eiger Mönch Unnamed Eiger 3967 1858-08-11T00:00:00Z ");
  EXPECT_EQ(table["height"].As<std::optional<double>>(),
            (std::vector<std::optional<double>>{3967, 4110.5, std::nullopt}));
  const Rows rows = table.Rows();
  EXPECT_EQ(rows.end() - rows.begin(), 3);
  EXPECT_EQ(rows[2], *(rows.begin() + 2));
  EXPECT_EQ(rows.back(), table[2]);
  std::vector<Row> sorted(rows.begin(), rows.end());
  std::ranges::sort(sorted, std::greater(), [](const Row& row) { return row["height"].Or(0.0); });
  EXPECT_EQ(sorted[0]["name"], "Mönch");
#if !defined(__clang_major__) || __clang_major__ > 15  // older ones cannot compile std::views
  const auto isHigh = [](const Row& row) { return row["height"].Or(0.0) > 4000; };
  EXPECT_EQ((*(rows | std::views::filter(isHigh)).begin())["name"], "Mönch");
#endif
}

TEST(Table, IsWrittenThroughItsCells) {
  Table table = Peaks();
  table[2]["height"] = 2 * table[0]["height"].As<double>();
  table[2]["first"] = table[0]["first"];
  EXPECT_EQ(Print(table[2]), "Unnamed | 7934 | 1858-08-11T00:00:00Z");
  const Column feet = table.AddColumn(
      "feet", [](const Row& row) { return std::floor(row["height"].As<double>() / 0.3048); });
  EXPECT_EQ(feet.As<int>(), (std::vector{13015, 13485, 26030}));
  table["name"].Fill("same");
  EXPECT_EQ(table["name"].As<std::string>(), std::vector<std::string>(3, "same"));
  const Row removed = table[0];
  table.RemoveRow(0);
  table.RemoveColumn("feet");
  EXPECT_EQ(removed[0], "same");
  EXPECT_EQ(removed.Index(), -1);
  EXPECT_EQ(table.RowCount(), 2);
  EXPECT_FALSE(table.HasColumn("feet"));
}

TEST(Table, IsPrintedForATerminal) {
  Table table = Peaks();
  table.AddRow({"\u65E5\u672C\n\xFF", -1, true});
  EXPECT_EQ(Print(table),
            "name     height  first\n"
            "Eiger      3967  1858-08-11T00:00:00Z\n"
            "Mönch    4110.5  1857-08-15T00:00:00Z\n"
            "Unnamed\n"
            "日本 \uFFFD       -1  true\n");
  std::ostringstream narrow;
  Print(narrow, table, {.rows = 2, .width = 14, .cellWidth = 4});
  EXPECT_EQ(narrow.str(),
            "name  hei…\n"
            "Eig…  3967\n"
            "Mön…  411…\n"
            "[2 of 4 rows, 2 of 3 columns]\n");
  EXPECT_EQ(Print(Table()), "");
}

TEST(Table, SaysWhatIsWrong) {
  Table table = Peaks();
  const std::function<void()> calls[] = {
      [&] { table["depth"]; },
      [&] { table[0]["depth"]; },
      [&] { table[3]; },
      [&] { table[-1]; },
      [&] { table[0][7]; },
      [&] { table[0]["name"].As<int>(); },
      [&] { table["height"].As<int>(); },
      [&] { table["height"].As<double>(); },
      [&] {
        table.AddRow({1, 2, 3, 4});
      },
  };
  const char* const messages[] = {
      "There is no column 'depth'!",
      "There is no column 'depth'!",
      "There is no row 3: there are 3.",
      "There is no row -1: there are 3.",
      "There is no column 7: there are 3.",
      "Column 'name', row 0: the value 'Eiger' is not a number",
      "Column 'height', row 1: the value '4110.5' is not a whole number in range",
      "Column 'height', row 2: there is no value",
      "Error while setting cell value",
  };
  for (std::size_t i = 0; i < std::size(calls); ++i) EXPECT_EQ(Message(calls[i]), messages[i]);
  try {
    table[1].Get<int>("height");
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.Column(), "height");
    EXPECT_EQ(error.Row(), 1);
    EXPECT_EQ(error.Value(), "4110.5");
    EXPECT_EQ(error.Code(), 2u);
  }
}

}  // namespace layerdata::tests
