#pragma once

#include <stdint.h>

#include "Core/IErrorCode.h"
#include "Data/Structures/ComparisonOperator.h"
#include "Data/Structures/Uuid.h"
#include "Data/Structures/ValueType.h"
#include "Data/Structures/Variant.h"
#include "Data/Version.h"

/// The exported functions by family; everything else is reached through the
/// objects that they create. Names are undecorated.
///
/// Ownership: a new object arrives in an out-pointer with one reference, which
/// belongs to the caller, who gives it back with `Release` (in C++, receive it
/// into a `Core::Ptr<>`). Texts and records that the new object keeps are copied,
/// with a reference to the object of a record. The result is true on success.
///
/// Threads: every function may be called by any number of threads at once, each
/// with its own arguments. The library keeps no global state, starts no threads
/// and takes its memory from the standard allocator.
///
/// Failures: a lack of memory is always a failure and never an answer. A failed
/// function leaks nothing.
///
/// Functions with a trailing `error` are guarded: they never throw. On failure
/// the result is false, the out-pointer is untouched and, if `error` is given
/// and holds null, it receives the failure (`Core::IErrorCode`, released by the
/// caller); without memory for that object it stays null. A null argument fails with "Pointer of "
/// + type + " must not be null!", an object that is not of the argument's interface with "Memory
/// address [%p] is invalid ...", a null out-pointer with "Pointer to a pointer of
/// " + type + " must not be null! Address of return must be specified!", an
/// out-pointer that still holds an object with "Pointer of " + type + " must be
/// null in order to avoid memory leaks!". Types are named as in "struct
/// Data::Interfaces::ITable". The operations of objects check their arguments in
/// the same way.
///
/// Functions without `error` return false for a null out-pointer, overwrite
/// whatever it held, and throw std::bad_alloc when there is no memory.

#if !defined(LAYERDATA_API)
#define LAYERDATA_API
#endif

namespace Data::Interfaces {
struct IAllowedValue;
struct IArray;
struct IConfiguration;
struct IConstrainedValue;
struct IDateTime;
struct IEncoding;
struct IEnum;
struct IHashing;
struct IHtmlDocument;
struct IJsonDocument;
struct IObjectList;
struct IProperties;
struct IRow;
struct IRtfDocument;
struct ISchema;
struct ISecureString;
struct IString;
struct ITable;
struct IVariantDictionary;
struct IVariantList;
struct IVariantPairList;
struct IXmlDocument;
}  // namespace Data::Interfaces

