#pragma once

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "LayerData/Handle.h"
#include "LayerData/Json.h"
#include "LayerData/Table.h"
#include "LayerData/Value.h"

namespace layerdata {

/// Describes the columns of an attribute table: types, display rules, allowed values. Copies share
/// it. Attributes without a function here are set through `Get` and the C interface.
class Schema {
 public:
  /// A schema without columns, with a new identifier.
  explicit Schema(const std::string& title, const std::string& description = {}) {
    ld_uuid uuid;
    detail::Call(ld_new_uuid, &uuid);
    schema_ =
        detail::Receive<ld_schema>(ld_create_schema, &uuid, title.c_str(), description.c_str());
  }
  /// Shares a schema of the C interface.
  explicit Schema(detail::Handle<ld_schema> schema) noexcept : schema_(std::move(schema)) {}

  /// Reads a schema document.
  /// @throws Error as `ld_parse_schema` fails
  static Schema Parse(std::string_view json) {
    return Schema(detail::Receive<ld_schema>(ld_parse_schema, Json::Parse(json).Get()));
  }
  /// The schema that a table obeys: of each column the type, the width of its longest text, and
  /// whether it holds Null. Columns of several types become text, but Int64 with Double stays
  /// Double.
  static Schema Infer(const Table& table, const std::string& title = "Table");

  /// Adds a column, or replaces the attributes of the one with this name.
  /// @param width     the maximum number of characters; -1 for no limit
  /// @param decimals  the maximum number of decimals; -1 for no limit
  void AddColumn(const std::string& name, ld_value_type type, std::int32_t width = 0,
                 std::int32_t decimals = 0) {
    detail::Call(ld_schema_add_column, Get(), name.c_str(), type, width, decimals);
  }
  /// Sets whether values of a column may be Null.
  void SetNullable(const std::string& name, bool isNullable) {
    detail::Call(ld_schema_set_nullable, Get(), name.c_str(), isNullable);
  }

  /// The names of the columns, in their order.
  std::vector<std::string> ColumnNames() const {
    const auto list = detail::Receive<ld_object_list>(ld_schema_get_column_names, Get());
    const auto count = detail::Ask<std::uint64_t>(ld_object_list_get_count, list.Get());
    std::vector<std::string> names;
    for (std::uint64_t i = 0; i < count; ++i) {
      auto* object = detail::Ask<ld_object*>(ld_object_list_get_at, list.Get(), i);
      names.push_back(
          Text(detail::Handle<ld_string>(reinterpret_cast<ld_string*>(object))).ToString());
    }
    return names;
  }
  /// The type of a column.
  /// @throws Error for a name that does not exist, as do the following
  ld_value_type TypeOf(const std::string& name) const {
    return detail::Ask<ld_value_type>(ld_schema_get_type, Get(), name.c_str());
  }
  /// The maximum number of characters; -1 for no limit.
  std::int32_t WidthOf(const std::string& name) const {
    return detail::Ask<std::int32_t>(ld_schema_get_width, Get(), name.c_str());
  }
  /// Whether values of a column may be Null.
  bool IsNullable(const std::string& name) const {
    return detail::Ask<bool>(ld_schema_get_nullable, Get(), name.c_str());
  }

  /// The schema as a document.
  Json ToJson(std::uint32_t indent = 2) const {
    ld_json_document* json = nullptr;
    detail::Call(ld_schema_to_json, Get(), &json, ' ', indent);
    return Json(detail::Handle(json));
  }
  friend std::ostream& operator<<(std::ostream& out, const Schema& schema) {
    return out << schema.ToJson();
  }

  ld_schema* Get() const noexcept { return schema_.Get(); }

 private:
  detail::Handle<ld_schema> schema_;
};

namespace detail {

/// The type of a column that holds values of both types; Null for none yet.
inline ld_value_type CommonType(ld_value_type left, ld_value_type right) {
  if (left == LD_VALUE_TYPE_NULL || left == right) return right;
  if (right == LD_VALUE_TYPE_NULL) return left;
  const auto isNumber = [](ld_value_type type) {
    return type == LD_VALUE_TYPE_INT64 || type == LD_VALUE_TYPE_DOUBLE;
  };
  return isNumber(left) && isNumber(right) ? LD_VALUE_TYPE_DOUBLE : LD_VALUE_TYPE_STRING;
}

}  // namespace detail

inline Schema Schema::Infer(const Table& table, const std::string& title) {
  Schema schema(title);
  for (const Column column : table.Columns()) {
    ld_value_type type = LD_VALUE_TYPE_NULL;
    std::size_t width = 0;
    bool hasNull = false;
    for (const Cell cell : column) {
      hasNull |= cell.IsNull();
      if (!cell.IsNull()) type = detail::CommonType(type, cell.Type());
      if (cell.IsText()) width = std::max(width, cell.As<std::string_view>().size());
    }
    if (type == LD_VALUE_TYPE_NULL) type = LD_VALUE_TYPE_STRING;
    const bool isText = type == LD_VALUE_TYPE_STRING;
    schema.AddColumn(column.Name(), type, isText ? static_cast<std::int32_t>(width) : 0);
    schema.SetNullable(column.Name(), hasNull);
  }
  return schema;
}

}  // namespace layerdata
