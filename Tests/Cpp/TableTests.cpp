#include <LayerData/Print.h>
#include <LayerData/Schema.h>
#include <LayerData/Table.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
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
  Print(narrow, table, {.rows = 2, .width = 14, .cellWidth = 4, .types = true});
  EXPECT_EQ(narrow.str(),
            "name  hei…\n"
            "text  num…\n"
            "Eig…  3967\n"
            "Mön…  411…\n"
            "[2 of 4 rows, 2 of 3 columns]\n");
  EXPECT_EQ(Print(Table()), "");
}

TEST(Table, IsReadFromDelimitedText) {
  ReadReport report;
  const Table table = Table::ParseCsv("preamble\nzip;day;n\n00501;2024-01-31;1\n;;2.50\n",
                                      {.textColumns = {"zip"}}, &report);
  EXPECT_EQ(Print(table),
            "zip    day           n\n"
            "00501  2024-01-31    1\n"
            "                   2.5\n");
  EXPECT_EQ(report.Separator(), ";");
  EXPECT_TRUE(report.HasHeader());
  EXPECT_EQ(report.CodePage(), 65001u);
  EXPECT_EQ(report.LineCount(), 4u);
  EXPECT_EQ(report.Problems().size(), 3u);
  EXPECT_EQ(Print(report).substr(0, 28), "Line 0 was dropped: preamble");
  EXPECT_EQ(Table::ParseCsv("a,b\n1,2,3\n4,5\n",
                            {.header = HeaderLine::Yes, .longLines = LongLines::Keep})
                .RowCount(),
            2);
  EXPECT_EQ(Table::ParseCsv("a\tb\n1\t2\n", {.allText = true})[0][0], "1");
  EXPECT_EQ(Table::ParseCsv("1\n2\n3\n", {.maxRows = 2}).RowCount(), 2);
  EXPECT_EQ(Table::ParseCsv("n\n\xE9\n", {.codePage = 1252})[0][0], "\u00E9");
  EXPECT_EQ(Message([] { Table::ParseCsv(""); }).substr(0, 17), "Size cannot be 0.");
  EXPECT_EQ(Message([] { Table::ReadCsv("no such file"); }).substr(0, 28),
            "Cannot read \"no such file\": ");
  const auto cancel = [](std::uint64_t, std::uint64_t) { return false; };
  EXPECT_EQ(Message([&] { Table::ParseCsv("a\n1\n", {.progress = cancel}); }),
            "The operation was cancelled!");
  const auto fail = [](std::uint64_t, std::uint64_t) -> bool { throw std::logic_error("mine"); };
  EXPECT_THROW(Table::ParseCsv("a\n1\n", {.progress = fail}), std::logic_error);
}

TEST(Table, IsReadFromAndWrittenAsText) {
  const auto cells = [](const Table& table) { return Print(table[0]) + "; " + Print(table[1]); };
  const char* const json = R"([{"a":1.0,"b":"x,\"y"},{"a":null,"b":"01"}])";
  const Table table = Table::ParseJson(json);
  EXPECT_EQ(table.ToJson(), Text(json));
  EXPECT_EQ(table.ToCsv(), Text("a,b\n1.0,\"x,\"\"y\"\n,\"01\"\n"));
  EXPECT_EQ(table.ToCsv({.separator = "|", .header = false, .windowsLineEnds = true}),
            Text("1.0|\"x,\"\"y\"\r\n|\"01\"\r\n"));
  EXPECT_EQ(table.ToJson({.lines = true}),
            Text("{\"a\":1.0,\"b\":\"x,\\\"y\"}\n{\"a\":null,\"b\":\"01\"}\n"));
  ReadReport report;
  EXPECT_EQ(cells(Table::ParseJson("{\"a\":1}\n{\"a\":2.5}\n", {.textColumns = {"a"}}, &report)),
            "1; 2.5");
  EXPECT_EQ(report.Separator(), "");
  const std::string csv = testing::TempDir() + "CppTests.csv",
                    lines = testing::TempDir() + "CppTests.json";
  table.WriteCsv(csv);
  table.WriteJson(lines, {.lines = true});
  EXPECT_EQ(cells(Table::ReadCsv(csv, {.textColumns = {"b"}})), cells(table));
  EXPECT_EQ(cells(Table::ReadJson(lines)), cells(table));
  EXPECT_EQ(Message([&] { table.WriteCsv("no such folder/file.csv"); }).substr(0, 37),
            "Cannot write \"no such folder/file.csv");
  std::remove(csv.c_str());
  std::remove(lines.c_str());
}

TEST(Table, MakesNewTables) {
  const Table sales = Table::ParseCsv("shop,item,n\na,x,2\nb,x,1\na,y,5\nb,z,\n");
  const Table shops = Table::ParseCsv("id,city,n\na,Bern,1\nc,Chur,2\n");
  const std::pair<Table, const char*> cases[] = {
      {sales.Filter([](const Row& row) { return row["n"].Or(0) > 1; }), "ax2 ay5 "},
      {sales.Head(1), "ax2 "},
      {sales.Head(99).Head(-1), ""},
      {sales.Select({"n", "shop"}), "2a 1b 5a b "},
      {sales.SortBy("n"), "bx1 ax2 ay5 bz "},
      {sales.SortBy({{"shop", Order::Descending}, {"n", Order::DescendingNullsFirst}}),
       "bz bx1 ay5 ax2 "},
      {sales.Join(shops, {{"shop", "id"}}), "ax2Bern1 ay5Bern1 "},
      {sales.Join(shops, {{"shop", "id"}}, JoinKind::Full), "ax2Bern1 bx1 ay5Bern1 bz cChur2 "},
      {sales.Join(sales, {"shop", "item"}), "ax22 bx11 ay55 bz "},
      {sales.Head(1).Join(sales, "shop"), "ax2x2 ax2y5 "},
      {sales.GroupBy({"shop"}, {Count(), CountValues("n"), Sum("n"), Mean("n", "avg"), Min("item"),
                                Max("n")}),
       "a2273.5x5 b2111x1 "},
  };
  for (const auto& [table, expected] : cases) {
    std::string cells;
    for (const Row row : table) {
      for (const Cell cell : row) cells += cell.ToText();
      cells += " ";
    }
    EXPECT_EQ(cells, expected);
  }
  EXPECT_EQ(sales.GroupBy({"shop"}, {Sum("n"), Mean("n", "avg")}).Columns()[1].Name(), "n_sum");
  EXPECT_EQ(Message([&] { sales.SortBy("size"); }), "Column size does not exists");
}

