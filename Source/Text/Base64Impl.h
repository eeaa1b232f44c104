#pragma once

#include "Core/ObjectBase.h"
#include "Data/Interfaces/IEncoding.h"
#include "Text/Base64Alphabet.h"

namespace Data::impl {

struct Base64Impl final : Core::ObjectBase<Interfaces::IEncoding> {
  /// @param alphabet  `kBase64` or `kBase64Url`
  explicit Base64Impl(const Base64Alphabet& alphabet) : alphabet_(alphabet) {}

  bool Encode(Interfaces::IArray* input, Interfaces::IArray** out,
              Core::IErrorCode** error) override;
  bool Decode(Interfaces::IArray* input, Interfaces::IArray** out,
              Core::IErrorCode** error) override;

 private:
  const Base64Alphabet& alphabet_;
};

}  // namespace Data::impl
