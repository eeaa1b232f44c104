/* Reads a CSV file, shows its columns, and writes the rows whose column exceeds a limit as CSV:
 *
 *   LongRows roads.csv length 2.5 > long.csv
 */
#include <LayerData/layerdata.h>
#include <stdio.h>
#include <stdlib.h>

static ld_error* error = NULL;

static void check(bool succeeded) {
  if (succeeded) return;
  fprintf(stderr, "%s\n", ld_error_message(error));
  exit(1);
}

static char* read_file(const char* path, size_t* size) {
  FILE* file = fopen(path, "rb");
  char* text = NULL;
  if (file && fseek(file, 0, SEEK_END) == 0) {
    const long end = ftell(file);
    rewind(file);
    text = end < 0 ? NULL : (char*)malloc((size_t)end + 1);
    *size = text ? fread(text, 1, (size_t)end, file) : 0;
  }
  if (file) fclose(file);
  return text;
}

int main(int count, char** arguments) {
  size_t size = 0;
  char* text = count == 4 ? read_file(arguments[1], &size) : NULL;
  if (!text) {
    fprintf(stderr, "usage: LongRows FILE COLUMN LIMIT\n");
    return 2;
  }
  ld_table* table = NULL;
  check(ld_parse_csv(text, size, &table, &error));
  free(text);

  int64_t columns = 0, rows = 0;
  check(ld_table_get_column_count(table, &columns, &error));
  check(ld_table_get_row_count(table, &rows, &error));
  for (int32_t i = 0; i < columns; ++i) {
    ld_column* column = NULL;
    const char* name = NULL;
    ld_value_type type = LD_VALUE_TYPE_UNKNOWN;
    check(ld_table_get_column(table, i, &column, &error));
    check(ld_column_get_name(column, &name, &error));
    check(ld_column_get_type(column, &type, &error));
    fprintf(stderr, "%s: type %u\n", name, (unsigned)type);
    ld_release(column);
  }

  ld_variant cell = {0, {0, 0}};
  for (int64_t i = rows - 1; i >= 0; --i) {
    double number = 0;
    check(ld_table_get_cell_by_name(table, i, arguments[2], &cell, &error));
    check(ld_variant_to_double(&cell, &number, &error));
    if (number <= atof(arguments[3])) check(ld_table_remove_row(table, i, &error));
  }
  ld_variant_clear(&cell);

  ld_string* csv = NULL;
  const char* utf8 = NULL;
  check(ld_convert_table_to_csv(table, ",", &csv, true, &error));
  check(ld_string_get_utf8(csv, &utf8, &error));
  fputs(utf8, stdout);
  ld_release(csv);
  ld_release(table);
  return 0;
}
