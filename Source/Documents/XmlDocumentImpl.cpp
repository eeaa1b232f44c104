#include "Documents/XmlDocumentImpl.h"

#include <memory>

#include "Documents/XmlTree.h"

namespace Data::impl {

namespace {

std::unique_ptr<XmlTree> Parse(Interfaces::IString& content) {
  return std::make_unique<XmlTree>(ZeroTerminatedText(content));
}

}  // namespace

bool XmlDocumentImpl::Check(Interfaces::IString& content) const {
  Parse(content);
  return true;
}

bool XmlDocumentImpl::Equals(Interfaces::IXmlDocument* other) {
  return AreValidAndEqual<Interfaces::IXmlDocument>(
      *this, other, [](Interfaces::IString& left, Interfaces::IString& right) {
        return Parse(left)->Print() == Parse(right)->Print();
      });
}

}  // namespace Data::impl
