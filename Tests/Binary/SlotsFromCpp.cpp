// Calls the library like a C++ program that has none of its headers: calls operations by their slot
// numbers, and catches the exceptions of unguarded operations on this side.

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace {

struct Object {
  void** slots;
};

struct Variant {
  std::uint32_t type;
  std::uint64_t value[2];
};

}  // namespace

extern "C" {
bool Data_CreateArray(Object**);
bool Data_CreateTable(Object**, Object**);
}

namespace {

/// Calls the operation in a slot; the argument types must be exactly the operation's.
template <class Result = void, class... Arguments>
Result Call(Object* object, int slot, Arguments... arguments) {
  return reinterpret_cast<Result (*)(Object*, Arguments...)>(object->slots[slot])(object,
                                                                                  arguments...);
}

TEST(SlotsFromCpp, ExceptionsKeepTheirTypeAndText) {
  Object *table = nullptr, *array = nullptr;
  ASSERT_TRUE(Data_CreateTable(&table, nullptr));
  ASSERT_TRUE(Data_CreateArray(&array));
  try {
    Call<Object*>(table, 17, std::int64_t{2});
    ADD_FAILURE() << "nothing thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "Row index out of range [2/0]!");
  }
  EXPECT_THROW(Call(array, 7, std::uint64_t{1}, ~std::uint64_t{0}), std::length_error);
  EXPECT_EQ(Call<std::uint32_t>(array, 1), 0u);
  EXPECT_EQ(Call<std::uint32_t>(table, 1), 0u);
}

TEST(SlotsFromCpp, ObjectsWithinATable) {
  Object *table = nullptr, *error = nullptr;
  ASSERT_TRUE(Data_CreateTable(&table, nullptr));
  Object* first = Call<Object*>(table, 6, "a");
  EXPECT_EQ(Call<Object*>(first, 15), nullptr);
  Object* second = Call<Object*>(table, 7, "b", std::int32_t{1});
  EXPECT_EQ(Call<Object*>(first, 15), second);
  const Variant cells[] = {{4, {1, 0}}, {19, {'x', 0}}};
  Object* row = Call<Object*>(table, 15, cells, std::uint64_t{2});
  EXPECT_TRUE(Call<bool>(row, 12, "a", &cells[1], &error));
  EXPECT_EQ(Call<std::uint8_t>(row, 22), 1);
  EXPECT_EQ(Call<const Variant*>(row, 26, std::int32_t{0})->value[0], std::uint64_t{'x'});
  EXPECT_EQ(Call<std::uint32_t>(table, 1), 0u);
}

}  // namespace