extern "C" {

// -- Containers --

/// A new byte array: stride 0, count 0.
LAYERDATA_API bool Data_CreateArray(Data::Interfaces::IArray** out);
/// A new empty list of objects.
LAYERDATA_API bool Data_CreateObjectList(Data::Interfaces::IObjectList** out);
/// A new empty list of values.
LAYERDATA_API bool Data_CreateVariantList(Data::Interfaces::IVariantList** out);
/// A new empty map from values to values.
LAYERDATA_API bool Data_CreateVariantDictionary(Data::Interfaces::IVariantDictionary** out,
                                                Core::IErrorCode** error);
/// A new empty list of key/value pairs.
LAYERDATA_API bool Data_CreateVariantPairList(Data::Interfaces::IVariantPairList** out,
                                              Core::IErrorCode** error);

// -- Settings --

/// A new empty set of named values.
LAYERDATA_API bool Data_CreateConfiguration(Data::Interfaces::IConfiguration** out,
                                            Core::IErrorCode** error);
/// A new empty bag of named, typed properties.
LAYERDATA_API bool Data_CreateProperties(Data::Interfaces::IProperties** out,
                                         Core::IErrorCode** error);
/// An enumeration of the given texts, the first one selected.
/// @param options  `IString` objects, at least one; read as UTF-8
/// Fails with "Cannot create enum with 0 options."; for a null entry with "Null
/// pointer exception! Interface is not accessible: struct Core::IObject", for one
/// that is no text with "Cannot cast to desired interface: ...".
LAYERDATA_API bool Data_CreateEnum(Data::Interfaces::IObjectList* options,
                                   Data::Interfaces::IEnum** out, Core::IErrorCode** error);
/// A value that is always moved into [min, max]. A null record counts as `Null`.
/// Fails with "Types of Min/Max don't match!", "Types of Value and Constraints
/// don't match!", "Min is bigger than Max!", "Variant type is undefined! ..." and
/// the failures of comparing two values (`Core::Compare`).
LAYERDATA_API bool Data_CreateConstrainedValue(const Data::Structures::_VARIANT* value,
                                               const Data::Structures::_VARIANT* min,
                                               const Data::Structures::_VARIANT* max,
                                               Data::Interfaces::IConstrainedValue** out,
                                               Core::IErrorCode** error);
/// One allowed value of a schema column; the value and the texts are copied.
LAYERDATA_API bool Data_CreateAllowedValue(const Data::Structures::_VARIANT* value,
                                           Data::Structures::ComparisonOperator comparison,
                                           const char* displayName, const char* description,
                                           const char* category, const char* helpUri,
                                           Data::Interfaces::IAllowedValue** out,
                                           Core::IErrorCode** error);

// -- Text, encodings, identifiers --

/// A new empty string, to be filled with one of its Set operations.
LAYERDATA_API bool Data_CreateString(Data::Interfaces::IString** out);
/// A text that is encrypted in memory.
/// @param text  read as UTF-8, which converts it in place
/// Fails with "SecureString: Encprytion failed!".
LAYERDATA_API bool Data_CreateSecureString(Data::Interfaces::IString* text,
                                           Data::Interfaces::ISecureString** out,
                                           Core::IErrorCode** error);
/// An encoder of the standard Base64 alphabet, padded with "=".
LAYERDATA_API bool Data_CreateEncodingInstanceBase64(Data::Interfaces::IEncoding** out,
                                                     Core::IErrorCode** error);
/// An encoder of the URL-safe Base64 alphabet, never padded.
LAYERDATA_API bool Data_CreateEncodingInstanceBase64Url(Data::Interfaces::IEncoding** out,
                                                        Core::IErrorCode** error);
/// An object that computes MD5 hashes.
LAYERDATA_API bool Data_CreateHashingInstanceMD5(Data::Interfaces::IHashing** out,
                                                 Core::IErrorCode** error);
/// An object that computes SHA-1 hashes.
LAYERDATA_API bool Data_CreateHashingInstanceSha1(Data::Interfaces::IHashing** out,
                                                  Core::IErrorCode** error);
/// @param variant  0: SHA-256, 1: SHA-384, 2: SHA-512; any other creates nothing
///                 and still returns true, `*out` staying null
LAYERDATA_API bool Data_CreateHashingInstanceSha2(uint32_t variant,
                                                  Data::Interfaces::IHashing** out,
                                                  Core::IErrorCode** error);
/// @param variant  as above; any other fails with "Hashing method is not supported!"
/// @param key      bytes of the key, may be empty; null gives the plain hash
LAYERDATA_API bool Data_CreateHashingInstanceHmacSha2(uint32_t variant,
                                                      Data::Interfaces::IArray* key,
                                                      Data::Interfaces::IHashing** out,
                                                      Core::IErrorCode** error);
/// A new random identifier. False only for a null argument.
LAYERDATA_API bool Data_NewUuid(Data::Structures::_UUID* out);
/// The 36 characters of an identifier, lower-case, without braces. False for a
/// null argument; overwrites `*out`.
LAYERDATA_API bool Data_UuidToString(const Data::Structures::_UUID* uuid,
                                     Data::Interfaces::IString** out);
/// Reads 36 characters, upper or lower case, without braces. False, `out`
/// untouched, for any other text and for a null argument.
LAYERDATA_API bool Data_UuidFromString(const char* text, Data::Structures::_UUID* out);

// -- Tables --

/// A new table without columns and rows.
LAYERDATA_API bool Data_CreateTable(Data::Interfaces::ITable** out, Core::IErrorCode** error);
/// Reads delimited text; the separator, the header line and the types of the
/// cells are detected.
/// @param content  in any ASCII-compatible encoding; need not be
///                 zero-terminated; an initial UTF-8 byte-order mark is skipped
/// @param size     in bytes; 0 fails with "Size cannot be 0. We don't call
///                 strlen internally because data might not contain null
///                 terminator!"
/// Fails with "No lines detected in the csv content" and, for a line with more
/// values than columns, "Csv file does not have consistent usage of column
/// separator between lines!, Columns %d vs Values %d at line %d" (lines count
/// from 0, empty ones left out).
///
/// A name in the header line ends at its first zero byte; an empty one becomes
/// "Unnamed_" and a new UUID. A name that repeats is the column of that name:
/// a line with values for both then has more values than columns.
///
/// Rows, texts and date-times of the table are allocated together from regions of
/// up to 16 MB. A region is freed with the last object in it, so a cell or row
/// that is kept for long keeps its region.
LAYERDATA_API bool Data_ParseCsv(const char* content, uint64_t size,
                                 Data::Interfaces::ITable** table, Core::IErrorCode** error);
/// As `Data_ParseCsv`, but lines with too many values do not fail.
/// @param errors    receives a new list with one message (`IString`) per such line
/// @param keepRows  greater than 0: such a line becomes a row without its extra
///                  values; otherwise it is skipped
LAYERDATA_API bool Data_ParseCsvWithErrors(const char* content, Data::Interfaces::ITable** table,
                                           Data::Interfaces::IObjectList** errors, uint64_t size,
                                           int32_t keepRows, Core::IErrorCode** error);
/// As `Data_ParseCsv` with a given separator of one or more bytes; an empty one
/// means a comma.
LAYERDATA_API bool Data_ParseCsvWithSeparator(const char* content, const char* separator,
                                              Data::Interfaces::ITable** table, uint64_t size,
                                              Core::IErrorCode** error);
/// A table as delimited text: the header line, then a line per row, no line
/// break after the last row. Quotes in texts and documents are doubled; those that contain the
/// separator are quoted. Some values do not read back as they were: names are
/// never quoted, a line break alone does not quote a text, and doubles have six
/// decimals.
///
/// An object of the caller's in a cell may change the table when it is asked for
/// its text: rows that were removed are left out, the rest of a row or column that
/// is removed meanwhile is empty, columns that were added are left out.
/// @param separator    one or more bytes; an empty one means a comma
/// @param alwaysQuote  quotes every text cell, not only those that contain the separator
LAYERDATA_API bool Data_ConvertTableToCsv(Data::Interfaces::ITable* table, const char* separator,
                                          Data::Interfaces::IString** text, bool alwaysQuote,
                                          Core::IErrorCode** error);
/// The type that a text would have as a cell: Unknown (for an empty text), Int64,
/// Double, DateTime or String. Never throws.
/// @param size  in bytes
LAYERDATA_API Data::Structures::ValueType Data_DetectValueType(const char* text, uint64_t size);

// -- Documents --

/// A new document without content, not valid; the same for all four kinds.
LAYERDATA_API bool Data_CreateJsonDocument(Data::Interfaces::IJsonDocument** out);
LAYERDATA_API bool Data_CreateXmlDocument(Data::Interfaces::IXmlDocument** out);
LAYERDATA_API bool Data_CreateHtmlDocument(Data::Interfaces::IHtmlDocument** out);
LAYERDATA_API bool Data_CreateRtfDocument(Data::Interfaces::IRtfDocument** out);
/// An array of objects as a table named "JsonArray", one object as "JsonObject",
/// any other value as "JsonValue" with the column "Value".
/// Fails with "JsonDocument content is not valid", "Object in the array is not
/// of the type object! Data structure is inconsistent across array!",
/// "Unsupported variant type" (an integer above 2^63 - 1), "Table %s must contain
/// at least one column before you insert new row!" (an object without members).
LAYERDATA_API bool Data_JsonToTable(Data::Interfaces::IJsonDocument* document,
                                    Data::Interfaces::ITable** out, Core::IErrorCode** error);
/// A table as an array with one object per row. Integers and UUIDs are written as
/// the signed 64-bit integer in the first word of their payload, all objects, JSON
/// documents too, as strings of their display text. For objects of the caller's
/// that change the table meanwhile see `Data_ConvertTableToCsv`.
/// Fails with "Column %s holds a number that JSON cannot represent!" for NaN and
/// infinities and "Must be value type!" for a number in reference form.
LAYERDATA_API bool Data_TableToJson(Data::Interfaces::ITable* table,
                                    Data::Interfaces::IJsonDocument** out,
                                    Core::IErrorCode** error);
/// One row as an object, with the values of `Data_TableToJson`. A row without a
/// table fails with "Null pointer exception! Interface is not accessible: struct
/// Data::Interfaces::ITable".
LAYERDATA_API bool Data_TableRowToJson(Data::Interfaces::IRow* row,
                                       Data::Interfaces::IJsonDocument** out,
                                       Core::IErrorCode** error);

// -- Layer schema --

/// A new schema without columns, version 1; the texts are copied.
LAYERDATA_API bool Data_CreateSchema(const Data::Structures::_UUID* uuid, const char* title,
                                     const char* description, Data::Interfaces::ISchema** out,
                                     Core::IErrorCode** error);
/// Reads a layer schema document. Text that is not JSON gives an empty schema.
/// Attributes that the document omits are as `ISchema::AddColumn` sets them; a
/// member that is null counts as omitted.
/// Fails with "Member \"" + key + "\" of the layer schema document is missing!"
/// (or "must be a string!", "must be an integer of 32 bits!" ...), "Parsing
/// failed!" for the text of a default or allowed value that is no number,
/// "Invalid uuid format!" + text, the failures of `Data_CreateDateTimeFromIso8601`
/// for dates, "The layer schema document is nested deeper than 1000 levels!".
LAYERDATA_API bool Data_ParseSchema(Data::Interfaces::IJsonDocument* document,
                                    Data::Interfaces::ISchema** out, Core::IErrorCode** error);

// -- Date and time --

/// The current time in UTC.
LAYERDATA_API bool Data_CreateCurrentDateTime(Data::Interfaces::IDateTime** out);
/// 0001-01-01T00:00:00.
LAYERDATA_API bool Data_CreateMinimumDateTime(Data::Interfaces::IDateTime** out);
/// 9999-12-31T00:00:00, the start of the last day.
LAYERDATA_API bool Data_CreateMaximumDateTime(Data::Interfaces::IDateTime** out);
/// Reads ISO 8601 text; a date without a time means noon, offsets are not applied.
/// Fails with "Input lenght is 0", "Invalid time format!" + text, "Invalid date
/// time format!" + text, "Month cannot be 0", "Day cannot be 0".
LAYERDATA_API bool Data_CreateDateTimeFromIso8601(const char* text,
                                                  Data::Interfaces::IDateTime** out,
                                                  Core::IErrorCode** error);
/// @param seconds  since 1970-01-01T00:00:00 UTC
LAYERDATA_API bool Data_CreateDateTimeFromPosixTime(int64_t seconds,
                                                    Data::Interfaces::IDateTime** out);
/// @param ticks  of 100 nanoseconds since 1601-01-01T00:00:00 UTC; from 2^63 on
///               the calendar fields are all zero
LAYERDATA_API bool Data_CreateDateTimeFromFileTime(uint64_t ticks,
                                                   Data::Interfaces::IDateTime** out);

}  // extern "C"
