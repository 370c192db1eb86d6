// When a reading is beyond a limit: the convention of one firmware, that of the example server.
// examples/server/profile.json states the same for rux eval. A monitor for another firmware has
// another limits.cpp.
#ifndef MONITOR_LIMITS_H_
#define MONITOR_LIMITS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "ruxcomp/identifiers.h"
#include "ruxcomp/model/handles.h"

namespace monitor {

struct Convention {
  std::uint32_t watched_initflag = 3;  // the INITFLAG with which limits count
  std::int64_t hysteresis = 0;         // how far readings have to return past a limit
  std::uint32_t debounce = 1;          // how many readings in a row it takes to change the band
};
inline constexpr Convention kExampleFirmware;

struct LimitKind {
  std::string_view band;  // in which a reading is that is beyond this limit and no outer one
  std::uint32_t entry;
  bool is_high;
};
inline constexpr std::array<LimitKind, 4> kLimitKinds = {{{"FL", RUX_ENTRY_THRESHOLD_FL, false},
                                                          {"WL", RUX_ENTRY_THRESHOLD_WL, false},
                                                          {"WH", RUX_ENTRY_THRESHOLD_WH, true},
                                                          {"FH", RUX_ENTRY_THRESHOLD_FH, true}}};

// Those that a sensor has, in the order of kLimitKinds.
using Limits = std::array<std::optional<std::int32_t>, kLimitKinds.size()>;
Limits LimitsOf(const ruxcomp::Section& sensor);

// The band that a sensor is in, from reading to reading.
class Band {
 public:
  void Next(const Limits& limits, std::int64_t reading, const Convention& convention);
  // A reading is missing: those before it and after it are not in a row.
  void Skip() { seen_ = 0; }

  // The place in kLimitKinds of the outermost limit that the sensor is beyond; none: normal.
  std::optional<std::size_t> beyond() const;

 private:
  std::uint32_t beyond_ = 0;  // a bit for each of kLimitKinds
  std::uint32_t candidate_ = 0;
  std::uint32_t seen_ = 0;
};

}  // namespace monitor

#endif  // MONITOR_LIMITS_H_
