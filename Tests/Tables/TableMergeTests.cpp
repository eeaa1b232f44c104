#include "Tables/TableSupport.h"

namespace Data::tests {

using Structures::MergeMode;

TEST(TableMerge, TakesSeveralKeys) {
  const auto left = MakeTable({"a", "b", "x"}, {{1, 1, "l11"}, {1, 2, "l12"}, {2, 1, "l21"}});
  const auto right =
      MakeTable({"b", "a", "y"}, {{1, 1, "r11"}, {1, 2, "r21"}, {2, 2, "r22"}, {1, 1, "again"}});
  Ptr<ITable> merged;
  ASSERT_TRUE(left->MergeOnColumns(right.Get(), MergeMode::Matching, merged.Receive(), nullptr, 2,
                                   "a", "b"));
  EXPECT_EQ(NamesOf(*merged.Get()), "a b x y");
  EXPECT_EQ(TextOf(*merged.Get()), "1|1|l11|r11 1|1|l11|again 2|1|l21|r21");

  ASSERT_TRUE(left->Merge(left.Get(), "x", MergeMode::All, merged.Receive(), nullptr));
  EXPECT_EQ(TextOf(*merged.Get()), "1|1|l11|1|1 1|2|l12|1|2 2|1|l21|2|1") << "with itself";

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

TEST(TableMerge, KeepsNamesApartAndColumnsDescribed) {
  const auto left = MakeTable({"k", "a", "a_right"}, {{1, 2, 3}});
  const auto right = MakeTable({"a", "k"}, {{Null, Variant(INT64_C(1))}, {2.5, 7}});
  right->GetColumn(0)->SetWidth(12);
  right->GetColumn(0)->SetReadOnly(1);
  Ptr<ITable> merged;
  ASSERT_TRUE(left->Merge(right.Get(), "k", MergeMode::Matching, merged.Receive(), nullptr));
  EXPECT_EQ(NamesOf(*merged.Get()), "k a a_right a_right_right");
  EXPECT_EQ(TextOf(*merged.Get()), "1|2|3|") << "keys of another width are equal";
  auto& column = *merged->GetColumn(3);
  EXPECT_EQ(column.GetType(), ValueType::Double);
  EXPECT_EQ(column.GetWidth(), 12u);
  EXPECT_EQ(column.IsReadOnly(), 1);
  EXPECT_EQ(column.HasSeenNull(), 1);
  EXPECT_EQ(merged->GetRow(0)->IsModified(), 0);
}

TEST(TableMerge, SharesObjectsWithBothTables) {
  const auto text = New(Data_CreateString);
  text->SetUtf8("shared", 6);
  const auto left = MakeTable({"k", "l"}, {{1, text}, {1, text}});
  const auto right = MakeTable({"k", "r"}, {{1, text}});
  Ptr<ITable> merged;
  ASSERT_TRUE(left->Merge(right.Get(), "k", MergeMode::Matching, merged.Receive(), nullptr));
  EXPECT_EQ(ReferencesTo(text), 8u);
  merged.Reset();
  EXPECT_EQ(ReferencesTo(text), 4u);
}

}  // namespace Data::tests
