// Compares readings of sensors, "NAME NUMBER" a line, with the thresholds of a meta file:
//
//   $ printf 'CPU0_TEMP 104\nCPU1_TEMP 60\nCPU9_TEMP 60\n' | check_readings server.meta
//   CPU0_TEMP: 104 is above THRESHOLD_WH (92)
//   CPU0_TEMP: 104 is above THRESHOLD_FH (100)
//   readings: 3, beyond a threshold: 1, of unknown sensors: 1
//
// What a daemon does all day: look a sensor up and read some of its values. The read model does
// that in some ten nanoseconds. It is made once, of a file that is sound, and is header-only: this
// program needs no library.
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <optional>
#include <string>

#include "ruxcomp/model.h"

namespace {

struct Threshold {
  const char* key;
  std::uint32_t entry;
  bool is_upper;
};

constexpr Threshold kThresholds[] = {
    {"THRESHOLD_FL", RUX_ENTRY_THRESHOLD_FL, false},
    {"THRESHOLD_WL", RUX_ENTRY_THRESHOLD_WL, false},
    {"THRESHOLD_WH", RUX_ENTRY_THRESHOLD_WH, true},
    {"THRESHOLD_FH", RUX_ENTRY_THRESHOLD_FH, true},
};

// Reports every threshold that the reading is beyond; returns whether there is one.
bool IsBeyond(const ruxcomp::Section sensor, std::int32_t reading) {
  bool is_beyond = false;
  for (const Threshold& threshold : kThresholds) {
    // A sensor without this entry has a null value: no need to ask at every step.
    const ruxcomp::Value limit = sensor.entry(threshold.entry).value();
    if (!limit) continue;
    // Numbers in a file have no sign; these are temperatures and the like, which may be below 0.
    const std::int32_t number = limit.signed_number();
    if (threshold.is_upper ? reading <= number : reading >= number) continue;
    std::printf("%s: %d is %s %s (%d)\n", sensor.name().data(), reading,
                threshold.is_upper ? "above" : "below", threshold.key, number);
    is_beyond = true;
  }
  return is_beyond;
}

void CheckReadings(const ruxcomp::Model& model, std::istream& readings) {
  unsigned int count = 0;
  unsigned int beyond = 0;
  unsigned int unknown = 0;
  std::string name;
  for (std::int32_t reading = 0; readings >> name >> reading; ++count) {
    const ruxcomp::Section sensor = model.section_named(RUX_SECT_SENSOR, name);
    if (!sensor) {
      ++unknown;
    } else if (IsBeyond(sensor, reading)) {
      ++beyond;
    }
  }
  std::printf("readings: %u, beyond a threshold: %u, of unknown sensors: %u\n", count, beyond,
              unknown);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: check_readings META <READINGS\n");
    return 2;
  }
  ruxcomp::Fault fault;
  const std::optional<ruxcomp::Model> model = ruxcomp::Model::Open(argv[1], &fault);
  if (!model) {
    std::fprintf(stderr, "%s: %s\n", argv[1], ruxcomp::FaultText(fault).c_str());
    return 1;
  }
  CheckReadings(*model, std::cin);
  return std::fflush(stdout) == 0 ? 0 : 1;
}
