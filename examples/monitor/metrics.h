// Readings and bands in the text format of Prometheus, for the text file collector of its node
// exporter. The numbers are those of the meta file, as in what rux export prometheus writes: its
// series rux_sensor_limit has the limits, and its rules compare both.
#ifndef MONITOR_METRICS_H_
#define MONITOR_METRICS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "machine.h"

namespace monitor {

struct Counters {
  std::uint64_t cycles = 0;
  std::uint64_t missed = 0;   // began too late and were left out
  std::uint64_t refused = 0;  // meta files that were not loaded
};

std::string MetricsText(const std::vector<Sensor>& sensors, const Counters& counters);

// Puts a file in place whole: who reads it meanwhile sees the one before. Returns the reason if
// that fails, or an empty text.
std::string WriteWhole(const std::string& path, const std::string& text);

}  // namespace monitor

#endif  // MONITOR_METRICS_H_
