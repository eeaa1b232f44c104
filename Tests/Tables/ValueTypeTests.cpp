#include "Prelude.h"

namespace Data::tests {

TEST(ValueType, IsDetectedFromTheText) {
  for (const Case& c : Cases("ValueTypes.txt", "types"))
    EXPECT_EQ(Core::GetValueTypeName(Data_DetectValueType(c[0].data(), c[0].size())), c[1])
        << c.where;
}

TEST(ValueType, ReadsNoFurtherThanItsSize) {
  const std::string text = "12x2020-01-019";
  EXPECT_EQ(Data_DetectValueType(text.data(), 2), ValueType::Int64);
  EXPECT_EQ(Data_DetectValueType(text.data() + 3, 10), ValueType::DateTime);
  EXPECT_EQ(Data_DetectValueType(text.data(), 0), ValueType::Unknown);
  EXPECT_EQ(Data_DetectValueType(nullptr, 0), ValueType::Unknown);
}

}  // namespace Data::tests
