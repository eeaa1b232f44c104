#pragma once

#include "Data/Interfaces/IXmlDocument.h"
#include "Documents/TextDocumentBase.h"

namespace Data::impl {

struct XmlDocumentImpl final : TextDocumentBase<Interfaces::IXmlDocument> {
  bool Equals(Interfaces::IXmlDocument* other) override;

 protected:
  bool Check(Interfaces::IString& content) const override;
};

}  // namespace Data::impl
