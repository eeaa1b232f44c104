#include "Prelude.h"

#include <mutex>

namespace Data::tests {

TEST(Object, CountsReferencesFromOne) {
  IArray* array = nullptr;
  ASSERT_TRUE(Data_CreateArray(&array));
  array->AddReference();
  EXPECT_EQ(array->Release(), 1u);
  EXPECT_EQ(array->Release(), 0u);
}

TEST(Object, WorksWithStandardLockGuards) {
  Ptr<IArray> array;
  ASSERT_TRUE(Data_CreateArray(array.Receive()));
  { const std::lock_guard guard(*array); }
  EXPECT_TRUE(array->TryLock());
  array->Unlock();
}

}  // namespace Data::tests
