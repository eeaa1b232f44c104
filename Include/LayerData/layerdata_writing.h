#ifndef LAYERDATA_LAYERDATA_WRITING_H
#define LAYERDATA_LAYERDATA_WRITING_H

/// Tables to delimited text and JSON that read back as the same table. Part of layerdata.h, whose
/// rules hold here.
///
/// Options are records as described in layerdata_reading.h.
///
/// The exact form of values, which is the default:
///   - a Double has the fewest digits that read back as the same number, and always a point or an
///     exponent, so that it reads back as Double: 0.1, 1.0, 1e30. A Float is written as the Double
///     of the same value. Integers have all their digits;
///   - a date-time is written as 2024-11-14T10:20:30Z, with three decimals of the second for
///     milliseconds and seven for ticks. In a column whose date-times all stand at noon, as a date
///     without a time is read, it is written as 2024-11-14;
///   - UUIDs, arrays, lists and errors are written as their display text.
///
/// The whole table is written, also hidden columns. The functions hold the table; nothing but an
/// object of the caller's own in a cell may change it meanwhile.
///
/// Files. A file is written beside its place under a name of its own, flushed to the disk, and then
/// takes the place of an existing file, whose permissions it keeps where the system allows it. A
/// symbolic link is followed. After a failure the existing file is as it was, and nothing else
/// remains. What is no file (a pipe, a terminal) is written directly. Paths are UTF-8.
///
/// Threads. The text does not depend on their number. Tables of the caller's own class, and rows
/// from the first on that holds an object of the caller's own, a document, a list or a text that is
/// not stored as UTF-8, are written by the calling thread.

#include "layerdata.h"

