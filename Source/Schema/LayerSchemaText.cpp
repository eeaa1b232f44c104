#include "Schema/LayerSchemaText.h"

namespace Data {

namespace {

constexpr char kText[] = R"json({
    "$schema": "http://json-schema.org/draft-07/schema#",
    "$id": "qv.layer.schema.json",
    "title": "Layer attributes and validation rules document schema",
    "oneOf": [
        {
            "additionalItems": false,
            "properties": {
                "schema": {"$ref": "#/definitions/Schema"},
                "columns": {"oneOf": [{"$ref": "#/definitions/ColumnList"}]}
            },
            "required": ["schema"]
        }
    ],
    "definitions": {
        "Schema": {
            "description": "Column schema information",
            "additionalProperties": false,
            "properties": {
                "uuid": {
                    "type": "string",
                    "default": "{00000000-0000-0000-0000-000000000000}",
                    "description": "Schema unique identifier"
                },
                "title": {
                    "type": "string",
                    "default": "My schema",
                    "description": "Schema title"
                },
                "description": {
                    "type": "string",
                    "default": "",
                    "description": "Detailed description about the schema"
                },
                "version": {
                    "type": "integer",
                    "default": 1,
                    "description": "Version number of the schema"
                },
                "identifierColumn": {
                    "type": "string",
                    "default": "fid",
                    "description": "ID column that uniquely identifies the entity"
                }
            }
        },
        "ColumnList": {
            "description": "List of columns in the schema",
            "type": "array",
            "items": {"$ref": "#/definitions/Column", "required": ["name", "type", "width", "decimals"]}
        },
        "Column": {
            "description": "Column information such as name, description and storage type",
            "additionalProperties": false,
            "properties": {
                "name": {
                    "type": "string",
                    "default": "unnamed",
                    "description": "Column name"
                },
                "displayName": {
                    "type": "string",
                    "default": "Unnamed Column",
                    "description": "Display name of the column."
                },
                "description": {
                    "type": "string",
                    "default": "",
                    "description": "Column description"
                },
                "type": {
                    "type": "string",
                    "enum": ["integer", "double", "string", "date", "json", "boolean"],
                    "default": "string",
                    "description": "Data type"
                },
                "width": {
                    "type": "integer",
                    "default": 9,
                    "description": "Number of maximum characters."
                },
                "decimals": {
                    "type": "integer",
                    "default": 0,
                    "description": "Number of decimals. If type is double."
                },
                "readOnly": {
                    "type": "boolean",
                    "default": false,
                    "description": "Is column read only? Prevents users from modifying the value in supported apps."
                },
                "allowAnyValue": {
                    "type": "boolean",
                    "default": true,
                    "description": "Allow any value to be entered. Allowed values list then serve as common suggestions."
                },
                "allowedValues": {"type": "array", "$ref": "#/definitions/AllowedValueList", "description": "Allowed values array. If null then any value is allowed."},
                "defaultValue": {
                    "type": "string",
                    "default": "",
                    "description": "Default value that will be used for new feature."
                },
                "updateExpression": {
                    "type": "string",
                    "default": "Area() * 2",
                    "description": "Update expression that will be evaluated when geometry or other attributes are changed. Update value supports expressions in form of \"Area() * 2\". Check out the docs for supported functions and operators."
                },
                "insertExpression": {
                    "type": "string",
                    "default": "1 + 1",
                    "description": "Update expression that will be evaluated when geometry or other attributes are changed. Update value supports expressions in form of \"1 + 1\". Check out the docs for supported functions and operators."
                },
                "unit": {
                    "type": "string",
                    "default": "",
                    "description": "Unit of measurement"
                },
                "helpUri": {
                    "type": "string",
                    "default": "",
                    "description": "Url address to show additional information on attribute feature."
                },
                "group": {
                    "type": "string",
                    "default": "Unspecified",
                    "description": "Key to group similar attributes together."
                },
                "visible": {
                    "type": "boolean",
                    "default": true,
                    "description": "Show attribute under attribute properties"
                },
                "displayAttribute": {
                    "type": "boolean",
                    "default": false,
                    "description": "Set as display attribute. If multiple then names are concatenated"
                },
                "nullable": {
                    "type": "boolean",
                    "default": false,
                    "description": "Can this value be null? If yes then set to true"
                }
            }
        },
        "AllowedValueList": {
            "description": "Allowed values array.",
            "type": ["array", "null"],
            "items": {"$ref": "#/definitions/AllowedValue", "required": ["value", "type", "comparison"]}
        },
        "AllowedValue": {
            "description": "Allowed value or values for a given column.",
            "additionalProperties": false,
            "properties": {
                "value": {
                    "type": "string",
                    "default": "",
                    "description": "Allowed value represented as string."
                },
                "type": {
                    "type": "string",
                    "enum": ["integer", "double", "string"],
                    "default": "string",
                    "description": "Value type"
                },
                "comparison": {
                    "type": "string",
                    "enum": ["none", "equal", "greater", "less", "greater-or-equal", "less-or-equal",
                        "like", "not-like", "not-equal"],
                    "default": "equal",
                    "description": "Comparison operator."
                },
                "displayName": {
                    "type": "string",
                    "default": "",
                    "description": "Value that will be shown to the user"
                },
                "description": {
                    "type": "string",
                    "default": "",
                    "description": "Value description"
                },
                "category": {
                    "type": "string",
                    "default": "none",
                    "description": "Value category or group"
                },
                "helpUri": {
                    "type": "string",
                    "default": "",
                    "description": "Url address to show additional information on attribute feature."
                }
            }
        }
    }
}
)json";

// Programs compare this text byte for byte: no white space may change. The check also detects an
// editor that converted the line ends.
static_assert(sizeof kText - 1 == 8182);

}  // namespace

const std::string_view kLayerSchemaText(kText, sizeof kText - 1);

}  // namespace Data
