#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/Uuid.h"
#include "Data/Structures/ValueType.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

struct IAllowedValue;
struct IJsonDocument;
struct IObjectList;

/// Describes the attribute table of a map layer: a header, and an ordered list of columns with
/// their types, display rules, edit rules and allowed values.
///
/// Columns. An operation that changes a column adds the column first if it does not exist. Columns
/// are never removed. `AddColumn` sets all attributes except those documented as not set by it; a
/// setter sets only its own attribute. The first column added becomes the identifier column unless
/// one was set before. Names are compared byte by byte.
///
/// Ownership. Texts are zero-terminated UTF-8. Arguments are copied. A returned text belongs to the
/// schema and is valid until it is set again or the schema is destroyed.
///
/// Failures. Operations with an `error` argument never throw. On failure they return false, 0 or
/// null and store an error object:
///   - "Pointer of char must not be null!" for a null name or text
///   - "Pointer of " + type + " must not be null!" for another null argument
///   - "invalid unordered_map<K, T> key" if the column does not exist or lacks the attribute that
///     is read
///   - "Pointer to a pointer of " + type + " must not be null! Address of return must be
///     specified!" and "Pointer of " + type + " must be null in order to avoid memory leaks!" for
///     an out-pointer that is null or still holds an object
/// A failed operation changes nothing. This includes a lack of memory, which fails with code 2;
/// `SetTitle`, `SetDescription` and `SetIdentifierColumn` throw std::bad_alloc instead. The other
/// operations without `error` never fail.
///
/// Callbacks. Allowed values, lists, documents and objects in default values may be objects that
/// the caller implements, and may use or release the schema that is calling them. The schema holds
/// the objects that it calls, and releases what it replaces after the change is complete. What they
/// add to the columns or to a list while these are read is skipped. A null text from such an object
/// counts as empty.
///
/// Threads. Not synchronised: concurrent reads are safe, a change needs exclusive access. An object
/// in a default value has its own thread rule (see `IString`). Take `Lock` around shared use.
/// Reference counting is atomic.
struct ISchema : Core::IObject {
  // -- Whether a column has an attribute; false for an unknown name and for null --

  /// Slot 6. Whether the column has a list of allowed values, which may be empty.
  virtual bool HasAllowedValues(const char* name) = 0;
  /// Slot 7. Whether the column has a default value.
  virtual bool HasDefaultValue(const char* name) = 0;
  /// Slot 8. Whether the column has an expression for changes.
  virtual bool HasUpdateExpression(const char* name) = 0;
  /// Slot 9. Whether the column has an expression for new features.
  virtual bool HasInsertExpression(const char* name) = 0;
  /// Slot 10. Whether the column has a unit.
  virtual bool HasUnit(const char* name) = 0;

  // -- Header --

  /// Slot 11. The title of the layer.
  virtual const char* GetTitle() = 0;
  /// Slot 12. Sets the title; null changes nothing.
  virtual void SetTitle(const char* title) = 0;
  /// Slot 13. What the layer is about.
  virtual const char* GetDescription() = 0;
  /// Slot 14. Sets the description; null changes nothing.
  virtual void SetDescription(const char* description) = 0;

  // -- Columns --

  /// Slot 15. A new list with the column names (`IString`) in column order. The caller releases it.
  virtual bool GetColumnNames(IObjectList** out, Core::IErrorCode** error) = 0;
  /// Slot 16. The number of columns.
  virtual uint64_t GetColumnCount() = 0;

  // -- Allowed values --

