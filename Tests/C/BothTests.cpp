// An object of either library works in the other.

#include <LayerData/layerdata.h>
#include <gtest/gtest.h>

#include "Core/Ptr.h"
#include "Core/Variant.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/ITable.h"

using Core::Ptr;
using Data::Interfaces::ITable;

TEST(Both, ObjectsWorkInTheOtherLibrary) {
  Ptr<ITable> first;
  ASSERT_TRUE(Data_CreateTable(first.Receive(), nullptr));
  auto* const handle = reinterpret_cast<ld_table*>(first.Get());
  ld_column* column = nullptr;
  ASSERT_TRUE(ld_table_add_column(handle, "count", &column, nullptr));
  ld_release(column);
  const Core::Variant seven(7);
  first->AddRow(&seven, 1);

  ld_table* second = nullptr;
  ASSERT_TRUE(ld_create_table(&second, nullptr));
  auto* const table = reinterpret_cast<ITable*>(second);
  table->AddColumn("count");
  table->AddRowCopy(first->GetRow(0));
  Ptr<ITable> merged;
  ASSERT_TRUE(first->Merge(table, "count", Data::Structures::MergeMode::Matching, merged.Receive(),
                           nullptr));
  EXPECT_EQ(merged->GetRowCount(), 1);
  Core::Variant cell;
  merged->GetCell(0, 0, &cell);
  EXPECT_EQ(cell.As<int>(), 7);
  ld_release(second);
}
