#include "evaluation/round.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "evaluation/arithmetic.h"
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
constexpr char kDeinit[] = "DEINIT";
constexpr char kEntry[] = "ENTRY";
constexpr char kExit[] = "EXIT";

bool IsSensor(const Target& target) {
  return target.kind->source == language::SECTION_SENSOR && !target.entry;
}

bool IsRepeater(const Target& target) { return target.kind->source == language::SECTION_REPEATER; }

// Those that the sensors are in, each once, the outer ones first.
std::vector<ruxcomp::Section> GroupsOf(const std::vector<ruxcomp::Section>& sensors) {
  std::vector<ruxcomp::Section> groups;
  std::set<std::uint32_t> known;
  for (const ruxcomp::Section& sensor : sensors) {
    std::vector<ruxcomp::Section> path;
    for (ruxcomp::Section group = sensor.parent(); group && known.insert(group.ordinal()).second;
         group = group.parent()) {
      path.push_back(group);
    }
    groups.insert(groups.end(), path.rbegin(), path.rend());
  }
  return groups;
}

}  // namespace

template <class Option>
void Rounds::Hook(const profile::Member<Option>& member, Option when,
                  const ruxcomp::Section& section, const char* name) {
  const ruxcomp::Entry entry = ValueEntry(section, name);
  if (!entry) return;
  if (!member.stated) evaluator_.LeaveOpen(Unstated(member));
  if (member.Is(when)) evaluator_.ValueOf(section, entry);
}

void Rounds::Start(const std::vector<Target>& targets) {
  evaluator_.BeginRound();
  const std::vector<ruxcomp::Section> sensors = SensorsOf(targets);
  const auto hook = [&](const ruxcomp::Section& section) {
    Hook(evaluator_.profile().init_hooks, profile::InitHooks::kAtStart, section, kInit);
  };
  for (const ruxcomp::Section& group : GroupsOf(sensors)) hook(group);
  for (const ruxcomp::Section& sensor : sensors) hook(sensor);
}

void Rounds::Stop(const std::vector<Target>& targets) {
  evaluator_.BeginRound();
  const std::vector<ruxcomp::Section> sensors = SensorsOf(targets);
  const std::vector<ruxcomp::Section> groups = GroupsOf(sensors);
  const auto hook = [&](const ruxcomp::Section& section) {
    Hook(evaluator_.profile().deinit_hooks, profile::DeinitHooks::kAtStop, section, kDeinit);
  };
  for (const ruxcomp::Section& sensor : sensors) hook(sensor);
  std::for_each(groups.rbegin(), groups.rend(), hook);
}

void Rounds::Watch(const std::vector<Target>& targets) {
  std::copy_if(targets.begin(), targets.end(), std::back_inserter(watched_), IsSensor);
}

std::vector<Outcome> Rounds::Next(const std::vector<Target>& targets) {
  evaluator_.BeginRound();
  const std::vector<ruxcomp::Section> sensors = SensorsOf(targets);
  const std::vector<ruxcomp::Section> groups = GroupsOf(sensors);
  const auto hook = [&](const ruxcomp::Section& group, const char* name) {
    Hook(evaluator_.profile().group_hooks, profile::GroupHooks::kAroundRound, group, name);
  };
  for (const ruxcomp::Section& group : groups) hook(group, kEntry);
  std::vector<std::optional<Outcome>> found(targets.size());
  std::set<std::uint32_t> read;
  for (std::size_t i = 0; i < targets.size(); ++i) {
    if (IsRepeater(targets[i])) continue;
    found[i] = OutcomeOf(targets[i]);
    if (IsSensor(targets[i])) read.insert(targets[i].section.ordinal());
  }
  for (const ruxcomp::Section& sensor : sensors) {
    if (read.count(sensor.ordinal()) == 0) Read(sensor);
  }
  std::for_each(groups.rbegin(), groups.rend(),
                [&](const ruxcomp::Section& group) { hook(group, kExit); });
  std::vector<Outcome> outcomes;
  outcomes.reserve(targets.size());
  for (std::size_t i = 0; i < targets.size(); ++i)
    outcomes.push_back(found[i] ? std::move(*found[i]) : OutcomeOf(targets[i]));
  return outcomes;
}

Outcome Rounds::OutcomeOf(const Target& target) {
  if (IsSensor(target)) return Read(target.section);
  if (IsRepeater(target)) return {evaluator_.Repeat(target.section, target.entry)};
  if (!target.entry) return {evaluator_.Call(target.section, target.arguments)};
  return {evaluator_.ValueOf(target.section, target.entry)};
}

Outcome Rounds::Read(const ruxcomp::Section& sensor) {
  const profile::Profile& profile = evaluator_.profile();
  const auto hook = [&](const char* name) {
    Hook(profile.sensor_hooks, profile::SensorHooks::kAroundReading, sensor, name);
  };
  hook(kEntry);
  const ruxcomp::Entry entry = ValueEntry(sensor, kPlainValue);
  const ruxcomp::Entry ipmi = ValueEntry(sensor, kIpmi);
  Outcome outcome{Result::Nothing("the sensor has no VALUE")};
  const auto read_ipmi = [&](profile::IpmiValues when) {
    if (ipmi && profile.ipmi_values.Is(when)) outcome.ipmi = evaluator_.ValueOf(sensor, ipmi);
  };
  read_ipmi(profile::IpmiValues::kBeforeValue);
  if (entry) outcome.value = evaluator_.ValueOf(sensor, entry);
  read_ipmi(profile::IpmiValues::kAfterValue);
  if (ipmi && !profile.ipmi_values.stated)
    outcome.ipmi = evaluator_.LeaveOpen(Unstated(profile.ipmi_values));
  hook(kExit);
  UseTheory(sensor, outcome.value);
  std::optional<Result> compared = outcome.ipmi;
  if (ipmi && !compared) compared = Result::Unknown("VALUE_IPMI is evaluated on request");
  outcome.band =
      bands_[sensor.ordinal()].Next(profile, sensor, outcome.value, compared, evaluator_.change());
  return outcome;
}

void Rounds::UseTheory(const ruxcomp::Section& sensor, Result& value) {
  const ruxcomp::Entry theory = sensor.entry(RUX_ENTRY_THEORY);
  const bool is_used = evaluator_.profile().theory.Is(profile::Theory::kMissingReading);
  if (!is_used || !theory || !value.LacksReading()) return;
  value = evaluator_.arithmetic().Stored(theory.value().number());
  evaluator_.Give(sensor, theory, value);
}

std::vector<ruxcomp::Section> Rounds::SensorsOf(const std::vector<Target>& targets) const {
  std::vector<ruxcomp::Section> sensors;
  std::set<std::uint32_t> known;
  for (const std::vector<Target>* each : {&targets, &watched_}) {
    for (const Target& target : *each) {
      if (IsSensor(target) && known.insert(target.section.ordinal()).second)
        sensors.push_back(target.section);
    }
  }
  return sensors;
}

}  // namespace rux::evaluation