  /// Slot 17. Removes all allowed values of a column and releases them.
  virtual bool ClearAllowedValues(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 18. Appends an allowed value and adds a reference to it.
  virtual bool AddAllowedValue(const char* name, IAllowedValue* value,
                               Core::IErrorCode** error) = 0;
  /// Slot 19. Replaces the allowed values with those of a list; null for none. Fails with "Null
  /// pointer exception! Interface is not accessible: struct Core::IObject" for a null entry, and
  /// with "Cannot cast to desired interface: Interface: struct Core::IObject Desired Interface:
  /// struct Data::Interfaces::IAllowedValue" for an entry that is not an `IAllowedValue`.
  virtual bool SetAllowedValues(const char* name, IObjectList* values,
                                Core::IErrorCode** error) = 0;
  /// Slot 20. A new list of the allowed values, which shares the schema's objects. The caller
  /// releases it.
  virtual bool GetAllowedValues(const char* name, IObjectList** out, Core::IErrorCode** error) = 0;

  // -- Attributes of a column, each with its setter and its getter --

  /// Slots 21 and 22. The description of the column. `AddColumn` sets "".
  virtual bool SetColumnDescription(const char* name, const char* description,
                                    Core::IErrorCode** error) = 0;
  virtual const char* GetColumnDescription(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 23 and 24. The value of the attribute for a new feature. `AddColumn` sets the zero value
  /// of the type: Int32 0 for integers of up to 64 bits, 1970-01-01T00:00:00 for dates, new objects
  /// for Array (no bytes), JsonDocument ("{}") and XmlDocument ("<?xml version=\"1.0\" ?>"), and
  /// Null for types that have none.
  ///
  /// The setter stores a copy, which holds a reference to the object. The getter copies the value
  /// into an initialised record and adds a reference, which the caller releases; the record's
  /// previous object is released last. An undefined value fails with "Variant type is undefined!
  /// Did you forget to zero out the VARIANT structure? It appears uninitialized!".
  virtual bool SetDefaultValue(const char* name, const Structures::_VARIANT* value,
                               Core::IErrorCode** error) = 0;
  virtual bool GetDefaultValue(const char* name, Structures::_VARIANT* out,
                               Core::IErrorCode** error) = 0;
  /// Slots 25 and 26. An expression that applications evaluate when other attributes or the
  /// geometry change. Not set by `AddColumn`.
  virtual bool SetUpdateExpression(const char* name, const char* expression,
                                   Core::IErrorCode** error) = 0;
  virtual const char* GetUpdateExpression(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 27 and 28. The unit of measurement. Not set by `AddColumn`.
  virtual bool SetUnit(const char* name, const char* unit, Core::IErrorCode** error) = 0;
  virtual const char* GetUnit(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 29 and 30. An expression that applications evaluate for a new feature. Not set by
  /// `AddColumn`.
  virtual bool SetInsertExpression(const char* name, const char* expression,
                                   Core::IErrorCode** error) = 0;
  virtual const char* GetInsertExpression(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 31 and 32. Whether values outside the allowed ones may be entered. `AddColumn` sets
  /// true.
  virtual bool SetAllowAnyValue(const char* name, bool allowAnyValue, Core::IErrorCode** error) = 0;
  virtual bool GetAllowAnyValue(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 33 and 34. The maximum number of characters; -1 for no limit.
  virtual bool SetWidth(const char* name, int32_t width, Core::IErrorCode** error) = 0;
  virtual int32_t GetWidth(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 35 and 36. The number of decimals; -1 for no limit.
  virtual bool SetDecimals(const char* name, int32_t decimals, Core::IErrorCode** error) = 0;
  virtual int32_t GetDecimals(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 37 and 38. The storage type. Setting it does not convert the default value. The getter
  /// returns Unknown on failure.
  virtual bool SetType(const char* name, Structures::ValueType type, Core::IErrorCode** error) = 0;
  virtual Structures::ValueType GetType(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 39 and 40. Whether users cannot edit the values. `AddColumn` sets false.
  virtual bool SetReadOnly(const char* name, bool readOnly, Core::IErrorCode** error) = 0;
  virtual bool GetReadOnly(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 41 and 42. The name that users see. `AddColumn` sets the column's name.
  virtual bool SetDisplayName(const char* name, const char* displayName,
                              Core::IErrorCode** error) = 0;
  virtual const char* GetDisplayName(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 43 and 44. The group in which users see the column. `AddColumn` sets "Attribute
  /// Properties".
  virtual bool SetGroup(const char* name, const char* group, Core::IErrorCode** error) = 0;
  virtual const char* GetGroup(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 45 and 46. The address of a help page. `AddColumn` sets "".
  virtual bool SetHelpUri(const char* name, const char* helpUri, Core::IErrorCode** error) = 0;
  virtual const char* GetHelpUri(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 47 and 48. Whether users see the column. `AddColumn` sets true.
  virtual bool SetVisible(const char* name, bool visible, Core::IErrorCode** error) = 0;
  virtual bool GetVisible(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 49 and 50. Whether the value is part of a feature's caption. `AddColumn` sets false.
  virtual bool SetDisplayAttribute(const char* name, bool displayAttribute,
                                   Core::IErrorCode** error) = 0;
  virtual bool GetDisplayAttribute(const char* name, Core::IErrorCode** error) = 0;

  // -- Adding columns --

  /// Slot 51. As `AddColumn` with width and decimals -1, but sets the given description, unit,
  /// group and display name.
  virtual bool AddColumnWithText(const char* name, const char* group, const char* displayName,
                                 Structures::ValueType type, const char* description,
                                 const char* unit, Core::IErrorCode** error) = 0;
  /// Slot 52. As `AddColumnWithText`, but with the given width and decimals.
  virtual bool AddColumnFull(const char* name, const char* group, const char* displayName,
                             Structures::ValueType type, int32_t width, int32_t decimals,
                             const char* description, const char* unit,
                             Core::IErrorCode** error) = 0;
  /// Slot 53. Adds a column with the attributes stated above and an empty list of allowed values.
  /// An existing column keeps its position, unit, expressions and nullable flag; all its other
  /// attributes are replaced.
  virtual bool AddColumn(const char* name, Structures::ValueType type, int32_t width,
                         int32_t decimals, Core::IErrorCode** error) = 0;

  // -- Version and documents --

  virtual void SetVersion(int32_t version) = 0;  ///< Slot 54. The version number of the schema.
  virtual int32_t GetVersion() = 0;              ///< Slot 55. Initially 1.
  /// Slot 56. The schema as a new JSON document, which the caller releases. A Null value is written
  /// as an empty text, which reads back as Null except in a String column.
  ///
  /// `Data_ParseSchema` rejects some of what is written here: integers that do not fit in an Int64,
  /// infinities and NaN ("Parsing failed!"), and a default value whose text does not fit its
  /// column's type. The text of an Int128 or UInt128 is not a number, so a column of these types
  /// needs a default value other than the one from `AddColumn`: Null or an Int64.
  /// @param indentCharacter  space, tab, CR or LF; 0 for four spaces per level
  /// @param indentCount      characters per level, at most 1000; ignored if the character is 0
  ///
  /// Fails with:
  ///   - "invalid unordered_map<K, T> key" if a column lacks an attribute that `AddColumn` sets,
  ///     other than the list of allowed values
  ///   - "Unsupported schema type! " + type if documents have no name for the type of a column or
  ///     of an allowed value
  ///   - "Unsupported indentation! Use at most 1000 spaces, tabs or line breaks per level."
  virtual bool ToJson(IJsonDocument** out, char indentCharacter, uint32_t indentCount,
                      Core::IErrorCode** error) = 0;
  /// Slot 57. The JSON schema (draft-07) of layer schema documents, as a new document. The caller
  /// releases it.
  virtual bool GetJsonSchema(IJsonDocument** out, Core::IErrorCode** error) = 0;
  /// Slot 58. Whether every column has all attributes that `AddColumn` sets, including the list of
  /// allowed values.
  /// @return false with "invalid unordered_map<K, T> key" if not
  virtual bool CheckConsistency(Core::IErrorCode** error) = 0;

  // -- Copies and identity --

  /// Slot 59. A copy of this schema with another identifier. The caller releases it. Allowed values
  /// and objects in default values are shared.
  virtual bool CloneWithUuid(const Structures::_UUID* uuid, ISchema** out,
                             Core::IErrorCode** error) = 0;
  /// Slot 60. As `CloneWithUuid`, with this schema's identifier.
  virtual bool Clone(ISchema** out, Core::IErrorCode** error) = 0;
  /// Slot 61. Copies the identifier of the schema.
  virtual bool GetUuid(Structures::_UUID* out, Core::IErrorCode** error) = 0;

  /// Slots 62 and 63. Whether values may be null. Not set by `AddColumn`. It is written to
  /// documents but not read from them.
  virtual bool SetNullable(const char* name, bool nullable, Core::IErrorCode** error) = 0;
  virtual bool GetNullable(const char* name, Core::IErrorCode** error) = 0;

  /// Slot 64. The name of the column that identifies a feature; "" for none.
  virtual const char* GetIdentifierColumn() = 0;
  /// Slot 65. Sets that name to a copy of `name`; null sets "".
  virtual void SetIdentifierColumn(const char* name) = 0;

 protected:
  ~ISchema() = default;
};

}  // namespace Data::Interfaces
