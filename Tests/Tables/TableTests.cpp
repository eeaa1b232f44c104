#include "Data/Interfaces/ITable.h"

#include <string>
#include <vector>

#include "Core/Variant.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IColumn.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/ITableHeader.h"
#include "Tables/TableSupport.h"

namespace Data::tests {

using Core::IErrorCode;
using Core::Null;
using Core::Ptr;
using Core::Variant;
using Interfaces::IColumn;
using Interfaces::IRow;
using Interfaces::ITable;
using Structures::_VARIANT;
using Structures::ValueType;

TEST(Table, StartsEmptyWithoutName) {
  const auto table = MakeTable({});
  EXPECT_EQ(table->GetColumnCount(), 0);
  EXPECT_EQ(table->GetRowCount(), 0);
  EXPECT_STREQ(table->GetHeader()->GetName(), "");
}

TEST(Table, AddColumnGivesTheExistingColumnOfAName) {
  const auto table = MakeTable({"a", "b"});
  IColumn* a = table->GetColumnByName("a");
  EXPECT_EQ(table->AddColumn("a"), a);
  EXPECT_EQ(table->InsertColumn("a", -5), a) << "the name is looked at before the index";
  EXPECT_NE(table->AddColumn("A"), a) << "names differ by case";
  EXPECT_EQ(NamesOf(*table.Get()), "a b A");
}

TEST(Table, AddRowStoresCellsInColumnOrder) {
  const struct {
    const char* what;
    std::vector<Variant> given;
    const char* stored;
    const char* error;
  } cases[] = {
      {"a cell for every column", {1, "x"}, "1|x", ""},
      {"missing cells become Null", {1}, "1|", ""},
      {"no cell at all", {}, "|", ""},
      {"too many cells add nothing", {1, 2, 3}, nullptr, "Error while setting cell value"},
  };
  for (const auto& c : cases) {
    const auto table = MakeTable({"a", "b"});
    EXPECT_EQ(ThrownBy([&] { table->AddRow(c.given.data(), c.given.size()); }), c.error) << c.what;
    EXPECT_EQ(table->GetRowCount(), c.stored ? 1 : 0) << c.what;
    if (c.stored) {
      EXPECT_EQ(TextOf(*table->GetRow(0)), c.stored) << c.what;
      EXPECT_EQ(table->GetRow(0)->IsModified(), 0) << c.what;
    }
  }
}

TEST(Table, ATableWithoutColumnsTakesNoRows) {
  const auto table = MakeTable({});
  table->GetHeader()->SetName("T");
  const char* message = "Table T must contain at least one column before you insert new row!";
  EXPECT_EQ(ThrownBy([&] { table->AddRow(nullptr, 0); }), message);
  EXPECT_EQ(ThrownBy([&] { table->InsertRow(0, nullptr, 0); }), message);
}

}  // namespace Data::tests
