#ifndef LAYERDATA_LAYERDATA_READING_H
#define LAYERDATA_LAYERDATA_READING_H

/// Delimited text and JSON to tables, with options and a report of what the text lost. Part of
/// layerdata.h, whose rules hold here.
///
/// Options. A record of options begins with its size, which the caller sets to `sizeof` the record.
/// Everything else may stay zero, which is the default: `ld_csv_read_options o = {.size = sizeof
/// o};`. A null pointer means all defaults. Records of older and newer versions of this header are
/// accepted. Fails with "The size of the options is wrong!" and "The options ask for something that
/// this version does not know!".

#include "layerdata.h"

#ifdef __cplusplus
extern "C" {
#endif

/// Which line of a delimited text names the columns.
typedef uint32_t ld_header_line;
enum {
  /// As `ld_parse_csv` does it: the lines before the first one that is as wide as the widest of the
  /// first 100 lines are dropped. That line is the header if all its values are text or empty.
  LD_HEADER_LINE_DETECT = 0,
  /// The first line names the columns; names lose the quotes around them, as values do. No line is
  /// dropped.
  LD_HEADER_LINE_YES = 1,
  /// There is no header. No line is dropped. The columns are "Column 1", "Column 2" and so on, as
  /// many as the widest of the first 100 lines has values.
  LD_HEADER_LINE_NO = 2,
};

/// What to do with a line that has more values than the table has columns.
typedef uint32_t ld_long_lines;
enum {
  /// Reading fails with "Csv file does not have consistent usage of column separator between
  /// lines!, Columns %d vs Values %d at line %d".
  LD_LONG_LINES_FAIL = 0,
  LD_LONG_LINES_SKIP = 1,  ///< the line does not become a row
  LD_LONG_LINES_KEEP = 2,  ///< the line becomes a row without its extra values
};

/// How to read delimited text. The defaults read as `ld_parse_csv` does.
typedef struct ld_csv_read_options {
  uint64_t size;  ///< of this record
  /// One or more bytes; null or empty to detect it.
  const char* separator;
  /// 0: what the byte-order mark says (UTF-8 or UTF-16), UTF-8 without one. 1200: UTF-16LE, 1201:
  /// UTF-16BE, 65001: UTF-8, or a code page such as 1252. Fails with "The code page %d is
  /// unknown!".
  uint32_t code_page;
  ld_header_line header;     ///< which line names the columns
  ld_long_lines long_lines;  ///< what to do with lines that have too many values
  /// The number of threads, the calling one included; more than 256 count as 256. 1: only the
  /// calling thread. 0: as many as the process may use, at most 16, for a text of 4 MB and more,
  /// and 1 below. The table does not depend on it.
  uint32_t thread_count;
  /// Names of columns whose cells are text as written. Quotes around a whole value are removed, and
  /// the doubled quotes inside become single; nothing else changes, so "00501" keeps its zeros. An
  /// empty value is Null. A name may be given with or without the quotes that it has in the header.
  /// Fails with "The text has no column %s!".
  const char* const* text_columns;
  uint64_t text_column_count;  ///< how many names there are
  /// Reading ends after this many rows; what follows is not looked at. 0: no limit.
  uint64_t max_rows;
  /// Null for none. Counts bytes of text.
  ld_progress progress;
  void* progress_context;  ///< passed to `progress`
  /// Whether all columns are text columns.
  bool all_text;
  /// Whether names that are detected lose the quotes around them, as values do. With
  /// `LD_HEADER_LINE_YES` they always do.
  bool unquote_names;
} ld_csv_read_options;

/// What reading has found in a text and what the table does not tell any more. It never changes;
/// any number of threads may read it. Texts belong to the report.
///
/// Lines of delimited text are numbered from 0, without the empty ones, as in the failures of
/// `ld_csv_read`; a line break inside quotes ends no line. Lines of JSON are numbered from 1, as
/// editors show them.
typedef struct ld_read_report ld_read_report;

/// Why texts do not come back as they were when the table is written again. White space around
/// values does not count.
typedef uint32_t ld_text_change;
enum {
  LD_TEXT_CHANGE_LEADING_ZEROS = 0,      ///< "00501" was read as 501
  LD_TEXT_CHANGE_NUMBER_FORM = 1,        ///< "1.10" was read as 1.1, "1e5" as 100000
  LD_TEXT_CHANGE_QUOTES = 2,             ///< quotes that belong to the text are gone
  LD_TEXT_CHANGE_DATE_WITHOUT_TIME = 3,  ///< "2024-01-31" was read as noon of that day
  /// Read as a date-time, but not written like one, as "3-4-7 main street", or with an offset from
  /// UTC, which is dropped. In JSON every text that was read as a date-time.
  LD_TEXT_CHANGE_DATE_FORM = 4,
};

/// Reads delimited text.
/// @param data     need not be zero-terminated
/// @param size     in bytes; 0 fails with "Size cannot be 0. We don't call strlen internally
///                 because data might not contain null terminator!"
/// @param options  null for the defaults, with which the table and the failures are those of
///                 `ld_parse_csv`, unless the text begins with a byte-order mark of UTF-16
/// @param table    receives a new table
/// @param report   receives a report; null if none is wanted, which takes less time
/// @fails also with "No lines detected in the csv content" and, as `ld_parse_csv`, with "A text of
///        %llu bytes cannot become a table of more than %llu cells!"
LD_API bool ld_csv_read(const void* data, uint64_t size, const ld_csv_read_options* options,
                        ld_table** table, ld_read_report** report, ld_error** error);
/// As `ld_csv_read`, from a file. Fails with `Cannot read "PATH": ` and the system's reason.
/// @param path  UTF-8
LD_API bool ld_csv_read_file(const char* path, const ld_csv_read_options* options, ld_table** table,
                             ld_read_report** report, ld_error** error);

/// The form of a JSON text.
typedef uint32_t ld_json_form;
enum {
  /// Lines if the text begins with an object and goes on after it, otherwise a document.
  LD_JSON_FORM_DETECT = 0,
  LD_JSON_FORM_DOCUMENT = 1,  ///< one value
  LD_JSON_FORM_LINES = 2,     ///< an object on each line; empty lines are left out
};

/// How to read JSON. The defaults read a document as `ld_json_to_table` does.
typedef struct ld_json_read_options {
  uint64_t size;  ///< of this record
  /// As in `ld_csv_read_options`.
  uint32_t code_page;
  ld_json_form form;  ///< a document or lines
  /// Names of columns whose strings, numbers and Bools are text as written: no string is read as a
  /// date-time. Null stays Null, an array or object a JsonDocument. A name that no object has is no
  /// failure.
  const char* const* text_columns;
  uint64_t text_column_count;  ///< how many names there are
  /// As in `ld_csv_read_options`.
  uint64_t max_rows;
  /// Null for none. Counts bytes of text.
  ld_progress progress;
  void* progress_context;  ///< passed to `progress`
  /// As in `ld_csv_read_options`. A document is read by the calling thread.
  uint32_t thread_count;
  /// Whether all columns are text columns.
  bool all_text;
} ld_json_read_options;

/// Reads JSON: an array of objects, one object or another value as `ld_json_to_table` does, or
/// lines of objects, which make a table "JsonLines". The text ends at its first zero byte.
/// @param data     need not be zero-terminated
/// @param size     in bytes; 0 fails as for `ld_csv_read`
/// @param options  null for the defaults
/// @param table    receives a new table
/// @param report   receives a report; null if none is wanted
///
/// Fails as `ld_json_to_table`, with the line behind the message:
///   - "JsonDocument content is not valid (line %d)";
///   - "Object in the array is not of the type object! Data structure is inconsistent across array!
///     (line %d)";
///   - "Unsupported variant type (line %d)" for an integer above 2^63 - 1;
///   - "Table %s must contain at least one column before you insert new row! (line %d)";
///   - "A text of %llu bytes cannot become a table of more than %llu cells! (line %d)".
LD_API bool ld_json_read(const void* data, uint64_t size, const ld_json_read_options* options,
                         ld_table** table, ld_read_report** report, ld_error** error);
/// As `ld_json_read`, from a file. Fails with `Cannot read "PATH": ` and the system's reason.
/// @param path  UTF-8
LD_API bool ld_json_read_file(const char* path, const ld_json_read_options* options,
                              ld_table** table, ld_read_report** report, ld_error** error);

/// The separator of the values; "" for JSON.
LD_API bool ld_read_report_get_separator(ld_read_report* self, const char** result,
                                         ld_error** error);
/// Whether a line names the columns.
LD_API bool ld_read_report_has_header(ld_read_report* self, bool* result, ld_error** error);
/// The code page that was used: 65001 for UTF-8, 1200 and 1201 for UTF-16.
LD_API bool ld_read_report_get_code_page(ld_read_report* self, uint32_t* result, ld_error** error);
/// Whether the text is well-formed UTF-8. If it is not, its bytes are in the table as they are, and
/// another code page is probably right. True for a text in any other encoding.
LD_API bool ld_read_report_is_well_formed(ld_read_report* self, bool* result, ld_error** error);
/// The number of lines that were read, without empty ones; of JSON, those of the whole text.
LD_API bool ld_read_report_get_line_count(ld_read_report* self, uint64_t* result, ld_error** error);
/// The number of rows that the table received.
LD_API bool ld_read_report_get_row_count(ld_read_report* self, uint64_t* result, ld_error** error);

/// The number of lines before the header, or before the first row, that were dropped.
LD_API bool ld_read_report_get_dropped_line_count(ld_read_report* self, uint64_t* result,
                                                  ld_error** error);
/// A line that was dropped.
/// @param index  below the count; otherwise fails with "Index out of range [%d/%d]!"
/// @param line   its number
/// @param text   the line without white space around it
LD_API bool ld_read_report_get_dropped_line(ld_read_report* self, uint64_t index, uint64_t* line,
                                            const char** text, ld_error** error);

/// The number of lines with too many values that were skipped, or kept without their extra values.
LD_API bool ld_read_report_get_long_line_count(ld_read_report* self, uint64_t* result,
                                               ld_error** error);
/// A line with too many values.
/// @param index        below the count; otherwise fails with "Index out of range [%d/%d]!"
/// @param line         its number
/// @param value_count  how many values it has
LD_API bool ld_read_report_get_long_line(ld_read_report* self, uint64_t index, uint64_t* line,
                                         uint64_t* value_count, ld_error** error);

/// The number of changes: one for each column and each kind of change that happened in it.
LD_API bool ld_read_report_get_change_count(ld_read_report* self, uint64_t* result,
                                            ld_error** error);
/// The texts of a column that changed in one way. They are in the order of the columns.
/// @param index       below the count; otherwise fails with "Index out of range [%d/%d]!"
/// @param column      the name of the column
/// @param kind        how they changed
/// @param count       how many
/// @param first_line  the number of the line of the first one
/// @param first_text  the first one as it was written
LD_API bool ld_read_report_get_change(ld_read_report* self, uint64_t index, const char** column,
                                      ld_text_change* kind, uint64_t* count, uint64_t* first_line,
                                      const char** first_text, ld_error** error);

/// The number of problems: an encoding that does not fit, the dropped lines, the long lines and the
/// changes, in this order.
LD_API bool ld_read_report_get_problem_count(ld_read_report* self, uint64_t* result,
                                             ld_error** error);
/// A problem in words.
/// @param index   below the count; otherwise fails with "Index out of range [%d/%d]!"
/// @param result  receives a new error object with code 0
LD_API bool ld_read_report_get_problem(ld_read_report* self, uint64_t index, ld_error** result,
                                       ld_error** error);

#ifdef __cplusplus
}
#endif

#endif
