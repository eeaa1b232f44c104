#include "Schema/SchemaValidation.h"

#include <rapidjson/schema.h>

#include "Core/StringFormat.h"
#include "Documents/JsonReader.h"
#include "Documents/TextBuffer.h"
#include "Schema/LayerSchemaText.h"

namespace Data {

namespace {

using SchemaDocument = rapidjson::GenericSchemaDocument<impl::JsonValue, impl::JsonPool>;
using Validator = rapidjson::GenericSchemaValidator<
    SchemaDocument, rapidjson::BaseReaderHandler<rapidjson::UTF8<>, void>, impl::ThrowingAllocator>;

template <class Pointer>
std::string UriFragmentOf(const Pointer& pointer) {
  impl::TextBuffer text;
  pointer.StringifyUriFragment(text);
  return std::string(text.View());
}

}  // namespace

std::string ViolationsOf(const impl::JsonValue& document) {
  impl::JsonTree schemaTree;
  impl::ReadJsonTree(kLayerSchemaText, schemaTree);
  const SchemaDocument schema(schemaTree);
  Validator validator(schema);
  if (document.Accept(validator)) return {};
  return Core::StringFormat("Invalid schema: %s\n",
                            UriFragmentOf(validator.GetInvalidSchemaPointer()).c_str()) +
         Core::StringFormat("Invalid keyword: %s\n", validator.GetInvalidSchemaKeyword()) +
         Core::StringFormat("Invalid document: %s\n",
                            UriFragmentOf(validator.GetInvalidDocumentPointer()).c_str());
}

}  // namespace Data
