#pragma once

#include <string_view>
#include <vector>

#include "Core/ObjectBase.h"
#include "Data/Interfaces/ISecureString.h"

namespace Data::impl {

struct SecureString final : Core::ObjectBase<Interfaces::ISecureString> {
  explicit SecureString(std::string_view text);

  bool GetText(Interfaces::IString** out, Core::IErrorCode** error) override;
  std::uint64_t GetLength() override { return length_; }

 private:
  /// Enciphered; whole blocks, the text is followed by zeros.
  std::vector<std::uint8_t> protected_;
  std::uint64_t length_;
};

}  // namespace Data::impl
