#ifndef LAYERDATA_LAYERDATA_ARROW_H
#define LAYERDATA_LAYERDATA_ARROW_H

/// Tables to and from the Arrow C data interface and C stream interface, by which data frames and
/// databases in one process exchange columns. Part of layerdata.h, whose rules hold here.
///
/// Ownership. A structure belongs to whoever holds it, until its `release` is called or the
/// structure is moved: copied, and the `release` of the original set to null. The functions that
/// write tables fill structures that the caller releases. Those that read tables move the
/// structures that they are given, so that the caller has nothing to release, whether they succeed
/// or not.

#include "layerdata.h"

#ifdef __cplusplus
extern "C" {
#endif

// Both interfaces are open: every program that takes part declares them itself, as they stand here.

#ifndef ARROW_C_DATA_INTERFACE
#define ARROW_C_DATA_INTERFACE

#define ARROW_FLAG_DICTIONARY_ORDERED 1
#define ARROW_FLAG_NULLABLE 2
#define ARROW_FLAG_MAP_KEYS_SORTED 4

/// The type of an array, or of a batch: a struct with a child for each column.
struct ArrowSchema {
  const char* format;
  const char* name;
  const char* metadata;
  int64_t flags;
  int64_t n_children;
  struct ArrowSchema** children;
  struct ArrowSchema* dictionary;
  void (*release)(struct ArrowSchema*);  ///< null: released
  void* private_data;
};

/// The values of an array or batch.
struct ArrowArray {
  int64_t length;
  int64_t null_count;  ///< -1: not counted
  int64_t offset;
  int64_t n_buffers;
  int64_t n_children;
  const void** buffers;
  struct ArrowArray** children;
  struct ArrowArray* dictionary;
  void (*release)(struct ArrowArray*);  ///< null: released
  void* private_data;
};

#endif

#ifndef ARROW_C_STREAM_INTERFACE
#define ARROW_C_STREAM_INTERFACE

/// Batches of one type.
struct ArrowArrayStream {
  int (*get_schema)(struct ArrowArrayStream*, struct ArrowSchema* out);
  int (*get_next)(struct ArrowArrayStream*, struct ArrowArray* out);  ///< released: the end
  const char* (*get_last_error)(struct ArrowArrayStream*);
  void (*release)(struct ArrowArrayStream*);  ///< null: released
  void* private_data;
};

#endif

/// How tables are written to and read from Arrow structures.
typedef struct ld_arrow_options {
  uint64_t size;  ///< of this record
  /// Writing a stream: the most rows of a batch. 0: 65,536.
  uint64_t batch_rows;
  /// Writing: the formats of columns, which the fields of this struct name. Columns that it does
  /// not name have the format that fits their values. Null for none. The caller keeps the schema.
  /// The formats: b, c, C, s, S, i, I, l, L, f, g, u, U, z, Z, tdD, and tss:, tsm:, tsu: and tsn:
  /// with any time zone.
  const struct ArrowSchema* schema;
  /// Null for none. Counts rows; writing counts each three times. While a stream is read, `total`
  /// is the number of rows in the batches that have been received.
  ld_progress progress;
  void* progress_context;  ///< passed to `progress`
  /// Writing: whether to round, instead of failing, what a format does not hold exactly: numbers to
  /// the nearest, times down; and to replace what is not UTF-8 by U+FFFD.
  bool lossy;
} ld_arrow_options;

/// Writes a table as a stream of batches.
///
/// The table is read in this call, and the stream has copies of all values. So the table may change
/// or end before the stream is read, any thread may read the stream, and reading it fails only for
/// lack of memory (get_next returns ENOMEM). A batch gives its memory to whoever receives it.
///
/// The format of a column is the first of these that holds all its values. Null values do not
/// count; the declared type decides if there are no others.
///
///   - integers of one type: int8, uint8 ... uint64
///   - integers of several types that 64 bits hold: int64
///   - nothing but Float: float32
///   - real numbers, also mixed with integers that a double holds exactly: float64
///   - nothing but Bool: bool
///   - nothing but DateTime: date32 if all stand at noon, as dates that were read without a time;
///     otherwise timestamps of microseconds in UTC, or of nanoseconds if there are fractions of
///     microseconds
///   - nothing but Array: binary
///   - anything else: utf8. Numbers are exact, with the fewest digits that read back as the same
///     double. Dates are ISO 8601, UUIDs as "00000001-0002-0003-0400-000000000000", and documents
///     are their content. large_utf8 (64-bit offsets) for documents, and if the texts may take more
///     than 2 GB.
///
/// With a format of the options, a column must hold nothing but values that this format holds.
/// All columns are nullable, and no row is null.
/// @param options  may be null
/// @param out      overwritten; released by the caller
/// @fails with "Column %s, row %d: %s cannot be stored as %s without loss!" or "... cannot be
///        stored in the Arrow format "%s" without loss!", also for a text that is not UTF-8; "The
///        Arrow schema names a column that the table does not have!"; "The table has changed while
///        it was read!" if the progress function or an object of the caller's own class in a cell
///        does that
LD_API bool ld_table_to_arrow_stream(ld_table* table, const ld_arrow_options* options,
                                     struct ArrowArrayStream* out, ld_error** error);

/// Writes a table as one batch. See `ld_table_to_arrow_stream`.
/// @param schema  overwritten; released by the caller
/// @param array   likewise
LD_API bool ld_table_to_arrow_array(ld_table* table, const ld_arrow_options* options,
                                    struct ArrowSchema* schema, struct ArrowArray* array,
                                    ld_error** error);

/// Reads a table from a stream of batches. The values become cells of these types:
///
///   - integers: the type of their width, such as UInt64; bool: Bool
///   - float16 and float32: Float; float64: Double
///   - utf8, large_utf8, utf8_view: String
///   - binary of all kinds: Array of bytes
///   - timestamps of all units: DateTime in UTC. Those without a time zone count as UTC.
///     Nanoseconds are rounded down to 100, the precision of a DateTime.
///   - dates: DateTime at noon, as a date without a time is read from text. A date64 that is no
///     whole day keeps its time.
///   - decimals: String, exact, with all digits of their scale: "-0.50"
///   - times of day: String such as "10:20:30.000125", with the digits of their unit
///   - durations and intervals: String, an ISO 8601 duration such as "P1M2DT-3.500S"
///   - lists of all kinds, maps and structs: JsonDocument. A map is an array of objects with key
///     and value. What JSON has no type for is text, binary in Base64.
///   - null values, and the values of a null struct: Null
///
/// Dictionaries are looked up. Extension types are read as the type that stores them. Unions,
/// run-end encoded arrays and unknown formats fail.
///
/// The columns have the names of the fields. A name that repeats gets "_1" and so on.
/// @param stream  moved (see above), and released before the function returns
/// @param options  may be null
/// @fails with a message that names the column for a format that cannot be read, an array that is
///        not what its schema says, and a time before year 1 or beyond the year 30827; with "The
///        Arrow stream failed: " and the stream's own message
LD_API bool ld_table_from_arrow_stream(struct ArrowArrayStream* stream,
                                       const ld_arrow_options* options, ld_table** out,
                                       ld_error** error);

/// Reads a table from one batch. See `ld_table_from_arrow_stream`.
/// @param schema  moved (see above), and released before the function returns
/// @param array   likewise
LD_API bool ld_table_from_arrow_array(struct ArrowSchema* schema, struct ArrowArray* array,
                                      const ld_arrow_options* options, ld_table** out,
                                      ld_error** error);

#ifdef __cplusplus
}
#endif

#endif
