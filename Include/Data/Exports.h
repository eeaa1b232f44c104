#pragma once

#include <stdint.h>

#include "Core/IErrorCode.h"
#include "Data/Structures/ComparisonOperator.h"
#include "Data/Structures/Uuid.h"
#include "Data/Structures/ValueType.h"
#include "Data/Structures/Variant.h"
#include "Data/Version.h"

/// The exported functions, by family. Everything else is reached through the objects that they
/// create. The names are undecorated.
///
/// Ownership. A function that creates an object stores it in an out-pointer with one reference. The
/// caller owns that reference and releases it with `Release`; in C++, receive it into a
/// `Core::Ptr<>`. The new object copies the texts and records that it keeps, and adds a reference
/// to the object of a record. The result is true on success, unless stated otherwise.
///
/// Threads. Any number of threads may call any functions at the same time, each with its own
/// arguments. The library keeps no global state beyond constant tables and the process key of
/// secure strings, starts no threads, and takes its memory from the standard allocator.
///
/// Memory. A lack of memory is always a failure and never an answer. A failed function leaks
/// nothing.
///
/// Callbacks. Arguments may be objects that the caller implements. A function holds a reference to
/// such an object while it uses it; the object may call the library, and release itself, meanwhile.
///
/// Failures. Functions with an `error` argument are guarded: they never throw. On failure they
/// return false, leave the out-pointer unchanged, and store a new error object in `error`, which
/// the caller releases. They store none if `error` is null or already holds one, or if there is no
/// memory for it. The operations of objects check their arguments in the same way:
///   - "Pointer of " + type + " must not be null!" for a null argument
///   - "Memory address [%p] is invalid ..." for an object that lacks the argument's interface
///   - "Pointer to a pointer of " + type + " must not be null! Address of return must be
///     specified!" for a null out-pointer
///   - "Pointer of " + type + " must be null in order to avoid memory leaks!" for an out-pointer
///     that still holds an object
/// Types are named as in "struct Data::Interfaces::ITable"; built-in types as in "char".
///
/// Functions without `error` return false for a null out-pointer, overwrite its value without
/// releasing it, and throw std::bad_alloc if there is no memory.

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

/// A new byte array with stride 0 and count 0.
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
/// A new enumeration of the given texts, with the first one selected.
/// @param options  at least one `IString`; each is read as UTF-8, which converts it in place
/// Fails with "Cannot create enum with 0 options.", with "Null pointer exception! Interface is not
/// accessible: struct Core::IObject" for a null entry, and with "Cannot cast to desired interface:
/// Interface: struct Core::IObject Desired Interface: struct Data::Interfaces::IString" for an
/// entry that is not a text.
LAYERDATA_API bool Data_CreateEnum(Data::Interfaces::IObjectList* options,
                                   Data::Interfaces::IEnum** out, Core::IErrorCode** error);
/// A new value that is kept within the range [min, max]. A null record counts as `Null`.
/// Fails with "Types of Min/Max don't match!", "Types of Value and Constraints don't match!", "Min
/// is bigger than Max!", "Variant type is undefined! Did you forget to zero out the VARIANT
/// structure? It appears uninitialized!" and the failures of `Core::Compare`.
LAYERDATA_API bool Data_CreateConstrainedValue(const Data::Structures::_VARIANT* value,
                                               const Data::Structures::_VARIANT* min,
                                               const Data::Structures::_VARIANT* max,
                                               Data::Interfaces::IConstrainedValue** out,
                                               Core::IErrorCode** error);
/// A new allowed value of a schema column. The value and the texts are copied; none may be null.
/// Fails with "Variant type is undefined! Did you forget to zero out the VARIANT structure? It
/// appears uninitialized!" for an undefined value.
LAYERDATA_API bool Data_CreateAllowedValue(const Data::Structures::_VARIANT* value,
                                           Data::Structures::ComparisonOperator comparison,
                                           const char* displayName, const char* description,
                                           const char* category, const char* helpUri,
                                           Data::Interfaces::IAllowedValue** out,
                                           Core::IErrorCode** error);

