#include "Documents/JsonDocumentImpl.h"

#include "Core/Guard.h"
#include "Documents/JsonEquality.h"
#include "Documents/JsonReader.h"
#include "Documents/JsonText.h"
#include "Documents/JsonWriter.h"

namespace Data::impl {

Core::Ptr<JsonDocumentImpl> JsonDocumentImpl::FromJson(std::string_view json) {
  return Core::Ptr<JsonDocumentImpl>::Adopt(
      new JsonDocumentImpl(MultiByteStringImpl::FromUtf8(json)));
}

bool JsonDocumentImpl::Check(Interfaces::IString& content) const {
  return IsJson(JsonTextOf(content));
}

bool JsonDocumentImpl::ToCompactString(Interfaces::IString** out, Core::IErrorCode** error) {
  return Core::Guarded(error, [&] {
    Core::CheckOutPointer(out);
    TextBuffer compact;
    AppendCompactJson(compact, JsonTextOf(Content()));
    *out = MultiByteStringImpl::FromUtf8(compact.View()).Detach();
  });
}

bool JsonDocumentImpl::Equals(Interfaces::IJsonDocument* other) {
  return AreValidAndEqual<Interfaces::IJsonDocument>(
      *this, other, [](Interfaces::IString& left, Interfaces::IString& right) {
        JsonTree leftTree, rightTree;
        ReadJsonTree(JsonTextOf(left), leftTree);
        ReadJsonTree(JsonTextOf(right), rightTree);
        return AreEqual(leftTree, rightTree);
      });
}

}  // namespace Data::impl
