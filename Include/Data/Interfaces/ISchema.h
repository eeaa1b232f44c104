#pragma once

#include "Core/IErrorCode.h"
#include "Data/Structures/Uuid.h"
#include "Data/Structures/ValueType.h"
#include "Data/Structures/Variant.h"

namespace Data::Interfaces {

struct IAllowedValue;
struct IJsonDocument;
struct IObjectList;

/// The description of a map layer's attribute table: a header, and columns in
/// order with their types, display rules, edit rules and allowed values.
///
/// A column exists from the first operation that names it in order to change
/// something; columns are never removed. `AddColumn` gives it every attribute,
/// a setter only its own. The first column ever named becomes the identifier
/// column, unless one was set before. Names are compared byte by byte.
///
/// Texts are zero-terminated UTF-8: arguments are copied; results belong to the
/// schema and stay valid until the attribute changes or the schema ends.
///
/// Operations with an `error` argument never throw and give false, 0 or null on
/// failure:
///   - "Pointer of char must not be null!" for a null name or text,
///     "Pointer of " + type + " must not be null!" for another null argument;
///   - "invalid unordered_map<K, T> key" when the column does not have the
///     attribute that is read;
///   - "Pointer to a pointer of " + type + " must not be null! Address of return
///     must be specified!" and "Pointer of " + type + " must be null in order to
///     avoid memory leaks!" for a bad out-pointer.
/// A failed operation changes nothing. One thread at a time.
struct ISchema : Core::IObject {
  // -- What a column has; false for an unknown and for a null name --

  virtual bool HasAllowedValues(const char* name) = 0;     ///< Slot 6. A list, maybe empty.
  virtual bool HasDefaultValue(const char* name) = 0;      ///< Slot 7.
  virtual bool HasUpdateExpression(const char* name) = 0;  ///< Slot 8.
  virtual bool HasInsertExpression(const char* name) = 0;  ///< Slot 9.
  virtual bool HasUnit(const char* name) = 0;              ///< Slot 10.

  // -- Header --

  virtual const char* GetTitle() = 0;                        ///< Slot 11.
  virtual void SetTitle(const char* title) = 0;              ///< Slot 12. Null changes nothing.
  virtual const char* GetDescription() = 0;                  ///< Slot 13.
  virtual void SetDescription(const char* description) = 0;  ///< Slot 14. Null changes nothing.

  // -- Columns --

  /// Slot 15. A new list of the column names (`IString`) in column order, which
  /// the caller releases.
  virtual bool GetColumnNames(IObjectList** out, Core::IErrorCode** error) = 0;
  /// Slot 16.
  virtual uint64_t GetColumnCount() = 0;

  // -- Allowed values --

  /// Slot 17. Releases the allowed values of a column, which keeps an empty list.
  virtual bool ClearAllowedValues(const char* name, Core::IErrorCode** error) = 0;
  /// Slot 18. Appends a value and adds a reference to it.
  virtual bool AddAllowedValue(const char* name, IAllowedValue* value,
                               Core::IErrorCode** error) = 0;
  /// Slot 19. Replaces the allowed values by those of a list; null empties it.
  /// Fails with "Null pointer exception! Interface is not accessible: struct
  /// Core::IObject" for a null entry, "Cannot cast to desired interface: ..."
  /// for one that is no `IAllowedValue`.
  virtual bool SetAllowedValues(const char* name, IObjectList* values,
                                Core::IErrorCode** error) = 0;
  /// Slot 20. A new list of the allowed values, which the caller releases; the
  /// objects are those of the schema.
  virtual bool GetAllowedValues(const char* name, IObjectList** out, Core::IErrorCode** error) = 0;

  // -- Attributes of a column, each with its setter and its getter --

