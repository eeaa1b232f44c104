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
        Ptr<Interfaces::IValue> value;
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

TEST(Row, FailuresAreThrownOrReported) {
  const auto table = MakeTable({"a", "b"}, {{1, 2}});
  const auto other = MakeTable({"a"});
  IRow& row = *table->GetRow(0);
  const Variant value(1);
  const _VARIANT undefined{28, {0, 0}};
  Variant out(5);
  const char* const cannotBeNull = "Cannot be nullptr!";
  const char* const foreign = "Column does not belong to the current table!";
  const struct {
    std::function<void()> operation;
    const char* error;
  } thrown[] = {
      {[&] { row.GetCellByName("c", &out); }, kMissingName},
      {[&] { row.GetCellByName(nullptr, &out); }, cannotBeNull},
      {[&] { row.GetCellByName("a", nullptr); }, cannotBeNull},
      {[&] { row.GetCell(2, &out); }, "Column index out of range [2/2]!"},
      {[&] { row.GetCell(-1, &out); }, "Column index out of range [-1/2]!"},
      {[&] { row.GetCell(0, nullptr); }, cannotBeNull},
      {[&] { row.GetCellOfColumn(other->GetColumn(0), &out); }, foreign},
      {[&] { row.GetCellOfColumn(nullptr, &out); }, cannotBeNull},
      {[&] { row.SetCell(0, nullptr); }, kNullRecord},
      {[&] { row.SetCell(2, &value); }, "Column index out of range [2/2]!"},
      {[&] { row.SetCellByName("c", &value); }, kMissingName},
      {[&] { row.SetCellByName("c", nullptr); }, kNullRecord},
      {[&] { row.SetCellByName(nullptr, &value); }, cannotBeNull},
      {[&] { row.SetCellOfColumn(other->GetColumn(0), &value); }, foreign},
      {[&] { row.SetCellOfColumn(nullptr, &value); }, cannotBeNull},
      {[&] { row.SetCellOfColumn(table->GetColumn(0), nullptr); }, kNullRecord},
      {[&] { row.SetCells(nullptr, 1); }, kNullRecord},
      {[&] {
         row.SetCells(Cells{1, 2, 3}.data(), 3);
       },
       "Error while setting cell value"},
      {[&] { row.GetColumn(2); }, "Column index out of range [2/2]!"},
      {[&] { row.GetColumnByName("c"); }, kMissingName},
  };
  for (const auto& c : thrown) EXPECT_EQ(ThrownBy(c.operation), c.error);
  EXPECT_THROW(row.GetCellByName("c", &out), std::out_of_range);

  const struct {
    std::function<bool(IErrorCode**)> operation;
    const char* error;
  } reported[] = {
      {[&](auto e) { return row.TryGetCellByName("c", &out, e); }, kMissingName},
      {[&](auto e) { return row.TryGetCell(2, &out, e); }, "Column index out of range [2/2]!"},
      {[&](auto e) { return row.TryGetCell(0, nullptr, e); }, cannotBeNull},
      {[&](auto e) { return row.TrySetCellByName("c", &value, e); }, kMissingName},
      {[&](auto e) { return row.TrySetCellByName("c", nullptr, e); }, kNullRecord},
      {[&](auto e) { return row.TrySetCellByName(nullptr, &value, e); }, cannotBeNull},
      {[&](auto e) { return row.TrySetCellByName("a", &undefined, e); },
       "Variant type is undefined! Did you forget to zero out the VARIANT structure? It appears "
       "uninitialized!"},
      {[&](auto e) { return table->GetColumn(0)->GetValue(1, &out, e); },
       "Row index out of range [1/1]!"},
      {[&](auto e) { return table->GetColumn(0)->GetValue(0, nullptr, e); }, cannotBeNull},
  };
  for (const auto& c : reported) {
    Ptr<IErrorCode> error;
    EXPECT_FALSE(c.operation(error.Receive())) << c.error;
    EXPECT_EQ(MessageOf(error), c.error);
    EXPECT_FALSE(c.operation(nullptr)) << c.error;
    error = SomeError();
    IErrorCode* kept = error.Get();
    EXPECT_FALSE(c.operation(&kept)) << c.error;
    EXPECT_EQ(kept, error.Get()) << "an error already there is left alone";
  }
  EXPECT_EQ(TextOf(row), "1|2");
  EXPECT_EQ(row.IsModified(), 0);
  EXPECT_EQ(out.As<int>(), 5);
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

TEST(Row, SetCellsWritesTheFirstCells) {
  const auto table = MakeTable({"a", "b"}, {{1, 2}});
  table->GetRow(0)->SetCells(Cells{"x"}.data(), 1);
  EXPECT_EQ(TextOf(*table.Get()), "x|2");
  EXPECT_EQ(table->GetRow(0)->IsModified(), 1);
  EXPECT_EQ(table->GetColumn(0)->GetType(), ValueType::String);
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
  Ptr<Interfaces::IString> text;
  ASSERT_TRUE(row.GetCellText(0, text.Receive()));
  EXPECT_STREQ(text->GetUtf8(), "2.500000");
  EXPECT_EQ(ThrownBy([&] { row.GetCellText(0, nullptr); }),
            "Pointer to a pointer of struct Data::Interfaces::IString must not be null! Address "
            "of return must be specified!");

  Ptr<Interfaces::IValue> value;
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
    Ptr<IErrorCode> error;
    EXPECT_FALSE(row->TrySetCellByName("a", &value, error.Receive()));
    EXPECT_EQ(MessageOf(error), kNullTable);
  }
}

}  // namespace Data::tests
