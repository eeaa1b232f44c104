#include "CsvSupport.h"

namespace Data::tests {

TEST(ValueType, IsDetectedFromTheText) {
  for (const Case& c : Cases("ValueTypes.txt", "types"))
    EXPECT_EQ(Core::GetValueTypeName(Data_DetectValueType(ExactCopy(c[0]).get(), c[0].size())),
              c[1])
        << c.where;
  EXPECT_EQ(Data_DetectValueType(nullptr, 0), ValueType::Unknown);
}

}  // namespace Data::tests
