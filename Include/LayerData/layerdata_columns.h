#ifndef LAYERDATA_LAYERDATA_COLUMNS_H
#define LAYERDATA_LAYERDATA_COLUMNS_H

/// Whole columns to and from arrays in memory. Part of layerdata.h, whose rules hold here.

#include "layerdata.h"

#ifdef __cplusplus
extern "C" {
#endif

/// The values of a column as arrays. All of them can hold Null, too: in a cell without a value.
typedef uint32_t ld_column_format;
enum {
  /// Chosen by the values; only for reading. The first of these that holds all of them without
  /// loss:
  ///   - LD_COLUMN_FORMAT_INT64 for integers of any type, also of 128 bits if 64 bits hold them
  ///   - LD_COLUMN_FORMAT_DOUBLE for Double and Float, also mixed with integers if a double holds
  ///     each of them exactly
  ///   - the format for Bool, DateTime or Array if there is nothing else
  ///   - LD_COLUMN_FORMAT_TEXT for everything else
  /// If all cells are Null, the declared type of the column decides.
  LD_COLUMN_FORMAT_AUTOMATIC = 0,
  /// `int64_t`. Holds integers, and real numbers without a fraction except -0.0.
  LD_COLUMN_FORMAT_INT64 = 1,
  /// `double`. Holds real numbers, NaN included, and integers that a double holds exactly.
  LD_COLUMN_FORMAT_DOUBLE = 2,
  /// `uint8_t`, 1 for true; when written, any number but 0 is true. Holds Bool.
  LD_COLUMN_FORMAT_BOOL = 3,
  /// `int64_t` microseconds since 1970-01-01T00:00:00 UTC. Holds DateTime without a fraction of a
  /// microsecond (it has steps of 100 nanoseconds), from year 1 on.
  LD_COLUMN_FORMAT_DATE_TIME = 4,
  /// Bytes and offsets: well-formed UTF-8 without terminators. Holds every value: texts and
  /// documents as they are, integers of all sizes in decimal, real numbers with the fewest digits
  /// that read back as the same number, all others as their display text.
  LD_COLUMN_FORMAT_TEXT = 5,
  /// Bytes and offsets: any bytes. Holds Array, and texts as they are stored, in UTF-8.
  LD_COLUMN_FORMAT_BINARY = 6,
};

/// The cells of a column, or of some of its rows, in order.
///
/// A cell that is Null, a null reference, or of the types Unknown, Invalid and Reserved has no
/// value: it is Null here. What stands in the arrays at its place has no meaning, but offsets
/// ascend there, too.
///
/// Set the record to zero, and `size`, before you fill it for a function that writes cells.
typedef struct ld_column_data {
  uint64_t size;            ///< of this record in bytes
  ld_column_format format;  ///< never LD_COLUMN_FORMAT_AUTOMATIC
  int64_t length;           ///< number of cells
  int64_t null_count;       ///< of cells without a value; not read
  /// A bit for each cell, the least significant bit of the first byte first: 1 for a value. Null if
  /// all cells have one.
  const uint8_t* validity;
  const void* values;      ///< `length` values; null for texts and binary
  const int64_t* offsets;  ///< of texts and binary: length + 1 positions in `bytes`, ascending
  const char* bytes;       ///< cell i stands at offsets[i], and ends before offsets[i + 1]
  uint64_t byte_count;     ///< size of `bytes`
} ld_column_data;

/// How a column is read.
typedef struct ld_column_options {
  uint64_t size;            ///< of this record in bytes
  ld_column_format format;  ///< 0: LD_COLUMN_FORMAT_AUTOMATIC
  /// Whether to store the nearest that the format holds instead of failing: an integer as the
  /// nearest double, a date rounded down to the microsecond, U+FFFD for what is not UTF-8.
  bool lossy;
} ld_column_options;

/// Copies cells of a column into arrays.
///
/// The cells of a table of the library are read where they are, unless one of them refers to an
/// object that may call back: such cells, and those of a table that the caller implements, are
/// copied first.
/// @param column     the index
/// @param row_count  -1: all rows from `first_row` on
/// @param options    null for the defaults
/// @param data       the arrays. They belong to `owner`.
/// @param owner      an object to be released when the arrays are no longer needed. It keeps
///                   nothing of the table.
/// @fails with "Column index out of range [%d/%d]!" and "Row index out of range [%d/%d]!" (index,
///        count), "Invalid value %d of ld_column_format!", "Column %s, row %d: %s cannot be stored
///        as %s without loss!" (name, index, type, format), "The table has changed while it was
///        read!" (by an object in a cell), and with the failure of a value that has no text
LD_API bool ld_table_get_column_data(ld_table* self, int32_t column, int64_t first_row,
                                     int64_t row_count, const ld_column_options* options,
                                     const ld_column_data** data, ld_object** owner,
                                     ld_error** error);

// Writing. The cells get the types Int64, Double, Bool, DateTime, String or Array, and Null without
// a value. The arrays are copied. Failures are found before anything changes:
//   - "Invalid value %d of ld_column_format!", also for LD_COLUMN_FORMAT_AUTOMATIC
//   - "The size of the options is wrong!" for a wrong size of the record
//   - "Column %s: the length is wrong!", "Column %s: the values are missing!" for arrays that are
//     null though there are cells
//   - "Column %s, row %d: the offsets are wrong!" (index in the array) if they do not ascend, or
//     leave the bytes
//   - "Column %s, row %d: the text is not UTF-8!"
//   - "Column %s, row %d: the date is out of range!"
//   - "Column %s has %d cells instead of %d!"
//   - "Column with name [%s] already exists!"
//   - "The table is not one of the library!" for one that the caller implements

/// A new table from columns of one length. Much faster than cell by cell: a million rows take
/// a fraction of a second.
/// @param names    of the columns
/// @param columns  the address of each column's data
/// @param count    of the columns; 0 for an empty table
LD_API bool ld_create_table_from_columns(const char* const* names,
                                         const ld_column_data* const* columns, uint64_t count,
                                         ld_table** out, ld_error** error);

/// Appends a column with a cell for each row, which marks all rows as modified.
LD_API bool ld_table_add_column_data(ld_table* self, const char* name, const ld_column_data* data,
                                     ld_error** error);

/// Writes the cells of a column from `first_row` on, with the effects of writing each of them: rows
/// are marked as modified, the column's type and null-seen flag are updated. An index over the
/// column is kept if the values are unique in the end and none of its keys calls back; otherwise it
/// is dropped.
/// @fails also with "Column index out of range [%d/%d]!" and "Row index out of range [%d/%d]!"
LD_API bool ld_table_set_column_data(ld_table* self, int32_t column, int64_t first_row,
                                     const ld_column_data* data, ld_error** error);

#ifdef __cplusplus
}
#endif

#endif