// -- Text, encodings, identifiers --

/// A new empty string. Its Set operations fill it.
LAYERDATA_API bool Data_CreateString(Data::Interfaces::IString** out);
/// A new text that is encrypted in memory.
/// @param text  copied; read as UTF-8, which converts it in place
/// Fails with "SecureString: Encprytion failed!".
LAYERDATA_API bool Data_CreateSecureString(Data::Interfaces::IString* text,
                                           Data::Interfaces::ISecureString** out,
                                           Core::IErrorCode** error);
/// A new encoder for the standard Base64 alphabet. It pads with "=".
LAYERDATA_API bool Data_CreateEncodingInstanceBase64(Data::Interfaces::IEncoding** out,
                                                     Core::IErrorCode** error);
/// A new encoder for the URL-safe Base64 alphabet. It does not pad.
LAYERDATA_API bool Data_CreateEncodingInstanceBase64Url(Data::Interfaces::IEncoding** out,
                                                        Core::IErrorCode** error);
/// A new object that computes MD5 hashes. For the failures of all hashing factories see `IHashing`.
LAYERDATA_API bool Data_CreateHashingInstanceMD5(Data::Interfaces::IHashing** out,
                                                 Core::IErrorCode** error);
/// A new object that computes SHA-1 hashes.
LAYERDATA_API bool Data_CreateHashingInstanceSha1(Data::Interfaces::IHashing** out,
                                                  Core::IErrorCode** error);
/// A new object that computes SHA-2 hashes.
/// @param variant  0: SHA-256, 1: SHA-384, 2: SHA-512. Any other value creates nothing but still
///                 returns true; `*out` stays null.
LAYERDATA_API bool Data_CreateHashingInstanceSha2(uint32_t variant,
                                                  Data::Interfaces::IHashing** out,
                                                  Core::IErrorCode** error);
/// A new object that computes keyed hashes (HMAC) with SHA-2.
/// @param variant  as for SHA-2; any other value fails with "Hashing method is not supported!"
/// @param key      the first `GetCount` bytes of the array, which may be empty; "Offset or size are
///                 not in data bounds" if it holds fewer. Null gives the plain hash.
LAYERDATA_API bool Data_CreateHashingInstanceHmacSha2(uint32_t variant,
                                                      Data::Interfaces::IArray* key,
                                                      Data::Interfaces::IHashing** out,
                                                      Core::IErrorCode** error);
/// A new random identifier (version 4). Returns false only for a null argument.
LAYERDATA_API bool Data_NewUuid(Data::Structures::_UUID* out);
/// An identifier as a new string of 36 lower-case characters, without braces. Returns false for a
/// null argument. Overwrites `*out`.
LAYERDATA_API bool Data_UuidToString(const Data::Structures::_UUID* uuid,
                                     Data::Interfaces::IString** out);
/// Reads an identifier from 36 characters in upper or lower case, without braces. Returns false and
/// leaves `out` unchanged for any other text and for a null argument.
LAYERDATA_API bool Data_UuidFromString(const char* text, Data::Structures::_UUID* out);

// -- Tables --

/// A new table without columns or rows.
LAYERDATA_API bool Data_CreateTable(Data::Interfaces::ITable** out, Core::IErrorCode** error);
/// Reads delimited text. Detects the separator, the header line and the types of the cells.
/// @param content  UTF-8, which is not validated; need not be zero-terminated. An initial
///                 byte-order mark is skipped.
/// @param size     in bytes; 0 fails with "Size cannot be 0. We don't call strlen internally
///                 because data might not contain null terminator!"
/// Fails with "No lines detected in the csv content" and, for a line with more values than columns,
/// with "Csv file does not have consistent usage of column separator between lines!, Columns %d vs
/// Values %d at line %d" (non-empty lines, counted from 0).
///
/// Every row has a cell of 24 bytes for each column, even if its line has fewer values. A text may
/// make 16,777,216 cells, or 32 for each of its bytes if that is more; otherwise reading fails with
/// "A text of %llu bytes cannot become a table of more than %llu cells!".
///
/// A name in the header line ends at its first zero byte. An empty name becomes "Unnamed_" followed
/// by a new UUID. A repeated name refers to the existing column, so that a line with values for
/// both has more values than columns.
///
/// The rows, texts and date-times of the table are allocated from regions of up to 16 MB. A region
/// is freed with its last object, so one cell or row that is still referenced keeps its whole
/// region.
LAYERDATA_API bool Data_ParseCsv(const char* content, uint64_t size,
                                 Data::Interfaces::ITable** table, Core::IErrorCode** error);
