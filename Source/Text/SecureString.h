#pragma once

#include <string_view>
#include <vector>

#include "Core/ObjectBase.h"
#include "Data/Interfaces/ISecureString.h"

namespace Data::impl {

struct SecureString final : Core::ObjectBase<Interfaces::ISecureString> {
  /// Encrypts a copy of the text; `text` itself is converted to UTF-8.
  explicit SecureString(Interfaces::IString& text);

  bool GetText(Interfaces::IString** out, Core::IErrorCode** error) override;
  std::uint64_t GetLength() override { return length_; }

 private:
  explicit SecureString(std::string_view text);

  /// Encrypted: the text, padded with zeros to whole blocks.
  std::vector<std::uint8_t> encrypted_;
  std::uint64_t length_;
};

}  // namespace Data::impl
