#include "Documents/JsonDocumentImpl.h"

#include "Core/Guard.h"
#include "Documents/JsonEquality.h"
#include "Documents/JsonReader.h"
#include "Documents/JsonText.h"
#include "Documents/JsonWriter.h"

namespace Data::impl {

namespace {

void ReadContent(Interfaces::IString& content, JsonTree& tree) {
  const DocumentText text(content);
  ReadJsonTree(JsonTextOf(text.View()), tree);
}

}  // namespace

Core::Ptr<JsonDocumentImpl> JsonDocumentImpl::FromJson(Core::Ptr<Interfaces::IString> json) {
  return Core::Ptr<JsonDocumentImpl>::Adopt(new JsonDocumentImpl(std::move(json)));
}

Core::Ptr<JsonDocumentImpl> JsonDocumentImpl::FromJson(std::string_view json) {
  return FromJson(Core::Ptr<Interfaces::IString>(MultiByteStringImpl::FromUtf8(json)));
}

bool JsonDocumentImpl::Check(std::string_view text) const { return IsJson(JsonTextOf(text)); }

bool JsonDocumentImpl::ToCompactString(Interfaces::IString** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    const DocumentText content(Content());
    TextBuffer compact;
    AppendCompactJson(compact, JsonTextOf(content.View()));
    *out = MultiByteStringImpl::FromUtf8(compact.View()).Detach();
  });
}

bool JsonDocumentImpl::Equals(Interfaces::IJsonDocument* other) {
  return AreValidAndEqual<Interfaces::IJsonDocument>(
      *this, other, [](Interfaces::IString& left, Interfaces::IString& right) {
        JsonTree leftTree, rightTree;
        ReadContent(left, leftTree);
        ReadContent(right, rightTree);
        return AreEqual(leftTree, rightTree);
      });
}

}  // namespace Data::impl
