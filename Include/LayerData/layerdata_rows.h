#ifndef LAYERDATA_LAYERDATA_ROWS_H
#define LAYERDATA_LAYERDATA_ROWS_H

/// Filtering, sorting, joining and grouping the rows of tables. Part of layerdata.h, whose rules
/// hold here.
///
/// Results. Each function makes a new table and leaves its tables as they are. The new table has
/// the name of the (left) one, and its columns have the attributes of those that they come from.
/// Records are copied, so texts and other objects in cells are shared. No row counts as modified,
/// and there is no index.
///
/// Order of values. A cell without a value is Null: see `ld_column_data`. Values are ordered by
/// kind, and within a kind as follows. Values that are neither before nor after each other are
/// equal, also as keys of joins and groups.
///   1. Bool: false, true
///   2. Numbers, exactly and across all integer and real types: the Int64 2^53 + 1 is after the
///      Double 2^53, and Int64 5, UInt64 5 and Double 5.0 are equal. -0.0 equals 0. NaN equals NaN,
///      and is after all other numbers.
///   3. String, by the bytes of its UTF-8 form. So upper case is before lower case.
///   4. DateTime, by time
///   5. Uuid, by its text
///   6. The others by the number of their type; Array and documents by their bytes, all others by
///      address
///
/// Failures. "Column " + name + " does not exists" for a missing column, "The names of columns must
/// not be null!" for a null name ("Pointer of char must not be null!" in a record), "Column with
/// name [%s] already exists!" for a name that the result would have twice. A table that the caller
/// implements, or with an object in one of the cells that are read that may call back, is copied
/// first.

#include "layerdata.h"

#ifdef __cplusplus
extern "C" {
#endif

/// The rows whose bit is set.
/// @param bitmap     a bit for each row, the least significant bit of the first byte first
/// @param bit_count  the number of rows
/// @fails with "The bitmap has %d bits for %d rows!"
LD_API bool ld_table_filter(ld_table* self, const uint8_t* bitmap, uint64_t bit_count,
                            ld_table** out, ld_error** error);

/// All rows with some of the columns, in the given order.
/// @param names  of the columns; none may repeat
LD_API bool ld_table_select(ld_table* self, const char* const* names, uint64_t count,
                            ld_table** out, ld_error** error);

/// How rows are sorted by a column.
typedef uint32_t ld_sort_order;
enum {
  LD_SORT_ORDER_ASCENDING = 0,               ///< Null last
  LD_SORT_ORDER_DESCENDING = 1,              ///< Null last, too
  LD_SORT_ORDER_ASCENDING_NULLS_FIRST = 2,   ///< Null first
  LD_SORT_ORDER_DESCENDING_NULLS_FIRST = 3,  ///< Null first
};

/// A column by which rows are sorted. This record never grows.
typedef struct ld_sort_key {
  const char* column;   ///< its name
  ld_sort_order order;  ///< in which direction, and where Null stands
} ld_sort_key;

/// All rows, sorted by the first key; rows that are equal there by the second, and so on. Rows with
/// equal keys keep their order.
/// @param keys  null only if `key_count` is 0
/// @fails with "Invalid value %d of ld_sort_order!"
LD_API bool ld_table_sort(ld_table* self, const ld_sort_key* keys, uint64_t key_count,
                          ld_table** out, ld_error** error);

/// Which rows without a partner a join keeps.
typedef uint32_t ld_join_kind;
enum {
  LD_JOIN_KIND_INNER = 0,  ///< none
  LD_JOIN_KIND_LEFT = 1,   ///< those of the left table
  LD_JOIN_KIND_RIGHT = 2,  ///< those of the right table
  LD_JOIN_KIND_FULL = 3,   ///< those of both
};

/// Every row of a table with every row of another whose keys are equal to its own. A Null key
/// equals nothing.
///
/// The columns are those of the left table, then those of the right one without its keys, with
/// "_right" appended to a name until it is new. The rows are in the order of the left ones, and for
/// each of them in the order of the right ones; right rows without a partner come last, with their
/// keys in the left key columns. Missing cells are Null. The name is left name + "_" + right name +
/// "_joined".
///
/// `ld_table_merge` differs: its keys are equal as in an index, where numbers of different types
/// mostly are not, and no mode keeps the unmatched rows of the right table alone.
/// @param left_keys   names of columns of the left table
/// @param right_keys  names of columns of the right table, one for each; null: the same names
/// @param key_count   at least 1
/// @fails with "A join needs at least one key!", "Invalid value %d of ld_join_kind!"
LD_API bool ld_table_join(ld_table* left, ld_table* right, const char* const* left_keys,
                          const char* const* right_keys, uint64_t key_count, ld_join_kind kind,
                          ld_table** out, ld_error** error);

/// What is computed for the rows of a group. Null does not take part.
typedef uint32_t ld_aggregate_function;
enum {
  /// The number of rows, an Int64. The column is not read and may be null.
  LD_AGGREGATE_FUNCTION_COUNT = 0,
  /// The number of cells with a value, an Int64.
  LD_AGGREGATE_FUNCTION_COUNT_VALUES = 1,
  /// The sum of numbers; Null without any. Integers alone give an Int64, or the nearest Double if
  /// 64 bits do not hold their sum; anything else gives a Double. Integers of up to 64 bits are
  /// added exactly; real numbers, and larger integers as such, with compensated rounding errors.
  LD_AGGREGATE_FUNCTION_SUM = 2,
  /// The sum divided by the number of values, a Double; Null without any.
  LD_AGGREGATE_FUNCTION_MEAN = 3,
  /// The first of the least values in the order of values; Null without any.
  LD_AGGREGATE_FUNCTION_MIN = 4,
  /// The first of the greatest values in the order of values; Null without any.
  LD_AGGREGATE_FUNCTION_MAX = 5,
};

/// A column of the result of grouping. This record never grows.
typedef struct ld_aggregate {
  ld_aggregate_function function;  ///< what is computed
  const char* column;              ///< name of the column that is read
  const char* name;                ///< name of the new column
} ld_aggregate;

/// A row for each group of rows with equal keys, in the order of their first rows. Null equals Null
/// here. The columns are the keys, with the values of the first row of each group, and then the
/// aggregates.
/// @param keys             names of columns
/// @param key_count        0: all rows are one group, even if there are none
/// @param aggregates       null only if `aggregate_count` is 0
/// @fails with "Invalid value %d of ld_aggregate_function!", "Column %s, row %d: %s cannot be
///        added!" (name, index, type) for a value that is no number
LD_API bool ld_table_group(ld_table* self, const char* const* keys, uint64_t key_count,
                           const ld_aggregate* aggregates, uint64_t aggregate_count, ld_table** out,
                           ld_error** error);

#ifdef __cplusplus
}
#endif

#endif
