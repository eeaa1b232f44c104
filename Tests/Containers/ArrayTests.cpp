#include "Prelude.h"

namespace Data::tests {

namespace {

Ptr<IArray> ArrayOf(std::string_view bytes, std::uint64_t stride, std::uint64_t count) {
  const auto array = New(Data_CreateArray);
  array->SetData(bytes.data(), stride, count);
  return array;
}

/// The first bytes that an array holds, as many as are asked for.
std::string_view Bytes(IArray& array, std::size_t size) {
  return {static_cast<const char*>(array.GetPointer(0, size, nullptr)), size};
}

}  // namespace

TEST(Array, GetPointerStaysInsideTheBytes) {
  const auto array = ArrayOf("abcdefghijkl", 4, 3);
  const struct {
    std::uint64_t offset, size;
    bool inside;
  } cases[] = {{8, 4, true}, {9, 4, false}, {12, 0, true}, {13, 0, false}};
  for (const auto& c : cases) {
    void* pointer = nullptr;
    EXPECT_EQ(Failure([&](auto e) {
                pointer = array->GetPointer(c.offset, c.size, e);
                return pointer;
              }),
              c.inside ? "" : "Offset or size are not in data bounds")
        << c.offset;
    EXPECT_EQ(pointer, c.inside ? static_cast<char*>(array->GetData()) + c.offset : nullptr);
  }
}

TEST(Array, WriteOverwritesThenAppends) {
  const struct {
    const char* what;
    std::uint64_t offset;
    std::uint64_t result, stride, count;
    std::string_view bytes;
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
    EXPECT_EQ(Bytes(*array, c.bytes.size()), c.bytes) << c.what;
  }
}

TEST(Array, MayBeFilledFromItself) {
  const auto array = ArrayOf("abcd", 1, 4);
  for (int i = 0; i < 8; ++i) array->Append(array->GetData(), array->GetCount());
  EXPECT_EQ(array->GetCount(), 1024u);
  array->SetData(array->GetPointer(1018, 4, nullptr), 2, 2);
  EXPECT_EQ(Bytes(*array, 4), "cdab");
  array->Write(2, array->GetPointer(1, 3, nullptr), 3);
  EXPECT_EQ(Bytes(*array, 5), "cddab") << "as the bytes were before";
}

TEST(Array, FailuresChangeNothing) {
  const auto array = ArrayOf("abcd", 2, 2);
  const char* const tooLong = "vector too long";
  const char* const nullBytes = "Pointer of void must not be null!";
  constexpr std::uint64_t kHuge = 1ull << 63;
  EXPECT_EQ(ThrownBy([&] { array->Resize(UINT64_MAX, 1); }), tooLong);
  EXPECT_EQ(ThrownBy([&] { array->Resize(1ull << 33, 1ull << 33); }), tooLong);
  EXPECT_EQ(ThrownBy([&] { array->SetData("", kHuge, 1); }), tooLong);
  EXPECT_EQ(ThrownBy([&] { array->Append("", kHuge); }), tooLong);
  EXPECT_EQ(ThrownBy([&] { array->Write(2, "yz", kHuge); }), tooLong);
  EXPECT_EQ(ThrownBy([&] { array->SetData(nullptr, 1, 5); }), nullBytes);
  EXPECT_EQ(ThrownBy([&] { array->Write(2, nullptr, 5); }), nullBytes);
  EXPECT_EQ(array->Write(9, nullptr, 5), 14u) << "beyond the end none are read";
  EXPECT_EQ(array->Write(1, nullptr, 0), 1u) << "nor of nothing";
  EXPECT_EQ(array->GetStride() * array->GetCount(), 4u);
  EXPECT_EQ(Bytes(*array, 4), "abcd");
  EXPECT_EQ(array->Append(nullptr, 7), 2u) << "only the stride changes";
  EXPECT_EQ(array->GetSize(), 2u);
  EXPECT_EQ(array->Write(4, nullptr, 5), 2u) << "at the end it is an append of nothing";
  EXPECT_EQ(ArrayOf("", 1, 0)->Write(UINT64_MAX, nullptr, 5), 0u) << "nor past the last offset";
  array->SetData(nullptr, 4, 0);
  EXPECT_EQ(array->GetSize(), 0u);
}

}  // namespace Data::tests
