#pragma once

#include <functional>
#include <string>

#include "Callers.h"
#include "Core/IErrorCode.h"
#include "Data/Interfaces/IString.h"

namespace Data::tests {

/// The caller's own text object, which may return null for its text.
class CallersText final : public CallersOwn<Interfaces::IString> {
 public:
  /// @param text  ASCII, or null
  explicit CallersText(const char* text) : isNull_(!text), text_(text ? text : "") {}

  /// Called before each operation that reads the text.
  std::function<void()> onRead = [] {};

  void SetWide(const char16_t*, std::uint64_t) override {}
  void SetMultiByte(const char*, std::uint64_t, std::uint32_t) override {}
  void SetUtf8(const char* text, std::uint64_t length) override { text_.assign(text, length); }
  void* Clear() override { return nullptr; }
  const char* GetMultiByte(std::uint32_t) override { return GetUtf8(); }
  const char* GetUtf8() override {
    onRead();
    return isNull_ ? nullptr : text_.c_str();
  }
  const char16_t* GetWide() override {
    onRead();
    return isNull_ ? nullptr : wide_.c_str();
  }
  const void* GetData() override { return GetUtf8(); }
  /// Not 0 for a null text either: the object claims more than it has.
  std::uint64_t GetLength() override { return isNull_ ? 5 : text_.size(); }
  std::uint64_t GetSize() override { return GetLength() + 1; }
  std::int32_t Compare(IString*, bool) override { return 0; }

 private:
  bool isNull_;
  std::string text_;
  std::u16string wide_{text_.begin(), text_.end()};
};

/// The caller's own error object, without a message.
class CallersError final : public CallersOwn<Core::IErrorCode> {
 public:
  const char* GetMessage() override { return nullptr; }
  std::uint64_t GetMessageLength() override { return 5; }
  std::uint32_t GetCode() override { return 0; }
};

}  // namespace Data::tests
