#pragma once

#include "Data/Interfaces/IXmlDocument.h"
#include "Documents/TextDocumentBase.h"

namespace Data::impl {

struct XmlDocumentImpl final : TextDocumentBase<Interfaces::IXmlDocument> {
  bool Equals(Interfaces::IXmlDocument* other) override;

 protected:
  bool Check(std::string_view text) const override;
};

}  // namespace Data::impl
