// Columns and rows of tables that the caller implements, and with the caller's objects in cells.

#include <LayerData/layerdata.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "../CallersDateTime.h"
#include "../CallersTable.h"
#include "../CallersText.h"
#include "Core/Variant.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IRow.h"

using Core::Ptr;
using Core::Variant;
using Data::Interfaces::IString;
using Data::Interfaces::ITable;
using Data::tests::CallersDateTime;
using Data::tests::CallersTable;
using Data::tests::CallersText;

namespace {

ld_table* Handle(ITable* table) { return reinterpret_cast<ld_table*>(table); }

/// The columns "k" and "t". Row 1 has the caller's own text.
Ptr<ITable> TableWith(const Ptr<CallersText>& text) {
  Ptr<ITable> table;
  Data_CreateTable(table.Receive(), nullptr);
  table->AddColumn("k");
  table->AddColumn("t");
  const Variant rows[][2] = {{3, "c"}, {1, Ptr<IString>(text)}, {2, "a long text of the library"}};
  for (const auto& row : rows) table->AddRow(row, 2);
  return table;
}

/// Every reading function, and what its result shows as text.
using Call = std::function<bool(ld_table*, std::string&, ld_error**)>;

std::string TextOf(ITable& table) {
  std::string text;
  for (std::int64_t i = 0; i < table.GetRowCount(); ++i)
    for (std::int32_t j = 0; j < table.GetColumnCount(); ++j)
      text += Core::ToText(*table.GetCellAt(i, j)) + (j == 0 ? " " : ";");
  return text;
}

template <class Make>
Call Giving(Make&& make) {
  return [make](ld_table* table, std::string& text, ld_error** error) {
    ld_table* made = nullptr;
    if (!make(table, &made, error)) return false;
    const auto held = Ptr<ITable>::Adopt(reinterpret_cast<ITable*>(made));
    text = TextOf(*held);
    return true;
  };
}

bool ReadColumn(ld_table* table, std::string& text, ld_error** error) {
  const ld_column_data* data = nullptr;
  ld_object* owner = nullptr;
  if (!ld_table_get_column_data(table, 1, 0, -1, nullptr, &data, &owner, error)) return false;
  for (std::int64_t i = 0; i < data->length; ++i)
    text += std::string(data->bytes + data->offsets[i], data->bytes + data->offsets[i + 1]) + ";";
  ld_release(owner);
  return true;
}

const char* const kNames[] = {"t", "k"};
const ld_sort_key kSortKey = {"t", LD_SORT_ORDER_ASCENDING};
const ld_aggregate kAggregate = {LD_AGGREGATE_FUNCTION_MAX, "t", "high"};

const struct {
  const char* name;
  Call call;
  const char* result;
} kCalls[] = {
    {"get_column_data", ReadColumn, "c;mine;a long text of the library;"},
    {"filter", Giving([](ld_table* table, ld_table** out, ld_error** error) {
       const std::uint8_t bits = 6;
       return ld_table_filter(table, &bits, 3, out, error);
     }),
     "1 mine;2 a long text of the library;"},
    {"select", Giving([](ld_table* table, ld_table** out, ld_error** error) {
       return ld_table_select(table, kNames, 2, out, error);
     }),
     "c 3;mine 1;a long text of the library 2;"},
    {"sort", Giving([](ld_table* table, ld_table** out, ld_error** error) {
       return ld_table_sort(table, &kSortKey, 1, out, error);
     }),
     "2 a long text of the library;3 c;1 mine;"},
    {"join", Giving([](ld_table* table, ld_table** out, ld_error** error) {
       return ld_table_join(table, table, kNames, nullptr, 2, LD_JOIN_KIND_INNER, out, error);
     }),
     "3 c;1 mine;2 a long text of the library;"},
    {"group", Giving([](ld_table* table, ld_table** out, ld_error** error) {
       return ld_table_group(table, kNames, 1, &kAggregate, 1, out, error);
     }),
     "c c;mine mine;a long text of the library a long text of the library;"},
};

TEST(Callers, TablesAreReadThroughTheirInterface) {
  for (const auto& c : kCalls) {
    const auto table = Core::MakePtr<CallersTable>(TableWith(Core::MakePtr<CallersText>("mine")));
    std::string text;
    EXPECT_TRUE(c.call(Handle(table.Get()), text, nullptr)) << c.name;
    EXPECT_EQ(text, c.result) << c.name;
  }
}

TEST(Callers, DatesAreReadThroughTheirInterface) {
  Ptr<ITable> table;
  Data_CreateTable(table.Receive(), nullptr);
  table->AddColumn("d");
  for (const char* date : {"2024-11-14T10:00:00Z", "1969-12-31T23:59:59.5Z"}) {
    const Variant cell(Ptr<Data::Interfaces::IDateTime>(Core::MakePtr<CallersDateTime>(date)));
    table->AddRow(&cell, 1);
  }
  ld_string* text = nullptr;
  ASSERT_TRUE(ld_csv_write(Handle(table.Get()), nullptr, &text, nullptr));
  const char* utf8 = nullptr;
  EXPECT_TRUE(ld_string_get_utf8(text, &utf8, nullptr));
  EXPECT_STREQ(utf8, "d\n2024-11-14T10:00:00.000000000Z\n1969-12-31T23:59:59.500000000Z\n");
  ld_release(text);
  const ld_column_data* data = nullptr;
  ld_object* owner = nullptr;
  ASSERT_TRUE(
      ld_table_get_column_data(Handle(table.Get()), 0, 0, -1, nullptr, &data, &owner, nullptr));
  EXPECT_EQ(data->format, LD_COLUMN_FORMAT_DATE_TIME);
  const auto* const times = static_cast<const std::int64_t*>(data->values);
  EXPECT_EQ(times[0], 1'731'578'400'000'000);
  EXPECT_EQ(times[1], -500'000);
  ld_release(owner);
}

TEST(Callers, TablesAreNotWritten) {
  const auto table = Core::MakePtr<CallersTable>(TableWith(Core::MakePtr<CallersText>("mine")));
  const std::int64_t values[] = {1, 2, 3};
  ld_column_data data{};
  data.size = sizeof data;
  data.format = LD_COLUMN_FORMAT_INT64;
  data.length = 3;
  data.values = values;
  ld_error* error = nullptr;
  EXPECT_FALSE(ld_table_set_column_data(Handle(table.Get()), 0, 0, &data, &error));
  EXPECT_STREQ(ld_error_message(error), "The table is not one of the library!");
  ld_release(error);
  EXPECT_FALSE(ld_table_add_column_data(Handle(table.Get()), "new", &data, nullptr));
}

/// What an object in a cell does to its table while the table is read.
TEST(Callers, ObjectsInCellsMayChangeTheTable) {
  const struct {
    const char* name;
    void (*change)(ITable&);
  } changes[] = {
      {"clear", [](ITable& table) { table.ClearRows(); }},
      {"remove a row", [](ITable& table) { table.RemoveRow(0); }},
      {"remove its row", [](ITable& table) { table.RemoveRow(table.GetRowCount() / 2); }},
      {"remove a column", [](ITable& table) { table.RemoveColumnAt(0); }},
      {"add",
       [](ITable& table) {
         for (int i = 0; i < 100; ++i) table.AddRow(nullptr, 0);
         table.AddColumn("new");
       }},
  };
  for (const auto& c : kCalls) {
    for (const auto& change : changes) {
      for (const bool onRead : {true, false}) {
        const auto text = Core::MakePtr<CallersText>("mine");
        const auto table = TableWith(text);
        const Ptr<ITable> other = table;
        bool hasChanged = false;
        auto& event = onRead ? text->onRead : text->onAddReference;
        event = [&, raw = other.Get()] {
          if (hasChanged || raw->GetRowCount() == 0) return;
          hasChanged = true;
          change.change(*raw);
        };
        std::string result;
        ld_error* error = nullptr;
        const bool isRead = c.call(Handle(table.Get()), result, &error);
        EXPECT_TRUE(isRead || error) << c.name << ", " << change.name;
        // Once its text is read, the library works on copies.
        if (onRead) {
          EXPECT_EQ(result, c.result) << c.name << ", " << change.name;
        }
        ld_release(error);
        event = [] {};
      }
    }
  }
}

TEST(Callers, ObjectsThatAreReplacedMayChangeTheTable) {
  const auto text = Core::MakePtr<CallersText>("mine");
  auto table = TableWith(text);
  ASSERT_TRUE(table->BuildIndex(0, table->GetColumn(1), nullptr));
  bool hasChanged = false;
  const std::int64_t values[] = {7, 8, 9};
  ld_column_data data{};
  data.size = sizeof data;
  data.format = LD_COLUMN_FORMAT_INT64;
  data.length = 3;
  data.values = values;
  text->onRelease = [&] {
    if (std::exchange(hasChanged, true)) return;
    EXPECT_EQ(TextOf(*table), "3 7;1 8;2 9;") << "all is written before anything is released";
    table->ClearRows();
  };
  EXPECT_TRUE(ld_table_set_column_data(Handle(table.Get()), 1, 0, &data, nullptr));
  EXPECT_TRUE(hasChanged);
  EXPECT_EQ(table->GetRowCount(), 0);
  EXPECT_EQ(table->GetIndexColumn(), nullptr) << "its keys called back";
  text->onRelease = [] {};
}

}  // namespace
