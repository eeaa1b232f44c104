#include "Prelude.h"

namespace Data::tests {

namespace {

Ptr<IArray> ArrayOf(const char* bytes, std::uint64_t stride, std::uint64_t count) {
  Ptr<IArray> array;
  EXPECT_TRUE(Data_CreateArray(array.Receive()));
  array->SetData(bytes, stride, count);
  return array;
}

}  // namespace

TEST(Array, FactoryRejectsOnlyANullOutPointer) { EXPECT_FALSE(Data_CreateArray(nullptr)); }

TEST(Array, GetPointerStaysInsideTheBytes) {
  const auto array = ArrayOf("abcdefghijkl", 4, 3);
  const struct {
    const char* what;
    std::uint64_t offset, size;
    bool inside;
  } cases[] = {
      {"the last element", 8, 4, true},
      {"one byte too far", 9, 4, false},
      {"nothing at the end", 12, 0, true},
      {"beyond the end", 13, 0, false},
  };
  for (const auto& c : cases) {
    Ptr<IErrorCode> error;
    void* pointer = array->GetPointer(c.offset, c.size, error.Receive());
    EXPECT_EQ(pointer, c.inside ? static_cast<char*>(array->GetData()) + c.offset : nullptr)
        << c.what;
    EXPECT_EQ(MessageOf(error), c.inside ? "" : "Offset or size are not in data bounds") << c.what;
    if (error) {
      EXPECT_EQ(error->GetCode(), 2u) << c.what;
    }
  }
}

TEST(Array, WriteOverwritesThenAppends) {
  const struct {
    const char* what;
    std::uint64_t offset;
    std::uint64_t result, stride, count;
    const char* bytes;
  } cases[] = {
      {"inside", 0, 3, 4, 1, "xyzd"},
      {"across the end: count grows by what was appended", 2, 2, 1, 2, "abxyz"},
      {"at the end", 4, 4, 1, 4, "abcdxyz"},
      {"beyond the end writes nothing", 10, 13, 4, 1, "abcd"},
  };
  for (const auto& c : cases) {
    const auto array = ArrayOf("abcd", 4, 1);
    EXPECT_EQ(array->Write(c.offset, "xyz", 3), c.result) << c.what;
    EXPECT_EQ(array->GetStride(), c.stride) << c.what;
    EXPECT_EQ(array->GetCount(), c.count) << c.what;
    EXPECT_EQ(std::memcmp(array->GetData(), c.bytes, std::strlen(c.bytes)), 0) << c.what;
  }
}

TEST(Array, AppendOfNullSetsTheStrideAlone) {
  const auto array = ArrayOf("abcd", 2, 2);
  EXPECT_EQ(array->Append(nullptr, 7), 2u);
  EXPECT_EQ(array->GetStride(), 1u);
}

TEST(Array, BytesThatMustBeThereMayNotBeNull) {
  const auto array = ArrayOf("abcd", 4, 1);
  const char* const nullBytes = "Pointer of void must not be null!";
  EXPECT_EQ(ThrownBy([&] { array->SetData(nullptr, 1, 5); }), nullBytes);
  EXPECT_EQ(ThrownBy([&] { array->Write(2, nullptr, 5); }), nullBytes);
  EXPECT_EQ(array->Write(9, nullptr, 5), 14u) << "beyond the end none are read";
  EXPECT_EQ(ArrayOf("", 1, 0)->Write(UINT64_MAX, nullptr, 5), 0u) << "nor past the last offset";
  EXPECT_EQ(array->Write(4, nullptr, 5), 1u) << "at the end it is an append of nothing";
  EXPECT_EQ(std::memcmp(array->GetData(), "abcd", 4), 0);
  array->SetData(nullptr, 4, 0);
  EXPECT_EQ(array->GetSize(), 0u);
}

TEST(Array, MayBeFilledFromItself) {
  const auto array = ArrayOf("abcd", 1, 4);
  for (int i = 0; i < 8; ++i) array->Append(array->GetData(), array->GetCount());
  EXPECT_EQ(array->GetCount(), 1024u);
  EXPECT_EQ(std::memcmp(array->GetPointer(1020, 4, nullptr), "abcd", 4), 0);
  array->SetData(array->GetPointer(2, 4, nullptr), 2, 2);
  EXPECT_EQ(std::memcmp(array->GetData(), "cdab", 4), 0);
  array->Write(2, array->GetPointer(1, 3, nullptr), 3);
  EXPECT_EQ(std::memcmp(array->GetPointer(0, 5, nullptr), "cddab", 5), 0)
      << "as the bytes were before";
}

TEST(Array, ImpossibleSizesThrow) {
  const auto array = ArrayOf("abcd", 1, 4);
  EXPECT_EQ(ThrownBy([&] { array->Resize(UINT64_MAX, 1); }), "vector too long");
  EXPECT_EQ(ThrownBy([&] { array->Resize(1ull << 33, 1ull << 33); }), "vector too long");
  EXPECT_EQ(ThrownBy([&] { array->SetData("", UINT64_MAX / 2, 3); }), "vector too long");
  EXPECT_EQ(ThrownBy([&] { array->SetData("", 1ull << 63, 1); }), "vector too long");
  EXPECT_EQ(ThrownBy([&] { array->Append("", 1ull << 63); }), "vector too long");
  EXPECT_EQ(ThrownBy([&] { array->Write(2, "yz", 1ull << 63); }), "vector too long");
  EXPECT_EQ(array->GetSize(), 4u);
  EXPECT_EQ(std::memcmp(array->GetData(), "abcd", 4), 0) << "what fails overwrites nothing";
}

}  // namespace Data::tests
