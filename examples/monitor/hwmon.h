// What Linux knows of the sensors of a computer: hwmon, a folder for each chip below
// /sys/class/hwmon, and in it a file for each input.
#ifndef MONITOR_HWMON_H_
#define MONITOR_HWMON_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace monitor {

struct Chip {
  std::string name;    // "it8720-isa-0a30": driver, bus, place on the bus, as in sensors.conf(5)
  std::string folder;  // "/sys/class/hwmon/hwmon2"
};

// The chips below ROOT/sys/class/hwmon, in the order of their folders. None where that folder
// cannot be read.
std::vector<Chip> FindChips(const std::string& root);

// The first chip that fits one of the patterns, "it8720-isa-0a30 it8720-*"; null if none does.
const Chip* ChipFor(const std::vector<Chip>& chips, std::string_view patterns);

// A kind of input. The kernel gives whole numbers in a fraction of the unit.
struct InputKind {
  std::string_view feature;  // before the number: "temp" of temp1
  double per_unit;
  std::string_view unit;
};

// That of a feature, "temp1"; null for features that have no such input.
const InputKind* KindOf(std::string_view feature);

// The number in the file of an input. None with the reason when there is none: chips go away, and
// some inputs cannot be read at times.
std::optional<std::int64_t> ReadInput(const std::string& path, std::string& reason);

}  // namespace monitor

#endif  // MONITOR_HWMON_H_
