#ifndef LAYERDATA_LAYERDATA_READING_H
#define LAYERDATA_LAYERDATA_READING_H

/// Delimited text and JSON to tables, with options and a report of what the text lost. Part of
/// layerdata.h, whose rules hold here.
///
/// Options. A record of options begins with its size, which the caller sets to `sizeof` the record.
/// Everything else may stay zero, which is the default: `ld_csv_read_options o = {sizeof o};`. A
/// null pointer means all defaults. Records of older and newer versions of this header are
/// accepted. Fails with "The size of the options is wrong!" and "The options ask for something that
/// this version does not know!".

#include "layerdata.h"

#ifdef __cplusplus
extern "C" {
#endif

/// Called now and then during a long call, on the thread of the caller, and once at its end with
/// `done` equal to `total`. May call the library.
/// @param context  the pointer that the options give
/// @param done     how much has been done, in the unit that the options name
/// @return false to cancel: the call fails with "The operation was cancelled!"
typedef bool (*ld_progress)(void* context, uint64_t done, uint64_t total);

/// Which line of a delimited text names the columns.
typedef uint32_t ld_header_line;
enum {
  /// As `ld_parse_csv` does it: the lines before the first one that is as wide as the widest of the
  /// first 100 lines are dropped. That line is the header if all its values are text or empty.
  LD_HEADER_LINE_DETECT = 0,
  /// The first line names the columns. No line is dropped.
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
  ld_header_line header;
  ld_long_lines long_lines;
  /// The number of threads, the calling one included; more than 256 count as 256. 1: only the
  /// calling thread. 0: as many as the process may use, at most 16, for a text of 4 MB and more,
  /// and 1 below. The table does not depend on it.
  uint32_t thread_count;
  /// Names of columns whose cells are text as written. Quotes around a whole value are removed, and
  /// the doubled quotes inside become single; nothing else changes, so "00501" keeps its zeros. An
  /// empty value is Null. A name may be given with or without the quotes that it has in the header.
  /// Fails with "The text has no column %s!".
  const char* const* text_columns;
  uint64_t text_column_count;
  /// Reading ends after this many rows; what follows is not looked at. 0: no limit.
  uint64_t max_rows;
  /// Null for none. Counts bytes of text.
  ld_progress progress;
  void* progress_context;
  /// Whether all columns are text columns.
  bool all_text;
  /// Whether names lose the quotes around them, as values do.
  bool unquote_names;
} ld_csv_read_options;

#ifdef __cplusplus
}
#endif

#endif
