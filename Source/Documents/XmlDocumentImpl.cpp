#include "Documents/XmlDocumentImpl.h"

#include <memory>

#include "Documents/XmlTree.h"
#include "Text/TextOrder.h"

namespace Data::impl {

namespace {

std::string NormalForm(Interfaces::IString& content) {
  return std::make_unique<XmlTree>(DocumentText(content).View())->Print();
}

}  // namespace

bool XmlDocumentImpl::Check(std::string_view text) const {
  std::make_unique<XmlTree>(UpToFirstZero(text));
  return true;
}

bool XmlDocumentImpl::Equals(Interfaces::IXmlDocument* other) {
  return AreValidAndEqual<Interfaces::IXmlDocument>(
      *this, other, [](Interfaces::IString& left, Interfaces::IString& right) {
        return NormalForm(left) == NormalForm(right);
      });
}

}  // namespace Data::impl