/// As `Data_ParseCsv`, but a line with too many values is not a failure.
/// @param errors    receives a new list with one message (`IString`) per such line
/// @param keepRows  greater than 0: such a line becomes a row without its extra values; otherwise
///                  the line is skipped
LAYERDATA_API bool Data_ParseCsvWithErrors(const char* content, Data::Interfaces::ITable** table,
                                           Data::Interfaces::IObjectList** errors, uint64_t size,
                                           int32_t keepRows, Core::IErrorCode** error);
/// As `Data_ParseCsv`, with a given separator.
/// @param separator  one or more bytes; an empty text means a comma
LAYERDATA_API bool Data_ParseCsvWithSeparator(const char* content, const char* separator,
                                              Data::Interfaces::ITable** table, uint64_t size,
                                              Core::IErrorCode** error);
/// Writes a table as delimited text: the header line and a line feed, then the rows, separated by
/// line feeds. Quotes in texts and in JSON and XML documents are doubled; a text or document that
/// contains the separator is quoted. Some values do not read back unchanged: names are never
/// quoted, a line break alone does not get a text quoted, and doubles have six decimals.
///
/// A caller's object in a cell may change the table while its text is read. Rows removed meanwhile
/// are left out, the remaining cells of a removed row or column are empty, and added columns are
/// left out.
/// @param separator    one or more bytes; an empty text means a comma
/// @param text         receives a new string that holds UTF-8
/// @param alwaysQuote  quotes every text and document, not only those that contain the separator
LAYERDATA_API bool Data_ConvertTableToCsv(Data::Interfaces::ITable* table, const char* separator,
                                          Data::Interfaces::IString** text, bool alwaysQuote,
                                          Core::IErrorCode** error);
/// The type that a text would have as a cell: Int64, Double, DateTime or String; Unknown for a null
/// text and for one that is empty or all white space. Never throws.
/// @param size  in bytes
LAYERDATA_API Data::Structures::ValueType Data_DetectValueType(const char* text, uint64_t size);

// -- Documents --

/// A new JSON document without content, which is not valid.
LAYERDATA_API bool Data_CreateJsonDocument(Data::Interfaces::IJsonDocument** out);
/// A new XML document without content, which is not valid.
LAYERDATA_API bool Data_CreateXmlDocument(Data::Interfaces::IXmlDocument** out);
/// A new HTML document without content, which is not valid.
LAYERDATA_API bool Data_CreateHtmlDocument(Data::Interfaces::IHtmlDocument** out);
/// A new RTF document without content, which is not valid.
LAYERDATA_API bool Data_CreateRtfDocument(Data::Interfaces::IRtfDocument** out);
/// Makes a table from a JSON document: "JsonArray" from an array of objects, "JsonObject" from one
/// object, or "JsonValue" with the column "Value" from any other value. Nested arrays and objects
/// become cells of type JsonDocument.
/// Fails with:
///   - "JsonDocument content is not valid", or "Json document is not valid!" if the content has
///     changed since it was set;
///   - "Object in the array is not of the type object! Data structure is inconsistent across
///     array!";
///   - "Unsupported variant type" for a cell that is an integer above 2^63 - 1;
///   - "Table %s must contain at least one column before you insert new row!" for an object without
///     members if no earlier object has any;
///   - "A text of %llu bytes cannot become a table of more than %llu cells!", at as many cells as
///     `Data_ParseCsv` does.
///
/// The rows, texts and date-times are allocated as those of `Data_ParseCsv`.
LAYERDATA_API bool Data_JsonToTable(Data::Interfaces::IJsonDocument* document,
                                    Data::Interfaces::ITable** out, Core::IErrorCode** error);