  /// Slots 21 and 22. `AddColumn` sets "".
  virtual bool SetColumnDescription(const char* name, const char* description,
                                    Core::IErrorCode** error) = 0;
  virtual const char* GetColumnDescription(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 23 and 24. `AddColumn` sets the zero of the type: Int32 0 for integers
  /// of up to 64 bits, 1970-01-01T00:00:00 for dates, new objects for Array ("no
  /// bytes"), JsonDocument ("{}") and XmlDocument ("<?xml version=\"1.0\" ?>"),
  /// Null for types without one.
  ///
  /// The value is copied in and out; an object gains a reference. `out` gives up
  /// what it held; a failure leaves it as it was. An undefined record fails with
  /// "Variant type is undefined! Did you forget to zero out the VARIANT
  /// structure? It appears uninitialized!".
  virtual bool SetDefaultValue(const char* name, const Structures::_VARIANT* value,
                               Core::IErrorCode** error) = 0;
  virtual bool GetDefaultValue(const char* name, Structures::_VARIANT* out,
                               Core::IErrorCode** error) = 0;
  /// Slots 25 and 26. Evaluated by applications when other attributes or the
  /// geometry change. `AddColumn` sets none.
  virtual bool SetUpdateExpression(const char* name, const char* expression,
                                   Core::IErrorCode** error) = 0;
  virtual const char* GetUpdateExpression(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 27 and 28. Unit of measurement. `AddColumn` sets none.
  virtual bool SetUnit(const char* name, const char* unit, Core::IErrorCode** error) = 0;
  virtual const char* GetUnit(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 29 and 30. Evaluated by applications for a new feature. `AddColumn`
  /// sets none.
  virtual bool SetInsertExpression(const char* name, const char* expression,
                                   Core::IErrorCode** error) = 0;
  virtual const char* GetInsertExpression(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 31 and 32. Whether values outside the allowed ones may be entered.
  /// `AddColumn` sets true.
  virtual bool SetAllowAnyValue(const char* name, bool allowAnyValue, Core::IErrorCode** error) = 0;
  virtual bool GetAllowAnyValue(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 33 and 34. The most characters; -1 for no limit.
  virtual bool SetWidth(const char* name, int32_t width, Core::IErrorCode** error) = 0;
  virtual int32_t GetWidth(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 35 and 36. Digits behind the decimal point; -1 for no limit.
  virtual bool SetDecimals(const char* name, int32_t decimals, Core::IErrorCode** error) = 0;
  virtual int32_t GetDecimals(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 37 and 38. The storage type. The default value stays as it is.
  virtual bool SetType(const char* name, Structures::ValueType type, Core::IErrorCode** error) = 0;
  virtual Structures::ValueType GetType(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 39 and 40. Whether users may not edit the values. `AddColumn` sets false.
  virtual bool SetReadOnly(const char* name, bool readOnly, Core::IErrorCode** error) = 0;
  virtual bool GetReadOnly(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 41 and 42. The name that users see. `AddColumn` sets the column's name.
  virtual bool SetDisplayName(const char* name, const char* displayName,
                              Core::IErrorCode** error) = 0;
  virtual const char* GetDisplayName(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 43 and 44. Groups columns in a form. `AddColumn` sets "Attribute
  /// Properties".
  virtual bool SetGroup(const char* name, const char* group, Core::IErrorCode** error) = 0;
  virtual const char* GetGroup(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 45 and 46. Where to read more. `AddColumn` sets "".
  virtual bool SetHelpUri(const char* name, const char* helpUri, Core::IErrorCode** error) = 0;
  virtual const char* GetHelpUri(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 47 and 48. Shown among the attributes. `AddColumn` sets true.
  virtual bool SetVisible(const char* name, bool visible, Core::IErrorCode** error) = 0;
  virtual bool GetVisible(const char* name, Core::IErrorCode** error) = 0;
  /// Slots 49 and 50. Part of the feature's caption. `AddColumn` sets false.
  virtual bool SetDisplayAttribute(const char* name, bool displayAttribute,
                                   Core::IErrorCode** error) = 0;
  virtual bool GetDisplayAttribute(const char* name, Core::IErrorCode** error) = 0;

  // -- Adding columns --

  /// Slot 51. `AddColumn` of width and decimals -1, then description, unit,
  /// group and display name as given.
  virtual bool AddColumnWithText(const char* name, const char* group, const char* displayName,
                                 Structures::ValueType type, const char* description,
                                 const char* unit, Core::IErrorCode** error) = 0;
  /// Slot 52. As `AddColumnWithText`, with width and decimals.
  virtual bool AddColumnFull(const char* name, const char* group, const char* displayName,
                             Structures::ValueType type, int32_t width, int32_t decimals,
                             const char* description, const char* unit,
                             Core::IErrorCode** error) = 0;
  /// Slot 53. Appends a column with the attributes said above and no allowed
  /// values. A column that exists keeps its place and its unit, expressions and
  /// nullable flag; everything else is set anew.
  virtual bool AddColumn(const char* name, Structures::ValueType type, int32_t width,
                         int32_t decimals, Core::IErrorCode** error) = 0;

  // -- Version and documents --

  virtual void SetVersion(int32_t version) = 0;  ///< Slot 54.
  virtual int32_t GetVersion() = 0;              ///< Slot 55. At first 1.
  /// Slot 56. The schema as a new JSON document, which the caller releases.
  /// @param indentCharacter  space, tab, CR or LF; 0 means four spaces
  /// @param indentCount      characters per level, at most 1000
  /// Fails with "invalid unordered_map<K, T> key" when a column lacks something
  /// that `AddColumn` sets other than the list of allowed values, "Unsupported
  /// schema type! " + type for a column or an allowed value of a type that
  /// documents have no name for, "Unsupported indentation! ..." for a bad
  /// indentation.
  virtual bool ToJson(IJsonDocument** out, char indentCharacter, uint32_t indentCount,
                      Core::IErrorCode** error) = 0;
  /// Slot 57. The JSON schema (draft 7) of layer schema documents as a new
  /// document, which the caller releases.
  virtual bool GetJsonSchema(IJsonDocument** out, Core::IErrorCode** error) = 0;
  /// Slot 58. Fails with "invalid unordered_map<K, T> key" when some column
  /// lacks an attribute that `AddColumn` sets.
  virtual bool CheckConsistency(Core::IErrorCode** error) = 0;

  // -- Copies and identity --

  /// Slot 59. A new schema with that identifier and everything else as here;
  /// allowed values and objects of default values are shared.
  virtual bool CloneWithUuid(const Structures::_UUID* uuid, ISchema** out,
                             Core::IErrorCode** error) = 0;
  /// Slot 60. As `CloneWithUuid`, with this schema's identifier.
  virtual bool Clone(ISchema** out, Core::IErrorCode** error) = 0;
  /// Slot 61.
  virtual bool GetUuid(Structures::_UUID* out, Core::IErrorCode** error) = 0;

  /// Slots 62 and 63. Whether a value may be null. `AddColumn` sets none; not
  /// read from documents.
  virtual bool SetNullable(const char* name, bool nullable, Core::IErrorCode** error) = 0;
  virtual bool GetNullable(const char* name, Core::IErrorCode** error) = 0;

  /// Slot 64. The column that identifies a feature.
  virtual const char* GetIdentifierColumn() = 0;
  /// Slot 65. Null empties it.
  virtual void SetIdentifierColumn(const char* name) = 0;

 protected:
  ~ISchema() = default;
};

}  // namespace Data::Interfaces
