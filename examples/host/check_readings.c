/* Compares readings of sensors, "NAME NUMBER" a line, with the thresholds of a meta file, as
 * check_readings.cpp does:
 *
 *   $ printf 'CPU0_TEMP 104\nCPU1_TEMP 60\nCPU9_TEMP 60\n' | check_readings_c server.meta
 *   CPU0_TEMP: 104 is above THRESHOLD_WH (92)
 *   CPU0_TEMP: 104 is above THRESHOLD_FH (100)
 *   readings: 3, beyond a threshold: 1, of unknown sensors: 1
 *
 * Build it with
 *
 *   cc -std=c99 -o check_readings_c check_readings.c $(pkg-config --cflags --libs ruxmeta)
 */
#include <inttypes.h>
#include <ruxmeta.h>
#include <stdio.h>

struct threshold {
  const char* key;
  uint32_t entry;
  int is_upper;
};

static const struct threshold thresholds[] = {
    {"THRESHOLD_FL", RUXMETA_ENTRY_THRESHOLD_FL, 0},
    {"THRESHOLD_WL", RUXMETA_ENTRY_THRESHOLD_WL, 0},
    {"THRESHOLD_WH", RUXMETA_ENTRY_THRESHOLD_WH, 1},
    {"THRESHOLD_FH", RUXMETA_ENTRY_THRESHOLD_FH, 1},
};

/* Numbers in a file have no sign; these are temperatures and the like, which may be below 0. */
static int32_t signed_number(uint32_t number) {
  return number <= INT32_MAX ? (int32_t)number : -(int32_t)(UINT32_MAX - number) - 1;
}

/* Reports every threshold that the reading is beyond; returns whether there is one. */
static int is_beyond(ruxmeta_section sensor, int32_t reading) {
  int result = 0;
  for (size_t i = 0; i < sizeof thresholds / sizeof *thresholds; ++i) {
    /* A sensor without this entry has no such value: calls can be chained unchecked. */
    const ruxmeta_value limit =
        ruxmeta_entry_value(ruxmeta_find_entry(sensor, thresholds[i].entry), 0);
    if (limit.kind != RUXMETA_NUMBER) continue;
    const int32_t number = signed_number(limit.number);
    if (thresholds[i].is_upper ? reading <= number : reading >= number) continue;
    printf("%s: %" PRId32 " is %s %s (%" PRId32 ")\n", ruxmeta_section_name(sensor).data, reading,
           thresholds[i].is_upper ? "above" : "below", thresholds[i].key, number);
    result = 1;
  }
  return result;
}

static void check_readings(const ruxmeta_model* model, FILE* readings) {
  unsigned int count = 0;
  unsigned int beyond = 0;
  unsigned int unknown = 0;
  char name[256];
  int32_t reading;
  for (; fscanf(readings, "%255s %" SCNd32, name, &reading) == 2; ++count) {
    const ruxmeta_section sensor = ruxmeta_find_section(model, RUXMETA_SECTION_SENSOR, name);
    if (sensor.at == NULL) {
      ++unknown;
    } else if (is_beyond(sensor, reading)) {
      ++beyond;
    }
  }
  printf("readings: %u, beyond a threshold: %u, of unknown sensors: %u\n", count, beyond, unknown);
}

int main(int argc, char** argv) {
  ruxmeta_model* model;
  ruxmeta_fault fault = RUXMETA_FAULT_INIT;
  ruxmeta_status status;
  if (argc != 2) {
    fprintf(stderr, "usage: check_readings_c META <READINGS\n");
    return 2;
  }
  status = ruxmeta_open(argv[1], &model, &fault);
  if (status != RUXMETA_OK) {
    fprintf(stderr, "%s: %s\n", argv[1], *fault.text ? fault.text : ruxmeta_status_text((int)status));
    return 1;
  }
  check_readings(model, stdin);
  ruxmeta_close(model);
  return fflush(stdout) == 0 ? 0 : 1;
}
