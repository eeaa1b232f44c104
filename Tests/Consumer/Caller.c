/* Uses the C interface. */
#include <LayerData/layerdata.h>
#include <inttypes.h>
#include <stdio.h>

int main(void) {
  const char text[] = "name,length\nUpper Bridge,12.5\n";
  ld_table* table = NULL;
  int64_t rows = 0;
  if (!ld_parse_csv(text, sizeof text - 1, &table, NULL) ||
      !ld_table_get_row_count(table, &rows, NULL))
    return 1;
  printf("%" PRId64 " row\n", rows);
  ld_release(table);
  return 0;
}
