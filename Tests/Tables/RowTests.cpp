#include "Tables/TableSupport.h"

namespace Data::tests {

TEST(Row, EveryWriteTellsTheColumnAndMarksTheRow) {
  const struct {
    const char* what;
    Cells written;
    ValueType type;
    int hasSeenNull;
  } cases[] = {
      {"the type of the value", {1}, ValueType::Int32, 0},
      {"the last type wins", {1, "x", 2.5}, ValueType::Double, 0},
      {"Null keeps the type", {1, Null}, ValueType::Int32, 1},
      {"nothing forgets a Null", {Null, 1}, ValueType::Int32, 1},
      {"only Null", {Null}, ValueType::Null, 1},
      {"a text by value and one by reference", {"x", std::string(20, 'x')}, ValueType::String, 0},
      {"a null reference is no Null", {NullReference(ValueType::DateTime)}, ValueType::DateTime, 0},
      {"a zeroed record", {Variant()}, ValueType::Unknown, 0},
  };
  using Write = std::function<void(IRow&, const _VARIANT*)>;
  const std::pair<const char*, Write> writers[] = {
      {"by name, guarded",
       [](IRow& row, const _VARIANT* v) { EXPECT_TRUE(row.TrySetCellByName("b", v, nullptr)); }},
      {"by index", [](IRow& row, const _VARIANT* v) { row.SetCell(1, v); }},
      {"by name", [](IRow& row, const _VARIANT* v) { row.SetCellByName("b", v); }},
      {"by column", [](IRow& row, const _VARIANT* v) { row.SetCellOfColumn(row.GetColumn(1), v); }},
      {"through the table",
       [](IRow& row, const _VARIANT* v) { row.GetTable()->SetCellByName(row.GetIndex(), "b", v); }},
  };
  for (const auto& [how, write] : writers) {
    for (const auto& c : cases) {
      const auto table = MakeTable({"a", "b"}, {{}});
      IRow& row = *table->GetRow(0);
      for (const Variant& value : c.written) write(row, &value);
      IColumn& column = *table->GetColumn(1);
      EXPECT_EQ(column.GetType(), c.type) << how << ": " << c.what;
      EXPECT_EQ(column.HasSeenNull(), c.hasSeenNull) << how << ": " << c.what;
      EXPECT_EQ(row.IsModified(), 1) << how << ": " << c.what;
      const _VARIANT &stored = *row.GetCellAt(1), &last = c.written.back();
      EXPECT_EQ(stored.type, last.type) << how << ": " << c.what;
      EXPECT_TRUE(std::ranges::equal(stored.value, last.value)) << how << ": " << c.what;
      EXPECT_EQ(table->GetColumn(0)->HasSeenNull(), 0) << how << ": " << c.what;
    }
  }
}

TEST(Row, EveryReadGivesTheSameCell) {
  const auto table = MakeTable({"a", "b"}, {{1, std::string(30, 'x')}});
  IRow& row = *table->GetRow(0);
  const std::function<bool(_VARIANT*)> readers[] = {
      [&](_VARIANT* out) { return row.GetCellByName("b", out); },
      [&](_VARIANT* out) { return row.TryGetCellByName("b", out, nullptr); },
      [&](_VARIANT* out) { return row.GetCell(1, out); },
      [&](_VARIANT* out) { return row.TryGetCell(1, out, nullptr); },
      [&](_VARIANT* out) { return row.GetCellOfColumn(table->GetColumn(1), out); },
      [&](_VARIANT* out) { return table->GetColumn(1)->GetValue(0, out, nullptr); },
      [&](_VARIANT* out) {
        Ptr<IValue> value;
        return row.GetValue(1, value.Receive()) && value->GetValue(out);
      },
  };
  for (const auto& read : readers) {
    Variant out(std::string(40, 'o'));  // its reference is given up
    EXPECT_TRUE(read(&out));
    EXPECT_EQ(out.As<std::string>(), std::string(30, 'x'));
  }
  EXPECT_EQ(row.IsModified(), 0);
}

TEST(Row, AnUndefinedRecordIsStoredAsPlainBytes) {
  const auto table = MakeTable({"a"}, {{1}});
  const _VARIANT undefined{28u | 1u << 16, {0xDEAD, 0}};  // looks like a reference
  table->GetRow(0)->SetCell(0, &undefined);
  table->AddRow(&undefined, 1);
  EXPECT_EQ(table->GetCellAt(1, 0)->value[0], 0xDEADu);
}

TEST(Row, ACellMayBeWrittenOntoItselfAndItsNeighbours) {
  const auto table = MakeTable({"a", "b"}, {{std::string(30, 'x'), 2}});
  IRow& row = *table->GetRow(0);
  row.SetCell(0, row.GetCellAt(0));
  row.SetCell(1, row.GetCellAt(0));
  row.SetCells(row.GetCellAt(0), 2);
  table->GetColumn(1)->Fill(row.GetCellAt(0));
  row.GetCell(0, row.GetCellAt(0));
  EXPECT_EQ(TextOf(row), std::string(30, 'x') + "|" + std::string(30, 'x'));
}

TEST(Row, KnowsItsNeighboursColumnsAndTable) {
  const auto table = MakeTable({"a", "b"}, {{1}, {2}});
  IRow &first = *table->GetRow(0), &second = *table->GetRow(1);
  EXPECT_EQ(first.GetNextRow(), &second);
  EXPECT_EQ(second.GetNextRow(), nullptr);
  EXPECT_EQ(second.GetPreviousRow(), &first);
  EXPECT_EQ(first.GetPreviousRow(), nullptr);
  EXPECT_EQ(first.GetTable(), table.Get());
  EXPECT_EQ(first.GetColumn(1), table->GetColumn(1));
  EXPECT_EQ(first.GetColumnByName("a"), table->GetColumn(0));
  EXPECT_EQ(first.GetCellCount(), 2);
  EXPECT_EQ(first.GetCellAt(2), nullptr);
  EXPECT_EQ(first.GetCellAt(-1), nullptr);
  first.SetModified(7);
  EXPECT_EQ(first.IsModified(), 7) << "a byte, kept as it is";
}

TEST(Row, GivesACellAsTextAndAsAnObject) {
  const auto table = MakeTable({"a"}, {{2.5}});
  IRow& row = *table->GetRow(0);
  Ptr<IString> text;
  ASSERT_TRUE(row.GetCellText(0, text.Receive()));
  EXPECT_STREQ(text->GetUtf8(), "2.500000");
  Ptr<IValue> value;
  ASSERT_TRUE(row.GetValue(0, value.Receive()));
  row.SetCell(0, Given(std::string(20, 'x')));
  EXPECT_EQ(value->GetType(), ValueType::Double) << "a copy";
  value->SetValue(row.GetCellAt(0));
  table->ClearRows();
  ASSERT_TRUE(value->GetText(text.Receive()));
  EXPECT_EQ(text->GetUtf8(), std::string(20, 'x'));
  EXPECT_EQ(Core::ToText(*value->GetRecord()), std::string(20, 'x'));
  EXPECT_EQ(ThrownBy([&] { value->SetValue(nullptr); }), kNullRecord);
  EXPECT_EQ(ThrownBy([&] { value->GetValue(nullptr); }), "Cannot be nullptr!");
}

TEST(Row, OutlivesItsTableWithItsCells) {
  const std::function<void(Ptr<ITable>&)> departures[] = {
      [](Ptr<ITable>& table) { table.Reset(); },
      [](Ptr<ITable>& table) { table->RemoveRow(0); },
      [](Ptr<ITable>& table) { table->ClearRows(); },
  };
  for (const auto& depart : departures) {
    auto table = MakeTable({"a", "b"}, {{std::string(30, 'x'), 2}});
    const Ptr<IRow> row(table->GetRow(0));
    const Ptr<IColumn> column(table->GetColumn(0));
    depart(table);
    Variant value(1);
    EXPECT_EQ(TextOf(*row), std::string(30, 'x') + "|2");
    EXPECT_EQ(row->GetIndex(), -1);
    EXPECT_EQ(row->GetTable(), nullptr);
    const std::function<void()> operations[] = {[&] { row->GetCellByName("a", &value); },
                                                [&] { row->GetCell(0, &value); },
                                                [&] { row->GetCellOfColumn(column.Get(), &value); },
                                                [&] { row->SetCellByName("a", &value); },
                                                [&] { row->SetCell(0, &value); },
                                                [&] { row->SetCellOfColumn(column.Get(), &value); },
                                                [&] { row->SetCells(&value, 1); },
                                                [&] { row->GetNextRow(); },
                                                [&] { row->GetPreviousRow(); },
                                                [&] { row->GetColumn(0); },
                                                [&] { row->GetColumnByName("a"); }};
    for (const auto& operation : operations) EXPECT_EQ(ThrownBy(operation), kNullTable);
    EXPECT_EQ(Failure([&](auto e) { return row->TrySetCellByName("a", &value, e); }), kNullTable);
  }
}

}  // namespace Data::tests
