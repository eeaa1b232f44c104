#ifndef LAYERDATA_TESTS_DUCKDB_H
#define LAYERDATA_TESTS_DUCKDB_H

/* The functions of DuckDB's C interface that the tests and the example call, as its documentation
 * declares them. The package that the tests take the library from has no header. */

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

struct ArrowSchema;
struct ArrowArray;

typedef uint64_t idx_t;
typedef enum duckdb_state { DuckDBSuccess = 0, DuckDBError = 1 } duckdb_state;

typedef struct _duckdb_database* duckdb_database;
typedef struct _duckdb_connection* duckdb_connection;
typedef struct _duckdb_data_chunk* duckdb_data_chunk;
typedef struct _duckdb_logical_type* duckdb_logical_type;
typedef struct _duckdb_arrow_options* duckdb_arrow_options;
typedef struct _duckdb_error_data* duckdb_error_data;
typedef struct _duckdb_arrow_stream* duckdb_arrow_stream; /* an ArrowArrayStream */
typedef struct duckdb_result {
  idx_t deprecated_column_count;
  idx_t deprecated_row_count;
  idx_t deprecated_rows_changed;
  void* deprecated_columns;
  char* deprecated_error_message;
  void* internal_data;
} duckdb_result;

duckdb_state duckdb_open(const char* path, duckdb_database* out_database);
void duckdb_close(duckdb_database* database);
duckdb_state duckdb_connect(duckdb_database database, duckdb_connection* out_connection);
void duckdb_disconnect(duckdb_connection* connection);

duckdb_state duckdb_query(duckdb_connection connection, const char* query,
                          duckdb_result* out_result);
void duckdb_destroy_result(duckdb_result* result);
const char* duckdb_result_error(duckdb_result* result);
idx_t duckdb_column_count(duckdb_result* result);
idx_t duckdb_row_count(duckdb_result* result);
const char* duckdb_column_name(duckdb_result* result, idx_t column);
duckdb_logical_type duckdb_column_logical_type(duckdb_result* result, idx_t column);
void duckdb_destroy_logical_type(duckdb_logical_type* type);
char* duckdb_value_varchar(duckdb_result* result, idx_t column, idx_t row);
void duckdb_free(void* memory);
duckdb_data_chunk duckdb_fetch_chunk(duckdb_result result);
void duckdb_destroy_data_chunk(duckdb_data_chunk* chunk);

duckdb_state duckdb_arrow_scan(duckdb_connection connection, const char* table_name,
                               duckdb_arrow_stream arrow);
duckdb_arrow_options duckdb_result_get_arrow_options(duckdb_result* result);
void duckdb_destroy_arrow_options(duckdb_arrow_options* options);
duckdb_error_data duckdb_to_arrow_schema(duckdb_arrow_options options, duckdb_logical_type* types,
                                         const char** names, idx_t column_count,
                                         struct ArrowSchema* out_schema);
duckdb_error_data duckdb_data_chunk_to_arrow(duckdb_arrow_options options, duckdb_data_chunk chunk,
                                             struct ArrowArray* out_array);
bool duckdb_error_data_has_error(duckdb_error_data error);
const char* duckdb_error_data_message(duckdb_error_data error);
void duckdb_destroy_error_data(duckdb_error_data* error);

#ifdef __cplusplus
}
#endif

#endif
