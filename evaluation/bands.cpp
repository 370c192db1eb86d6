#include "evaluation/bands.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "evaluation/arithmetic.h"
#include "evaluation/change.h"
#include "evaluation/result.h"
#include "evaluation/target.h"
#include "profile/choices.h"
#include "profile/profile.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/limits.h"
#include "ruxcomp/language/number.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/records.h"

namespace rux::evaluation {
namespace {

bool IsHigh(const SensorLimit& limit) { return limit.row->side == language::LimitSide::kMost; }

bool AreSame(const std::vector<SensorLimit>& a, const std::vector<SensorLimit>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const SensorLimit& x, const SensorLimit& y) { return x.row == y.row; });
}

// Whether CONTROLMASK lets the limit count: 1 or 0.
Result IsEnabled(const profile::Profile& profile, const ruxcomp::Section& sensor,
                 language::EntryId limit) {
  if (!profile.control_mask.stated) return Unstated(profile.control_mask);
  if (profile.control_mask.Is(profile::ControlMask::kIgnored)) return Result::Of(1);
  if (!profile.control_mask_bits.stated) return Unstated(profile.control_mask_bits);
  const std::vector<language::EntryId>& bits = *profile.control_mask_bits.stated;
  const auto bit = std::find(bits.begin(), bits.end(), limit);
  constexpr std::ptrdiff_t kWordBits = 32;
  const std::ptrdiff_t place = bit - bits.begin();
  const std::uint32_t mask = sensor.entry(RUX_ENTRY_CONTROLMASK).value().number();
  const bool is_set = bit != bits.end() && place < kWordBits && (mask >> place & 1U) != 0;
  return Result::Of(is_set == profile.control_mask.Is(profile::ControlMask::kEnables) ? 1 : 0);
}

// Whether limits of the sensor count at all.
Result IsWatched(const profile::Profile& profile, const ruxcomp::Section& sensor) {
  if (!profile.watched_initflags.stated) return Unstated(profile.watched_initflags);
  const std::vector<std::uint32_t>& watched = *profile.watched_initflags.stated;
  const std::uint32_t flag = sensor.entry(RUX_ENTRY_INITFLAG).value().number();
  return Result::Of(std::count(watched.begin(), watched.end(), flag) > 0 ? 1 : 0);
}

// Whether readings are compared with the limit; without its number.
StatedLimit UseOf(const profile::Profile& profile, const ruxcomp::Section& sensor,
                  const language::LimitRow& row, const ruxcomp::Entry& entry) {
  using Use = StatedLimit::Use;
  StatedLimit limit{&row, entry, std::nullopt, Use::kCompared};
  const auto use = [&](const Result& counts, const auto& reason) {
    if (!counts.IsNumber()) {
      limit.use = Use::kUnknown;
      limit.reason = counts.reason();
    } else if (counts.number() == 0) {
      limit.use = Use::kLeftOut;
      limit.reason = reason();
    }
  };
  use(IsWatched(profile, sensor), [&] {
    return fmt::format("INITFLAG {} is not in {}",
                       sensor.entry(RUX_ENTRY_INITFLAG).value().number(),
                       profile.watched_initflags.key);
  });
  if (limit.use != Use::kCompared) return limit;
  use(IsEnabled(profile, sensor, row.entry), [&] {
    return fmt::format("CONTROLMASK 0x{:X} leaves it out",
                       sensor.entry(RUX_ENTRY_CONTROLMASK).value().number());
  });
  return limit;
}

}  // namespace

Result HysteresisOf(const profile::Profile& profile, const ruxcomp::Section& sensor) {
  if (profile.hysteresis_property.stated) {
    const std::string_view text = PropertyOf(sensor, *profile.hysteresis_property.stated);
    const language::Number number = language::ReadNumber(text);
    if (!text.empty() && number.is_number && !number.has_rest) return Result::Of(number.value);
    if (!text.empty()) return Result::Error("the hysteresis of the sensor is not a number");
  }
  if (!profile.hysteresis.stated) return Unstated(profile.hysteresis);
  return Result::Of(*profile.hysteresis.stated);
}

std::string BandName(const language::LimitRow& limit) {
  const std::string_view keyword = language::KeywordOf(limit.entry);
  return std::string(keyword.substr(keyword.find('_') + 1));
}

std::optional<Number> NumberOfLimit(const profile::Profile& profile, std::uint32_t stored) {
  const auto with_sign = static_cast<std::int32_t>(stored);
  if (with_sign >= 0) return stored;
  if (!profile.limit_sign.stated) return std::nullopt;
  return profile.limit_sign.Is(profile::LimitSign::kSigned) ? Number{with_sign} : Number{stored};
}