TEST(Table, DescribesItsColumns) {
  Table table{"whole", "real", "day", "truth", "text", "nothing"};
  table.AddRow({4, 0.5, DateTime::Parse("2024-01-01"), true, "b"});
  table.AddRow({1, NAN, DateTime::Parse("2024-01-02"), true, "a"});
  table.AddRow({1, 1, DateTime::Parse("2024-01-04"), false, "a"});
  table.AddRow({2, {}, {}, {}, {}});
  std::ostringstream text;
  Print(text, table.Describe().Select({"column", "type", "count", "nulls", "distinct"}));
  Print(text, table.Describe().Select({"min", "q1", "median", "q3", "max", "mean"}),
        {.width = 200});
  EXPECT_EQ(text.str(), R"(column   type     count  nulls  distinct
whole    integer      4      0         3
real     number       3      1         2
day      date         3      1         3
truth    truth        3      1         2
text     text         3      1         2
nothing  text         0      4         0
min                   q1                    median                q3                    max                   mean
1                     1                     1.5                   2.5                   4                     2
0.5                   0.75                  nan                   nan                   nan                   nan
2024-01-01T12:00:00Z  2024-01-02T00:00:00Z  2024-01-02T12:00:00Z  2024-01-03T12:00:00Z  2024-01-04T12:00:00Z  2024-01-02T20:00:00Z
false                                                                                   true
a                                                                                       b

)");
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

// Objects after a move, and what does not exist, are failures and no crashes.
TEST(Table, SaysWhatDoesNotExist) {
  Table table = Peaks();
  const Table other{"a", "b", "c", "d", "e"};
  const std::int64_t huge = std::int64_t{1} << 32;
  const Cell lost = table[0]["first"];
  table.RemoveColumn("first");
  Table moved = table;
  const Table taken = std::move(moved);
  Row row = table[0];
  const Row takenRow = std::move(row);
  Column column = table["name"];
  const Column takenColumn = std::move(column);
  Json json = Json::Parse("[1]");
  const Json takenJson = std::move(json);
  const auto throwing = [](std::uint64_t, std::uint64_t) -> bool { throw Error("mine"); };
  CsvWriteOptions writing;
  writing.progress = throwing;
  const std::string null = "Pointer of struct Data::Interfaces::";
  const struct {
    std::string message;
    std::function<void()> job;
  } cases[] = {
      {"There is no column 'size'!", [&] { table["size"]; }},
      {"There is no column 'size'!", [&] { table[0]["size"]; }},
      {"There is no row -1: there are 3.", [&] { table[-1]; }},
      {"There is no row 18446744073709551615: there are 3.", [&] { table[~std::uint64_t{0}]; }},
      {"There is no column -1: there are 2.", [&] { table[0][-1]; }},
      {"Column index out of range [-1/2]!", [&] { table.Columns()[huge].Name(); }},
      {"Row index out of range [-1/3]!", [&] { table["name"][-1].ToText(); }},
      {"Row index out of range [3/3]!", [&] { table.RemoveRow(3); }},
      {"The row has no cell 2!", [&] { lost.ToText(); }},
      {"The row has no cell 2!", [&] { lost.As<int>(); }},
      {"The row has no cell 4!", [&] { table[0][other["e"]].IsNull(); }},
      {"Column size does not exists", [&] { table.SortBy("size"); }},
      {"mine", [&] { table.Filter([](const Row&) -> bool { throw Error("mine"); }); }},
      {"mine", [&] { table.ToCsv(writing); }},
      {null + "ITable must not be null!", [&] { moved.RowCount(); }},
      {null + "ITable must not be null!", [&] { Print(moved); }},
      {null + "ITable must not be null!", [&] { table.Join(moved, "name"); }},
      {null + "IRow must not be null!", [&] { row["name"]; }},
      {null + "IRow must not be null!", [&] { Print(row); }},
      {null + "IColumn must not be null!", [&] { ColumnData data(column); }},
      {null + "IJsonDocument must not be null!", [&] { Table::FromJson(json); }},
  };
  for (const auto& [message, job] : cases) EXPECT_EQ(Message(job), message);
  EXPECT_EQ(table.Head(-1).RowCount(), 0);
  moved = table;
  EXPECT_EQ(moved.RowCount(), 3);
}

TEST(Text, IsEmptyAfterAMove) {
  Text text("a text that has memory of its own");
  const Text taken = std::move(text);
  EXPECT_EQ(text, Text());
  EXPECT_EQ(text.ToUtf16(), u"");
  text = taken;
  EXPECT_EQ(text, taken);
}

}  // namespace layerdata::tests
