#include "limits.h"

#include <cstddef>
#include <cstdint>
#include <optional>

#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"

namespace monitor {

Limits LimitsOf(const ruxcomp::Section& sensor) {
  Limits limits;
  for (std::size_t i = 0; i < limits.size(); ++i) {
    const ruxcomp::Value limit = sensor.entry(kLimitKinds[i].entry).value();
    // Files have no sign; this firmware's limits have one.
    if (limit.kind() == RUX_DATA_NUMBER) limits[i] = limit.signed_number();
  }
  return limits;
}

void Band::Next(const Limits& limits, std::int64_t reading, const Convention& convention) {
  std::uint32_t now = 0;
  for (std::size_t i = 0; i < limits.size(); ++i) {
    if (!limits[i]) continue;
    const std::uint32_t bit = 1U << i;
    const std::int64_t back = (beyond_ & bit) != 0 ? convention.hysteresis : 0;
    // A reading equal to a limit is in range.
    const bool is_beyond =
        kLimitKinds[i].is_high ? reading > *limits[i] - back : reading < *limits[i] + back;
    if (is_beyond) now |= bit;
  }
  if (now == beyond_) {
    seen_ = 0;
    return;
  }
  seen_ = seen_ > 0 && now == candidate_ ? seen_ + 1 : 1;
  candidate_ = now;
  if (seen_ < convention.debounce) return;
  seen_ = 0;
  beyond_ = now;
}

std::optional<std::size_t> Band::beyond() const {
  constexpr std::size_t kOutermostFirst[] = {3, 2, 0, 1};
  for (const std::size_t i : kOutermostFirst) {
    if ((beyond_ & 1U << i) != 0) return i;
  }
  return std::nullopt;
}

}  // namespace monitor
