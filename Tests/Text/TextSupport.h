#pragma once

#include "CallersText.h"
#include "Prelude.h"

namespace Data::tests {

/// A new array of bytes, one element each.
inline Ptr<IArray> ArrayOf(std::string_view bytes) {
  const auto array = New(Data_CreateArray);
  array->SetData(bytes.data(), 1, bytes.size());
  return array;
}

inline std::string BytesOf(IArray& array) {
  EXPECT_EQ(array.GetStride(), 1u);
  return {static_cast<const char*>(array.GetData()), array.GetCount()};
}

inline Ptr<ISecureString> Protect(IString* text) {
  return Made<ISecureString>(Data_CreateSecureString, text);
}

inline Ptr<IString> PlainText(ISecureString& secret) {
  return Made<IString>(&ISecureString::GetText, &secret);
}

/// An array of the caller's own, which may answer null for its bytes.
class CallersArray final : public CallersOwn<IArray> {
 public:
  /// @param bytes  three, or null
  explicit CallersArray(const char* bytes) : bytes_(bytes) {}

  /// Called whenever the array is read.
  std::function<void()> onRead = [] {};
  /// What null bytes fail with.
  Ptr<IErrorCode> failure;

  void SetData(const void*, std::uint64_t, std::uint64_t) override {}
  void Resize(std::uint64_t, std::uint64_t) override {}
  void* GetPointer(std::uint64_t, std::uint64_t, IErrorCode** error) override {
    if (!bytes_) *error = Ptr<IErrorCode>(failure).Detach();
    return GetData();
  }
  void* GetData() override {
    onRead();
    return const_cast<char*>(bytes_);
  }
  const void* GetData() const override { return bytes_; }
  std::uint64_t GetStride() override { return 1; }
  std::uint64_t GetCount() override {
    onRead();
    return 3;
  }
  std::uint64_t GetSize() override { return GetCount(); }
  std::uint64_t Write(std::uint64_t, const void*, std::uint64_t) override { return 0; }
  std::uint64_t Append(const void*, std::uint64_t) override { return 0; }

 private:
  const char* bytes_;
};

}  // namespace Data::tests
