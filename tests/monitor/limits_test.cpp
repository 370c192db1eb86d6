// The bands of the example monitor are those that rux eval has under the profile of the example
// machine, and for any hysteresis and debounce.
#include "examples/monitor/limits.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "evaluation/bands.h"
#include "evaluation/result.h"
#include "machine/load.h"
#include "machine/machine.h"
#include "profile/profile.h"

namespace {

rux::profile::Profile ExampleProfile() {
  return rux::profile::ReadProfile(RUX_EXAMPLES "/server/profile.json");
}

std::string NameOf(const monitor::Band& band) {
  const std::optional<std::size_t> limit = band.beyond();
  return std::string(limit ? monitor::kLimitKinds[*limit].band : "normal");
}

// Readings that move around the limits of the sensor, one step at a time or far.
class Walk {
 public:
  Walk(const monitor::Limits& limits, std::mt19937& random) : random_(random) {
    for (const std::optional<std::int32_t>& limit : limits) {
      if (limit) limits_.push_back(*limit);
    }
  }

  std::int64_t Next() {
    const auto below = [&](std::size_t bound) { return random_() % bound; };
    if (below(3) == 0) reading_ = limits_[below(limits_.size())];
    return reading_ += static_cast<std::int64_t>(below(9)) - 4;
  }

 private:
  std::mt19937& random_;
  std::vector<std::int64_t> limits_;
  std::int64_t reading_ = 0;
};

// Returns how often the band changed.
std::size_t Compare(const ruxcomp::Section& sensor, std::uint32_t seed) {
  std::mt19937 random(seed);
  monitor::Convention convention;
  convention.hysteresis = static_cast<std::int64_t>(random() % 4);
  convention.debounce = static_cast<std::uint32_t>(1 + random() % 3);
  rux::profile::Profile profile = ExampleProfile();
  profile.hysteresis.stated = static_cast<std::uint32_t>(convention.hysteresis);
  profile.debounce.stated = convention.debounce;

  const monitor::Limits limits = monitor::LimitsOf(sensor);
  Walk walk(limits, random);
  monitor::Band band;
  rux::evaluation::BandState state;
  std::size_t changes = 0;
  for (int i = 0; i < 100; ++i) {
    if (random() % 8 == 0) {
      band.Skip();
      state.Next(profile, sensor, rux::evaluation::Result::Unknown("it is missing"), std::nullopt,
                 nullptr);
    }
    const std::int64_t reading = walk.Next();
    const std::string before = NameOf(band);
    band.Next(limits, reading, convention);
    const auto expected =
        state.Next(profile, sensor, rux::evaluation::Result::Of(reading), std::nullopt, nullptr);
    EXPECT_EQ(NameOf(band), expected.Name())
        << sensor.name() << " at " << reading << ", reading " << i << ", seed " << seed;
    if (NameOf(band) != before) ++changes;
  }
  return changes;
}

TEST(MonitorLimits, AreThoseOfTheProfile) {
  const rux::profile::Profile profile = ExampleProfile();
  EXPECT_EQ(*profile.hysteresis.stated, monitor::kExampleFirmware.hysteresis);
  EXPECT_EQ(*profile.debounce.stated, monitor::kExampleFirmware.debounce);
  EXPECT_EQ(*profile.watched_initflags.stated,
            std::vector<std::uint32_t>{monitor::kExampleFirmware.watched_initflag});
  EXPECT_TRUE(profile.limit_sign.Is(rux::profile::LimitSign::kSigned));
  EXPECT_TRUE(profile.high_limit.Is(rux::profile::HighLimit::kAbove));
  EXPECT_TRUE(profile.low_limit.Is(rux::profile::LowLimit::kBelow));
  EXPECT_TRUE(profile.control_mask.Is(rux::profile::ControlMask::kIgnored));
  EXPECT_FALSE(profile.hysteresis_property.stated);
}

TEST(MonitorLimits, GiveTheBandsOfEval) {
  const rux::machine::Machine machine =
      std::move(rux::machine::Load({RUX_EXAMPLES "/server/server.rux"}, {}).front());
  std::size_t changes = 0;
  std::uint32_t seed = 0;
  for (const ruxcomp::Section sensor : machine.model().sections(RUX_SECT_SENSOR)) {
    const std::uint32_t flag = sensor.entry(RUX_ENTRY_INITFLAG).value().number();
    if (flag != monitor::kExampleFirmware.watched_initflag) continue;
    for (const std::optional<std::int32_t>& limit : monitor::LimitsOf(sensor)) {
      if (!limit) continue;
      changes += Compare(sensor, ++seed);
      break;
    }
  }
  EXPECT_GT(changes, 1000U);
}

}  // namespace
