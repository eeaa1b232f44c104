#include "Schema/SchemaValidation.h"

#include <rapidjson/schema.h>

#include "Core/StringFormat.h"
#include "Documents/JsonReader.h"
#include "Schema/LayerSchemaText.h"
#include "Text/TextBuffer.h"

namespace Data {

namespace {

/// The memory of one validation. rapidjson's schema classes leak, or follow
/// pointers that they have not set, when an allocation throws. So what is created
/// here is never destroyed: the pool frees it all at once.
class Pool : public impl::JsonPool {
 public:
  enum class Owner { Rapidjson, Validation };
  explicit Pool(Owner owner = Owner::Rapidjson) : owner_(owner) {}

  /// A copied JSON pointer creates its own pool, and leaks it if its one allocation throws.
  void* Malloc(std::size_t size) {
    try {
      return impl::JsonPool::Malloc(size);
    } catch (const std::bad_alloc&) {
      if (owner_ == Owner::Rapidjson) delete this;
      throw;
    }
  }

  template <class T, class... Arguments>
  T& Make(Arguments&&... arguments) {
    return *new (Malloc(sizeof(T))) T(std::forward<Arguments>(arguments)...);
  }

 private:
  Owner owner_;
};

using SchemaDocument = rapidjson::GenericSchemaDocument<impl::JsonValue, Pool>;
using Validator =
    rapidjson::GenericSchemaValidator<SchemaDocument,
                                      rapidjson::BaseReaderHandler<rapidjson::UTF8<>, void>, Pool>;

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
  Pool pool(Pool::Owner::Validation);
  const auto& schema = pool.Make<SchemaDocument>(schemaTree, nullptr, &pool);
  auto& validator = pool.Make<Validator>(schema, &pool);
  if (document.Accept(validator)) return {};
  return Core::StringFormat("Invalid schema: %s\n",
                            UriFragmentOf(validator.GetInvalidSchemaPointer()).c_str()) +
         Core::StringFormat("Invalid keyword: %s\n", validator.GetInvalidSchemaKeyword()) +
         Core::StringFormat("Invalid document: %s\n",
                            UriFragmentOf(validator.GetInvalidDocumentPointer()).c_str());
}

}  // namespace Data
