// The sensors of a meta file, each with the input of the kernel that it reads.
//
// Properties say which one: P_FEATURE of a sensor is "temp1", P_DEVICE the device whose P_CHIP is
// "it8720-isa-0a30" or a pattern such as "it8720-*". P_FACTOR and P_OFFSET make the amount of what
// the chip reads, P_UNIT and P_DIVISOR say what the limits are numbers of. rux import lm-sensors
// writes all of these.
#ifndef MONITOR_MACHINE_H_
#define MONITOR_MACHINE_H_

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hwmon.h"
#include "limits.h"

namespace monitor {

// The number that limits are compared with: number * times / over + plus.
struct Scale {
  double times = 1;
  double over = 1;
  double plus = 0;
};

struct Sensor {
  std::string name;
  std::string unit;  // of the number divided by the divisor; may be empty
  double divisor = 1;
  std::string patterns;  // of its chip
  std::string feature;
  Scale scale;
  Limits limits;
  bool is_watched = false;  // limits count

  std::string path = {};  // of its input; empty while no chip fits
  std::optional<std::int64_t> reading = {};
  bool is_missing = false;  // had no reading, which is reported once
  Band band = {};

  // "FL", "WL", "normal", "WH", "FH"; "unknown" without a reading, "none" without limits that
  // count.
  std::string_view BandName() const;
};

struct Options {
  std::string root;
  bool watch_all = false;  // limits count whatever the INITFLAG is
};

class Machine {
 public:
  explicit Machine(Options options) : options_(std::move(options)) {}

  // Takes over what the meta file says, and keeps the bands that sensors of the same names are in.
  // A file that is not sound changes nothing; the reason goes to the journal.
  bool Load(const std::string& meta);

  // Reads every input once, and reports what has changed.
  void ReadAll();

  const std::vector<Sensor>& sensors() const { return sensors_; }
  // RUXLOOP, at least 10 ms; a second where it is 0.
  std::chrono::milliseconds interval() const { return interval_; }

 private:
  void FindInputs();

  Options options_;
  std::vector<Sensor> sensors_;
  std::chrono::milliseconds interval_{1000};
};

}  // namespace monitor

#endif  // MONITOR_MACHINE_H_
