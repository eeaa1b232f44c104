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
  /// Null for none. Counts rows. While a stream is read, `total` is the number of rows in the
  /// batches that have been received.
  ld_progress progress;
  void* progress_context;
} ld_arrow_options;

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
