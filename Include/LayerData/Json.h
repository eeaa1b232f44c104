#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "LayerData/Handle.h"
#include "LayerData/Text.h"

namespace layerdata {

/// A JSON document: a text with its validity. Copies share it. `Table::FromJson` makes a table of
/// one.
class Json {
 public:
  /// @throws Error "The text is not valid JSON!"
  static Json Parse(std::string_view text) {
    auto document = detail::Receive<ld_json_document>(ld_create_json_document);
    detail::Call(ld_json_document_set_content, document.Get(), text.data(),
                 std::uint64_t{text.size()});
    if (!detail::Ask<bool>(ld_json_document_is_valid, document.Get()))
      throw Error("The text is not valid JSON!");
    return Json(std::move(document));
  }
  /// Shares a document of the C interface.
  explicit Json(detail::Handle<ld_json_document> document) : document_(std::move(document)) {}

  /// The text as it was parsed or written.
  Text ToText() const {
    return Text(detail::Receive<ld_string>(ld_json_document_get_content, document_.Get()));
  }
  /// The text without white space between its tokens.
  Text ToCompactText() const {
    return Text(detail::Receive<ld_string>(ld_json_document_to_compact_string, document_.Get()));
  }

  /// Whether both have the same content: numbers by value, members in any order.
  friend bool operator==(const Json& left, const Json& right) {
    return detail::Ask<bool>(ld_json_document_equals, left.Get(), right.Get());
  }
  friend std::ostream& operator<<(std::ostream& out, const Json& json) {
    return out << json.ToText();
  }

  ld_json_document* Get() const noexcept { return document_.Get(); }

 private:
  detail::Handle<ld_json_document> document_;
};

}  // namespace layerdata