/// Writes a table as a JSON array with one object per row. Integers and UUIDs are written as the
/// signed 64-bit integer in the first word of their payload. Objects, including JSON documents, are
/// written as strings that hold their display text; null addresses are written as null. A caller's
/// object may change the table meanwhile, with the effects described at `Data_ConvertTableToCsv`.
/// Fails with "Column %s holds a number that JSON cannot represent!" for NaN and infinities, and
/// with "Must be value type!" for a number that is not stored by value.
LAYERDATA_API bool Data_TableToJson(Data::Interfaces::ITable* table,
                                    Data::Interfaces::IJsonDocument** out,
                                    Core::IErrorCode** error);
/// Writes one row as a JSON object, with values and failures as for `Data_TableToJson`. A row
/// without a table fails with "Null pointer exception! Interface is not accessible: struct
/// Data::Interfaces::ITable".
LAYERDATA_API bool Data_TableRowToJson(Data::Interfaces::IRow* row,
                                       Data::Interfaces::IJsonDocument** out,
                                       Core::IErrorCode** error);

// -- Layer schema --

/// A new schema without columns, with version 1.
/// @param title        copied, not null
/// @param description  copied, not null
LAYERDATA_API bool Data_CreateSchema(const Data::Structures::_UUID* uuid, const char* title,
                                     const char* description, Data::Interfaces::ISchema** out,
                                     Core::IErrorCode** error);
/// Reads a layer schema document. Text that is not a JSON object gives an empty schema. Attributes
/// that the document omits have the values that `ISchema::AddColumn` sets. A member that is null
/// counts as omitted.
/// Fails with:
///   - "Member \"" + key + "\" of the layer schema document " followed by "is missing!", "must be a
///     string!", "must be an integer of 32 bits!", "must be true or false!", "must be an object!",
///     "must be an array!" or "must hold objects!";
///   - "Parsing failed!" for a default or allowed value that is not a number as its type requires;
///   - "Invalid uuid format!" + text;
///   - the failures of `Data_CreateDateTimeFromIso8601` for dates;
///   - "The layer schema document is nested deeper than 1000 levels!".
LAYERDATA_API bool Data_ParseSchema(Data::Interfaces::IJsonDocument* document,
                                    Data::Interfaces::ISchema** out, Core::IErrorCode** error);

// -- Date and time --

/// A new date-time with the current time in UTC.
LAYERDATA_API bool Data_CreateCurrentDateTime(Data::Interfaces::IDateTime** out);
/// A new date-time with 0001-01-01T00:00:00.
LAYERDATA_API bool Data_CreateMinimumDateTime(Data::Interfaces::IDateTime** out);
/// A new date-time with 9999-12-31T00:00:00, the start of the last day.
LAYERDATA_API bool Data_CreateMaximumDateTime(Data::Interfaces::IDateTime** out);
/// A new date-time from ISO 8601 text. A date without a time means noon. Offsets are not applied.
/// Fails with "Input lenght is 0", "Invalid time format!" + text, "Invalid date time format!" +
/// text, "Month cannot be 0" and "Day cannot be 0".
LAYERDATA_API bool Data_CreateDateTimeFromIso8601(const char* text,
                                                  Data::Interfaces::IDateTime** out,
                                                  Core::IErrorCode** error);
/// A new date-time from POSIX time.
/// @param seconds  since 1970-01-01T00:00:00 UTC
LAYERDATA_API bool Data_CreateDateTimeFromPosixTime(int64_t seconds,
                                                    Data::Interfaces::IDateTime** out);
/// A new date-time from a file time.
/// @param ticks  units of 100 nanoseconds since 1601-01-01T00:00:00 UTC; from 2^63 on, all calendar
///               fields are zero
LAYERDATA_API bool Data_CreateDateTimeFromFileTime(uint64_t ticks,
                                                   Data::Interfaces::IDateTime** out);

}  // extern "C"
