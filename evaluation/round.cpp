#include "evaluation/round.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "evaluation/evaluator.h"
#include "evaluation/result.h"
#include "evaluation/target.h"
#include "profile/choices.h"
#include "profile/profile.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"

namespace rux::evaluation {
namespace {

// Fixed names of values.
constexpr char kPlainValue[] = "";
constexpr char kIpmi[] = "IPMI";
constexpr char kInit[] = "INIT";
constexpr char kEntry[] = "ENTRY";
constexpr char kExit[] = "EXIT";

bool IsSensor(const Target& target) {
  return target.kind->source == language::SECTION_SENSOR && !target.entry;
}

}  // namespace

void Rounds::Start(const std::vector<Target>& targets) {
  evaluator_.BeginRound();
  if (!evaluator_.profile().init_hooks.Is(profile::InitHooks::kAtStart)) return;
  for (const ruxcomp::Section& group : GroupsOf(targets)) Hook(group, kInit);
  for (const Target& target : targets) {
    if (IsSensor(target)) Hook(target.section, kInit);
  }
}

std::vector<Outcome> Rounds::Next(const std::vector<Target>& targets) {
  evaluator_.BeginRound();
  const profile::Profile& profile = evaluator_.profile();
  const std::vector<ruxcomp::Section> groups = GroupsOf(targets);
  const bool has_groups = profile.group_hooks.Is(profile::GroupHooks::kAroundRound);
  if (has_groups) {
    for (const ruxcomp::Section& group : groups) Hook(group, kEntry);
  }
  std::vector<Outcome> outcomes;
  outcomes.reserve(targets.size());
  for (const Target& target : targets) outcomes.push_back(OutcomeOf(target));
  if (has_groups) {
    std::for_each(groups.rbegin(), groups.rend(),
                  [&](const ruxcomp::Section& group) { Hook(group, kExit); });
  }
  return outcomes;
}

Outcome Rounds::OutcomeOf(const Target& target) {
  if (IsSensor(target)) return Read(target.section);
  if (target.kind->source == language::SECTION_REPEATER)
    return {evaluator_.Repeat(target.section, target.entry)};
  if (!target.entry) return {evaluator_.Call(target.section, target.arguments)};
  return {evaluator_.ValueOf(target.section, target.entry)};
}

Outcome Rounds::Read(const ruxcomp::Section& sensor) {
  const profile::Profile& profile = evaluator_.profile();
  const bool has_hooks = profile.sensor_hooks.Is(profile::SensorHooks::kAroundReading);
  if (has_hooks) Hook(sensor, kEntry);
  const ruxcomp::Entry entry = ValueEntry(sensor, kPlainValue);
  Outcome outcome{entry ? evaluator_.ValueOf(sensor, entry)
                        : Result::Unknown("the sensor has no VALUE")};
  if (const ruxcomp::Entry ipmi = ValueEntry(sensor, kIpmi))
    outcome.ipmi = evaluator_.ValueOf(sensor, ipmi);
  if (has_hooks) Hook(sensor, kExit);
  const bool is_missing = outcome.value.kind() == Result::Kind::kUnknown;
  const ruxcomp::Value theory = sensor.entry(RUX_ENTRY_THEORY).value();
  if (is_missing && theory && profile.theory.Is(profile::Theory::kMissingReading))
    outcome.value = evaluator_.arithmetic().Stored(theory.number());
  outcome.band = bands_[sensor.ordinal()].Next(profile, sensor, outcome.value, outcome.ipmi,
                                               evaluator_.change());
  return outcome;
}

void Rounds::Hook(const ruxcomp::Section& section, const char* name) {
  if (const ruxcomp::Entry entry = ValueEntry(section, name)) evaluator_.ValueOf(section, entry);
}

// Those that the sensors are in, each once, the outer ones first.
std::vector<ruxcomp::Section> Rounds::GroupsOf(const std::vector<Target>& targets) const {
  std::vector<ruxcomp::Section> groups;
  std::set<std::uint32_t> known;
  for (const Target& target : targets) {
    if (!IsSensor(target)) continue;
    std::vector<ruxcomp::Section> path;
    for (ruxcomp::Section group = target.section.parent();
         group && known.insert(group.ordinal()).second; group = group.parent()) {
      path.push_back(group);
    }
    groups.insert(groups.end(), path.rbegin(), path.rend());
  }
  return groups;
}

}  // namespace rux::evaluation