std::vector<StatedLimit> StatedLimitsOf(const profile::Profile& profile,
                                        const ruxcomp::Section& sensor, const Change* change) {
  std::vector<StatedLimit> found;
  for (const language::EntryId id : language::kLimitsUpwards) {
    const language::LimitRow* row = language::FindLimit(id);
    if (row == nullptr) continue;
    const ruxcomp::Entry entry = sensor.entry(language::FindEntryRow(id)->compiled);
    if (!entry || entry.value().kind() != RUX_DATA_NUMBER) continue;
    StatedLimit limit = UseOf(profile, sensor, *row, entry);
    const Change* changed = Change::At(change, sensor, entry);
    limit.number =
        NumberOfLimit(profile, entry.value().number() + (changed == nullptr ? 0 : changed->number));
    if (!limit.number && limit.use == StatedLimit::Use::kCompared) {
      limit.use = StatedLimit::Use::kUnknown;
      limit.reason = Unstated(profile.limit_sign).reason();
    }
    found.push_back(std::move(limit));
  }
  return found;
}

SensorLimits LimitsOf(const profile::Profile& profile, const ruxcomp::Section& sensor,
                      const Change* change) {
  SensorLimits found;
  for (const StatedLimit& limit : StatedLimitsOf(profile, sensor, change)) {
    if (limit.use == StatedLimit::Use::kCompared) {
      found.limits.push_back({limit.row, limit.entry, *limit.number});
    } else if (limit.use == StatedLimit::Use::kUnknown) {
      found.obstacle = Result::Unknown(limit.reason);
    }
  }
  return found;
}

std::string Band::Name() const {
  if (obstacle) return NameOf(obstacle->kind());
  if (!has_limits) return kNoBand;
  if (beyond.empty()) return kNormalBand;
  return BandName(*(IsHigh(beyond.back()) ? beyond.back() : beyond.front()).row);
}

std::string Band::Text() const { return obstacle ? obstacle->Text() : Name(); }

bool BandState::WasBeyond(const SensorLimit& limit) const {
  return std::any_of(beyond_.begin(), beyond_.end(),
                     [&](const SensorLimit& each) { return each.row == limit.row; });
}

Result BandState::IsBeyond(const profile::Profile& profile, const ruxcomp::Section& sensor,
                           const SensorLimit& limit, Number reading) const {
  const bool is_high = IsHigh(limit);
  const auto beyond = [&](Number number) -> Result {
    if (reading != number) return Result::Of((reading > number) == is_high ? 1 : 0);
    if (is_high && !profile.high_limit.stated) return Unstated(profile.high_limit);
    if (!is_high && !profile.low_limit.stated) return Unstated(profile.low_limit);
    const bool keeps_out = is_high ? profile.high_limit.Is(profile::HighLimit::kAtOrAbove)
                                   : profile.low_limit.Is(profile::LowLimit::kAtOrBelow);
    return Result::Of(keeps_out ? 1 : 0);
  };
  Result now = beyond(limit.number);
  if (!now.IsNumber() || now.number() != 0 || !WasBeyond(limit)) return now;
  Result hysteresis = HysteresisOf(profile, sensor);
  if (!hysteresis.IsNumber()) return hysteresis;
  return beyond(is_high ? limit.number - hysteresis.number() : limit.number + hysteresis.number());
}

Band BandState::Next(const profile::Profile& profile, const ruxcomp::Section& sensor,
                     const Result& value, const std::optional<Result>& ipmi, const Change* change) {
  const SensorLimits all = LimitsOf(profile, sensor, change);
  // Without a reading, those before it and after it are not in a row.
  const std::uint32_t seen = std::exchange(seen_, 0);
  if (all.obstacle) return {{}, true, all.obstacle};
  if (all.limits.empty()) return {{}, false};
  if (ipmi && !profile.limit_value.stated) return {{}, true, Unstated(profile.limit_value)};
  std::vector<Result> compared;
  if (!ipmi || !profile.limit_value.Is(profile::LimitValue::kValueIpmi)) compared.push_back(value);
  if (ipmi && !profile.limit_value.Is(profile::LimitValue::kValue)) compared.push_back(*ipmi);
  Limits beyond;
  for (const SensorLimit& limit : all.limits) {
    bool is_beyond = false;
    for (const Result& reading : compared) {
      if (!reading.IsNumber()) return {{}, true, reading};
      const Result one = IsBeyond(profile, sensor, limit, reading.number());
      if (!one.IsNumber()) return {{}, true, one};
      is_beyond = is_beyond || one.number() != 0;
    }
    if (is_beyond) beyond.push_back(limit);
  }
  seen_ = seen;
  return Entered(profile, std::move(beyond));
}

Band BandState::Entered(const profile::Profile& profile, Limits beyond) {
  const bool is_same = AreSame(beyond, beyond_);
  if (is_same || !profile.debounce.stated) {
    seen_ = 0;
    if (is_same) return {beyond_};
    return {{}, true, Unstated(profile.debounce)};
  }
  seen_ = seen_ > 0 && AreSame(beyond, candidate_) ? seen_ + 1 : 1;
  candidate_ = std::move(beyond);
  const std::uint32_t needed = *profile.debounce.stated;
  if (seen_ < needed) return {beyond_, true, std::nullopt, PendingBand{candidate_, seen_, needed}};
  seen_ = 0;
  beyond_ = candidate_;
  return {beyond_};
}

}  // namespace rux::evaluation
