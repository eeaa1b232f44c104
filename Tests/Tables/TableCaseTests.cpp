#include "Tables/TableScript.h"

namespace Data::tests {

using Structures::MergeMode;

TEST(TableCases, OperationsAnswerFailOrChangeTheRows) {
  for (const char* section : {"rows", "columns", "failures", "row failures", "index"}) {
    for (const Case& c : Cases("Tables.txt", section)) {
      const auto table = TableOf(c[0]);
      table->GetHeader()->SetName("T");
      EXPECT_EQ(AnswersOf(*table, c[1]), c[2]) << c.where << ": " << c[3];
    }
  }
}

TEST(TableCases, MergesJoinRowsOfEqualKeys) {
  for (const Case& c : Cases("Tables.txt", "merge")) {
    const auto left = TableOf(c[0]), right = TableOf(c[1]);
    left->GetHeader()->SetName("cities");
    right->GetHeader()->SetName("countries");
    std::istringstream words{std::string(c[2])};
    int mode = 0;
    std::string leftKey, rightKey;
    words >> mode >> leftKey >> rightKey;
    Ptr<ITable> merged;
    const std::string failure = Failure([&](auto e) {
      const char* const names[] = {leftKey.c_str(), rightKey.c_str()};
      return left->MergeOn(right.Get(), names[0], names[1], MergeMode{mode}, merged.Receive(), e);
    });
    ASSERT_EQ(failure, merged ? "" : c[3]) << c.where << ": " << c[4];
    if (!merged) continue;
    EXPECT_EQ(NamesOf(*merged) + "; " + TextOf(*merged), c[3]) << c.where << ": " << c[4];
    EXPECT_STREQ(merged->GetHeader()->GetName(), "cities_countries_merged");
  }
}

TEST(TableMerge, TakesSeveralKeys) {
  const auto left = MakeTable({"a", "b", "x"}, {{1, 1, "l11"}, {1, 2, "l12"}, {2, 1, "l21"}});
  const auto right =
      MakeTable({"b", "a", "y"}, {{1, 1, "r11"}, {1, 2, "r21"}, {2, 2, "r22"}, {1, 1, "again"}});
  Ptr<ITable> merged;
  ASSERT_TRUE(left->MergeOnColumns(right.Get(), MergeMode::Matching, merged.Receive(), nullptr, 2,
                                   "a", "b"));
  EXPECT_EQ(NamesOf(*merged.Get()), "a b x y");
  EXPECT_EQ(TextOf(*merged.Get()), "1,1,l11,r11 1,1,l11,again 2,1,l21,r21");
  EXPECT_EQ(Failure([&](auto e) {
              return left->MergeOnColumns(right.Get(), MergeMode::All, Ptr<ITable>().Receive(), e,
                                          0);
            }),
            "Invalid column!");
  EXPECT_EQ(Failure([&](auto e) {
              return left->Merge(right.Get(), nullptr, MergeMode::All, Ptr<ITable>().Receive(), e);
            }),
            kNullText);
}

TEST(TableMerge, DescribesColumnsAsTheTablesDo) {
  const auto left = MakeTable({"k"}, {{1}}), right = MakeTable({"a", "k"}, {{Null, 1}, {2.5, 7}});
  IColumn& source = *right->GetColumn(0);
  source.SetWidth(12);
  source.SetDecimals(UINT32_MAX);
  source.SetHidden(3);
  source.SetReadOnly(255);
  Ptr<ITable> merged;
  ASSERT_TRUE(left->Merge(right.Get(), "k", MergeMode::Matching, merged.Receive(), nullptr));
  for (IColumn* column : {&source, merged->GetColumn(1)}) {
    EXPECT_EQ(column->GetType(), ValueType::Double);
    EXPECT_EQ(column->GetWidth(), 12u);
    EXPECT_EQ(column->GetDecimals(), UINT32_MAX);
    EXPECT_EQ(column->IsHidden(), 3) << "a byte, kept as it is";
    EXPECT_EQ(column->IsReadOnly(), 255);
    EXPECT_EQ(column->HasSeenNull(), 1);
  }
  EXPECT_EQ(merged->GetColumn(0)->GetWidth() + merged->GetColumn(0)->IsHidden(), 0u);
  EXPECT_EQ(merged->GetRow(0)->IsModified(), 0);
}

}  // namespace Data::tests
