#include "Schema/Column.h"

#include "Containers/ArrayImpl.h"
#include "DateTime/DateTimeImpl.h"
#include "Documents/JsonDocumentImpl.h"
#include "Documents/XmlDocumentImpl.h"

namespace Data {

using Core::MakePtr;
using Core::ValueKind;
using Core::ValueType;
using Core::Variant;

namespace {

Core::Ptr<impl::XmlDocumentImpl> EmptyXmlDocument() {
  constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" ?>";
  auto document = MakePtr<impl::XmlDocumentImpl>();
  document->SetContent(kDeclaration.data(), kDeclaration.size());
  return document;
}

}  // namespace

Variant ZeroOf(ValueType type) {
  switch (type) {
    case ValueType::Int128:
    case ValueType::UInt128:
      return Variant(Core::MakeInteger(type, 0));
    case ValueType::Double:
      return 0.0;
    case ValueType::Float:
      return 0.0F;
    case ValueType::Bool:
      return false;
    case ValueType::Array:
      return MakePtr<impl::ArrayImpl>();
    case ValueType::String:
      return "";
    case ValueType::DateTime:
      return MakePtr<impl::DateTimeImpl>(impl::kTicksAtPosixEpoch);
    case ValueType::JsonDocument:
      return impl::JsonDocumentImpl::FromJson("{}");
    case ValueType::XmlDocument:
      return EmptyXmlDocument();
    default:
      break;
  }
  // Integers of up to 64 bits.
  const ValueKind kind = Core::KindOf(type);
  if (kind == ValueKind::SignedInteger || kind == ValueKind::UnsignedInteger)
    return std::int32_t{0};
  return Core::Null;
}

}  // namespace Data
