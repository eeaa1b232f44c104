#pragma once

#include <string_view>
#include <utility>

#include "Data/Interfaces/IJsonDocument.h"
#include "Documents/TextDocumentBase.h"

namespace Data::impl {

struct JsonDocumentImpl final : TextDocumentBase<Interfaces::IJsonDocument> {
  JsonDocumentImpl() = default;
  /// A document with text that the library wrote, known to be JSON.
  static Core::Ptr<JsonDocumentImpl> FromJson(Core::Ptr<Interfaces::IString> json);
  static Core::Ptr<JsonDocumentImpl> FromJson(std::string_view json);

  bool ToCompactString(Interfaces::IString** out, Core::IErrorCode** error) override;
  bool Equals(Interfaces::IJsonDocument* other) override;

 protected:
  bool Check(std::string_view text) const override;

 private:
  using TextDocumentBase::TextDocumentBase;
};

}  // namespace Data::impl