#ifdef __cplusplus
extern "C" {
#endif

/// The form of values.
typedef uint32_t ld_value_form;
enum {
  LD_VALUE_FORM_EXACT = 0,  ///< see above
  /// The form of `ld_convert_table_to_csv` and `ld_table_to_json`, which loses digits, quotes and
  /// line breaks.
  LD_VALUE_FORM_DISPLAY = 1,
};

/// Which values stand in quotes.
typedef uint32_t ld_quoting;
enum {
  LD_QUOTING_NEEDED = 0,  ///< those that would otherwise be read as something else
  LD_QUOTING_TEXTS = 1,   ///< all texts and documents
};

/// How a line ends.
/// What ends a line.
typedef uint32_t ld_line_end;
enum {
  LD_LINE_END_LF = 0,    ///< "\n"
  LD_LINE_END_CRLF = 1,  ///< "\r\n"
};

/// How to write delimited text.
typedef struct ld_csv_write_options {
  uint64_t size;  ///< of this record
  /// One or more bytes; null or empty for a comma. In the exact form it must not contain quotes,
  /// line breaks, ASCII letters and digits, "-", "." and ":", nor begin or end with white space if
  /// it has several bytes: "The separator cannot be told from the values!".
  const char* separator;
  ld_value_form form;    ///< of the values
  ld_quoting quoting;    ///< which of them stand in quotes
  ld_line_end line_end;  ///< after each line
  /// The number of threads, the calling one included; more than 256 count as 256. 1: only the
  /// calling thread. 0: as many as the process may use, at most 16, for a table that makes some
  /// 4 MB of text and more, and 1 below.
  uint32_t thread_count;
  /// Null for none. Counts rows. Must not change the table.
  ld_progress progress;
  void* progress_context;  ///< passed to `progress`
  /// Whether the exact form quotes names as it does texts, for readers that remove the quotes of
  /// names (`unquote_names` and `LD_HEADER_LINE_YES`). Otherwise a name such as "a,b", with the
  /// quotes that detection leaves it, is written as it is.
  bool quote_names;
  /// Whether the line with the names of the columns is left out.
  bool without_header;
} ld_csv_write_options;

/// Writes a table as delimited text.
///
/// In the exact form every line ends with a line end. A text stands in quotes, and the quotes in it
/// are doubled, if it contains quotes, line breaks or the separator, begins or ends with white
/// space, is empty, or would be read as a number or date. Null is nothing at all. A name stands in
/// quotes if it would otherwise not be read as one name, or not as text, as a line must be to be
/// detected as a header.
///
/// What `ld_csv_read` and `ld_parse_csv_with_separator` read from a well-formed text, they read
/// again from what this function writes with the same separator: the same names and the same cells.
/// Of a table that has other contents, the following does not come back as it was:
///   - without further options, texts that begin or end with a quote lose it, and names gain the
///     quotes in which they had to be written. The options `text_columns` (or `all_text`) of
///     `ld_csv_read` bring the former back, `quote_names` together with `unquote_names` the latter;
///   - Bool, Uuid, documents and all other types but Int64, Double, DateTime and String come back
///     as texts, integers of other types as Int64 if they fit, Float as Double, NaN and infinities
///     as the texts "nan", "inf" and "-inf";
///   - the decimals of a second: readers lose their leading zeros, so that 50 ms become 500 ms, and
///     what is below a millisecond;
///   - a row of a table with one column that holds Null is an empty line, which readers skip. With
///     a separator that is white space, Null cells at the start of a row are lost: the following
///     cells move up;
///   - without a header, readers take the first row for one if all its cells are texts or Null:
///     `LD_HEADER_LINE_NO` says that it is none. A reader that is to detect the separator takes the
///     first comma, semicolon, TAB or vertical bar, also in a name.
/// @param options  null for the defaults
LD_API bool ld_csv_write(ld_table* table, const ld_csv_write_options* options, ld_string** result,
                         ld_error** error);

/// As `ld_csv_write`, to a file.
/// @fails also with `Cannot write "%s": ` and the system's reason
LD_API bool ld_csv_write_file(ld_table* table, const char* path,
                              const ld_csv_write_options* options, ld_error** error);

/// What surrounds the rows of a table in JSON.
typedef uint32_t ld_json_layout;
enum {
  LD_JSON_LAYOUT_ARRAY = 0,  ///< an array of objects
  LD_JSON_LAYOUT_LINES = 1,  ///< JSON lines: an object on each line
};

/// How to write JSON.
typedef struct ld_json_write_options {
  uint64_t size;          ///< of this record
  ld_json_layout layout;  ///< what surrounds the rows
  /// Spaces for each level of an array, at most 16; 0 for no white space. Must be 0 for JSON lines.
  uint32_t indentation;
  ld_value_form form;     ///< of the values
  uint32_t thread_count;  ///< as in `ld_csv_write_options`
  /// Null for none. Counts rows. Must not change the table.
  ld_progress progress;
  void* progress_context;  ///< passed to `progress`
} ld_json_write_options;

/// Writes a table as JSON: an object for each row, with a member for each column.
///
/// In the exact form a JSON document whose root is an object or array is written as such, without
/// insignificant white space, so that it reads back as a document. Integers that 64 bits with a
/// sign do not hold are strings. What `ld_json_read` and `ld_json_to_table` read they read again,
/// except from an array without rows, which has no names of columns. Of a table that has other
/// contents, texts that look like a date come back as date-times, other types than Int64, Double,
/// Bool, DateTime, String and JsonDocument as the type that their JSON has, and decimals of a
/// second as `ld_csv_write` says.
/// @param options  null for the defaults
/// @fails with "The indentation is too large!", "JSON lines cannot be indented!",
///        "Column %s holds a number that JSON cannot represent!" for NaN and infinities
LD_API bool ld_json_write(ld_table* table, const ld_json_write_options* options, ld_string** result,
                          ld_error** error);

/// As `ld_json_write`, to a file.
/// @fails also with `Cannot write "%s": ` and the system's reason
LD_API bool ld_json_write_file(ld_table* table, const char* path,
                               const ld_json_write_options* options, ld_error** error);

#ifdef __cplusplus
}
#endif

#endif
