/* Reads a messy CSV file, tells what it had to drop, keeps its ZIP codes, sorts it by revenue, and
 * hands the table to DuckDB:
 *
 *   TableToDuckDb Data/shops.csv
 *
 * Links with layerdata-c and with the library of DuckDB, whose header is duckdb.h.
 */
#include <LayerData/layerdata.h>
#include <duckdb.h>
#include <stdio.h>
#include <stdlib.h>

static ld_error* error = NULL;

static void check(bool succeeded, const char* message) {
  if (succeeded) return;
  fprintf(stderr, "%s\n", error ? ld_error_message(error) : message);
  exit(1);
}

int main(int count, char** arguments) {
  check(count == 2, "usage: TableToDuckDb FILE");
  const char* const texts[] = {"zip"};
  const ld_csv_read_options options = {
      .size = sizeof options, .text_columns = texts, .text_column_count = 1};
  ld_table *table = NULL, *sorted = NULL;
  ld_read_report* report = NULL;
  check(ld_csv_read_file(arguments[1], &options, &table, &report, &error), "");

  uint64_t problems = 0;
  check(ld_read_report_get_problem_count(report, &problems, &error), "");
  for (uint64_t i = 0; i < problems; ++i) {
    ld_error* problem = NULL;
    check(ld_read_report_get_problem(report, i, &problem, &error), "");
    puts(ld_error_message(problem));
    ld_release(problem);
  }

  const ld_sort_key key = {"revenue", LD_SORT_ORDER_DESCENDING};
  struct ArrowArrayStream stream;
  check(ld_table_sort(table, &key, 1, &sorted, &error), "");
  check(ld_table_to_arrow_stream(sorted, NULL, &stream, &error), "");

  duckdb_database database;
  duckdb_connection connection;
  duckdb_result result;
  check(duckdb_open(NULL, &database) == DuckDBSuccess, "no database");
  check(duckdb_connect(database, &connection) == DuckDBSuccess, "no connection");
  /* A stream can be read once, and DuckDB reads it rightly only as a whole. */
  check(duckdb_arrow_scan(connection, "stream", (duckdb_arrow_stream)&stream) == DuckDBSuccess,
        "no view");
  check(duckdb_query(connection, "CREATE TABLE shops AS FROM stream", NULL) == DuckDBSuccess,
        "no table");
  check(duckdb_query(connection,
                     "SELECT zip, count(*), sum(revenue), min(opened) FROM shops "
                     "GROUP BY zip ORDER BY zip",
                     &result) == DuckDBSuccess,
        "no result");
  for (idx_t row = 0; row < duckdb_row_count(&result); ++row)
    for (idx_t column = 0; column < 4; ++column) {
      char* const value = duckdb_value_varchar(&result, column, row);
      printf("%s%s", value ? value : "", column < 3 ? ", " : "\n");
      duckdb_free(value);
    }

  duckdb_destroy_result(&result);
  duckdb_disconnect(&connection);
  duckdb_close(&database);
  stream.release(&stream);
  ld_release(report);
  ld_release(sorted);
  ld_release(table);
  return 0;
}
