/* Prints the sensors of a meta file with their IDs and limits, as
 *
 *   rux table META --format csv --no-project \
 *     --columns NAME,ID,THRESHOLD_FL,THRESHOLD_WL,THRESHOLD_WH,THRESHOLD_FH
 *
 * does for names that CSV need not quote. sensor_list.go, .py and .rs print the same. */
#include <inttypes.h>
#include <ruxmeta.h>
#include <stdio.h>

static const uint32_t limits[] = {RUXMETA_ENTRY_THRESHOLD_FL, RUXMETA_ENTRY_THRESHOLD_WL,
                                  RUXMETA_ENTRY_THRESHOLD_WH, RUXMETA_ENTRY_THRESHOLD_FH};

static void print_sensor(ruxmeta_section sensor) {
  const ruxmeta_text name = ruxmeta_section_name(sensor);
  fwrite(name.data, 1, name.size, stdout);
  printf(",0x%" PRIX32, ruxmeta_section_id(sensor).number);
  for (size_t i = 0; i < sizeof limits / sizeof *limits; ++i) {
    const ruxmeta_value limit = ruxmeta_entry_value(ruxmeta_find_entry(sensor, limits[i]), 0);
    putchar(',');
    if (limit.kind == RUXMETA_NUMBER) printf("%" PRIu32, limit.number);
  }
  putchar('\n');
}

int main(int argc, char** argv) {
  ruxmeta_model* model = NULL;
  ruxmeta_fault fault = RUXMETA_FAULT_INIT;
  if (argc != 2) {
    fprintf(stderr, "usage: sensor_list META\n");
    return 2;
  }
  if (ruxmeta_open(argv[1], &model, &fault) != RUXMETA_OK) {
    fprintf(stderr, "%s: %s\n", argv[1], fault.text);
    return 1;
  }
  puts("NAME,ID,THRESHOLD_FL,THRESHOLD_WL,THRESHOLD_WH,THRESHOLD_FH");
  const size_t count = ruxmeta_section_count(model, RUXMETA_SECTION_SENSOR);
  for (size_t i = 0; i < count; ++i)
    print_sensor(ruxmeta_section_at(model, RUXMETA_SECTION_SENSOR, i));
  ruxmeta_close(model);
  return fflush(stdout) == 0 ? 0 : 1;
}
