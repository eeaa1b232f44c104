#include "Tables/TableSupport.h"

namespace Data::tests {

using Structures::MergeMode;

namespace {

Ptr<ITable> Named(const char* name, Ptr<ITable> table) {
  table->GetHeader()->SetName(name);
  return table;
}

Ptr<ITable> Cities() {
  return Named("cities", MakeTable({"id", "city", "country"}, {{1, "Oslo", "no"},
                                                               {2, "Bergen", "no"},
                                                               {3, "Nowhere", Null},
                                                               {4, "Bern", "ch"},
                                                               {5, "Lima", "pe"}}));
}

Ptr<ITable> Countries() {
  return Named("countries", MakeTable({"name", "country", "id"}, {{"Norway", "no", 10},
                                                                  {"Switzerland", "ch", 11},
                                                                  {"None", Null, 12},
                                                                  {"Noreg", "no", 13},
                                                                  {"Japan", "jp", 14}}));
}

}  // namespace

TEST(TableMerge, JoinsRowsOfEqualKeys) {
  const char* const joined =
      "1|Oslo|no|Norway|10 1|Oslo|no|Noreg|13 2|Bergen|no|Norway|10 2|Bergen|no|Noreg|13";
  const struct {
    const char* what;
    MergeMode mode;
    std::string rows;
  } cases[] = {
      {"partners only", MergeMode::Matching, std::string(joined) + " 4|Bern|ch|Switzerland|11"},
      {"left rows without a partner, a Null key among them", MergeMode::AllLeft,
       std::string(joined) + " 3|Nowhere||| 4|Bern|ch|Switzerland|11 5|Lima|pe||"},
      {"right rows too, under the left key", MergeMode::All,
       std::string(joined) + " 3|Nowhere||| 4|Bern|ch|Switzerland|11 5|Lima|pe||" +
           " |||None|12 ||jp|Japan|14"},
  };
  const auto left = Cities(), right = Countries();
  for (const auto& c : cases) {
    Ptr<ITable> merged;
    Ptr<IErrorCode> error;
    ASSERT_TRUE(left->Merge(right.Get(), "country", c.mode, merged.Receive(), error.Receive()))
        << c.what << MessageOf(error);
    EXPECT_STREQ(merged->GetHeader()->GetName(), "cities_countries_merged") << c.what;
    EXPECT_EQ(NamesOf(*merged.Get()), "id city country name id_right") << c.what;
    EXPECT_EQ(TextOf(*merged.Get()), c.rows) << c.what;
  }
  EXPECT_EQ(left->GetRowCount() + right->GetRowCount(), 10) << "both stay as they were";
}

TEST(TableMerge, TakesKeysOfDifferentOrSeveralNames) {
  const auto left = MakeTable({"a", "b", "x"}, {{1, 1, "l11"}, {1, 2, "l12"}, {2, 1, "l21"}});
  const auto right =
      MakeTable({"b", "a", "y"}, {{1, 1, "r11"}, {1, 2, "r21"}, {2, 2, "r22"}, {1, 1, "again"}});
  Ptr<ITable> merged;
  ASSERT_TRUE(left->MergeOnColumns(right.Get(), MergeMode::Matching, merged.Receive(), nullptr, 2,
                                   "a", "b"));
  EXPECT_EQ(NamesOf(*merged.Get()), "a b x y");
  EXPECT_EQ(TextOf(*merged.Get()), "1|1|l11|r11 1|1|l11|again 2|1|l21|r21");

  ASSERT_TRUE(left->MergeOn(right.Get(), "x", "y", MergeMode::AllLeft, merged.Receive(), nullptr));
  EXPECT_EQ(NamesOf(*merged.Get()), "a b x b_right a_right");
  EXPECT_EQ(TextOf(*merged.Get()), "1|1|l11|| 1|2|l12|| 2|1|l21||");

  ASSERT_TRUE(left->Merge(left.Get(), "x", MergeMode::All, merged.Receive(), nullptr));
  EXPECT_EQ(TextOf(*merged.Get()), "1|1|l11|1|1 1|2|l12|1|2 2|1|l21|2|1") << "with itself";
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

TEST(TableMerge, ReferencesToNoObjectAreNullKeys) {
  const Variant noText = NullReference(ValueType::String),
                noDate = NullReference(ValueType::DateTime);
  const auto left = MakeTable({"a", "l"}, {{noText, 1}, {noDate, 2}, {"x", 3}});
  const auto right = MakeTable({"a", "r"}, {{noText, 4}, {noDate, 5}, {"x", 6}});
  Ptr<ITable> merged;
  Ptr<IErrorCode> error;
  ASSERT_TRUE(left->Merge(right.Get(), "a", MergeMode::Matching, merged.Receive(), error.Receive()))
      << MessageOf(error);
  EXPECT_EQ(TextOf(*merged.Get()), "x|3|6");
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

TEST(TableMerge, FailuresAreReported) {
  const auto left = MakeTable({"a", "l"}, {{1, 1}}), right = MakeTable({"a", "r"}, {{1, 1}});
  const Variant error(SomeError());
  const auto odd = MakeTable({"a"}, {{error}, {error}});
  const auto merge = [&](ITable* other, const char* leftKey, const char* rightKey) {
    Ptr<ITable> merged;
    Ptr<IErrorCode> failure;
    const bool isDone = left->MergeOn(other, leftKey, rightKey, MergeMode::All, merged.Receive(),
                                      failure.Receive());
    EXPECT_EQ(isDone, static_cast<bool>(merged));
    return MessageOf(failure);
  };
  EXPECT_EQ(merge(right.Get(), "a", "a"), "");
  EXPECT_EQ(merge(right.Get(), "r", "r"), "Left table does not contain column r");
  EXPECT_EQ(merge(right.Get(), "l", "l"), "Right table does not contain column l");
  EXPECT_EQ(merge(right.Get(), nullptr, "a"), kNullText);
  EXPECT_EQ(merge(right.Get(), "a", nullptr), kNullText);
  EXPECT_EQ(merge(nullptr, "a", "a"),
            "Pointer of struct Data::Interfaces::ITable must not be null!");
  EXPECT_EQ(merge(odd.Get(), "a", "a"), "Must be string, json or xml!") << "keys without a hash";

  Ptr<IErrorCode> failure;
  EXPECT_FALSE(left->Merge(right.Get(), "a", MergeMode::All, nullptr, failure.Receive()));
  EXPECT_EQ(MessageOf(failure),
            "Pointer to a pointer of struct Data::Interfaces::ITable must not be null! Address of "
            "return must be specified!");
  Ptr<ITable> merged;
  EXPECT_FALSE(
      left->MergeOnColumns(right.Get(), MergeMode::All, merged.Receive(), failure.Receive(), 0));
  EXPECT_EQ(MessageOf(failure), "Invalid column!");
  failure.Reset();
  EXPECT_FALSE(left->Merge(right.Get(), "a", static_cast<MergeMode>(3), merged.Receive(),
                           failure.Receive()));
  EXPECT_EQ(MessageOf(failure), "Merge mode is not supported!");
}

}  // namespace Data::tests
