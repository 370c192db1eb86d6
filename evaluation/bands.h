// Which limits of a sensor its readings are beyond, as a profile has them.
#ifndef EVALUATION_BANDS_H_
#define EVALUATION_BANDS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "evaluation/change.h"
#include "evaluation/result.h"
#include "profile/profile.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/model/handles.h"

namespace rux::evaluation {

namespace language = ruxcomp::language;

// A limit of a sensor as a number.
struct SensorLimit {
  const language::LimitRow* row;
  ruxcomp::Entry entry;
  Number number;
};

// None for a limit whose sign is not known.
std::optional<Number> NumberOfLimit(const profile::Profile& profile, std::uint32_t stored);

// A limit that a sensor has, whether or not its readings are compared with it.
struct StatedLimit {
  enum class Use { kCompared, kLeftOut, kUnknown };

  const language::LimitRow* row;
  ruxcomp::Entry entry;
  std::optional<Number> number;  // none for one whose sign is not known
  Use use;
  std::string reason = {};  // why it is left out, or why that is not known
};
// From the lowest name up. `change` is tried out, if there is one.
std::vector<StatedLimit> StatedLimitsOf(const profile::Profile& profile,
                                        const ruxcomp::Section& sensor,
                                        const Change* change = nullptr);

// Those that are compared; an unknown one has the reason.
struct SensorLimits {
  std::vector<SensorLimit> limits;
  std::optional<Result> obstacle = {};
};
SensorLimits LimitsOf(const profile::Profile& profile, const ruxcomp::Section& sensor,
                      const Change* change = nullptr);

// How far readings of the sensor have to return past a limit.
Result HysteresisOf(const profile::Profile& profile, const ruxcomp::Section& sensor);

// "FH" of THRESHOLD_FH
std::string BandName(const language::LimitRow& limit);
// Of readings that no limit keeps out; of sensors without limits that count.
inline constexpr char kNormalBand[] = "normal";
inline constexpr char kNoBand[] = "none";

// What readings were beyond, but not yet often enough to count.
struct PendingBand {
  std::vector<SensorLimit> beyond;  // from the lowest name up
  std::uint32_t seen;               // in how many readings in a row
  std::uint32_t needed;             // how many it takes
};

struct Band {
  std::vector<SensorLimit> beyond = {};  // from the lowest name up
  bool has_limits = true;
  std::optional<Result> obstacle = {};  // why it is not known
  std::optional<PendingBand> pending = {};

  // That of the outermost limit: "FH", "WH", "normal", "WL", "FL"; "none" without limits;
  // "unknown" or "error".
  std::string Name() const;
  // "WH", "unknown (...)"
  std::string Text() const;
};

// The band that a sensor is in from reading to reading.
class BandState {
 public:
  // `ipmi`: of a sensor that has a VALUE_IPMI.
  Band Next(const profile::Profile& profile, const ruxcomp::Section& sensor, const Result& value,
            const std::optional<Result>& ipmi, const Change* change);

 private:
  using Limits = std::vector<SensorLimit>;
  // After a reading that is beyond these.
  Band Entered(const profile::Profile& profile, Limits beyond);
  bool WasBeyond(const SensorLimit& limit) const;
  Result IsBeyond(const profile::Profile& profile, const ruxcomp::Section& sensor,
                  const SensorLimit& limit, Number reading) const;

  Limits beyond_;
  Limits candidate_;  // seen, not yet often enough
  std::uint32_t seen_ = 0;
};

}  // namespace rux::evaluation

#endif  // EVALUATION_BANDS_H_
