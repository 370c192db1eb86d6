#include "cases/case_run.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cases/binding.h"
#include "cases/case.h"
#include "cases/coverage.h"
#include "cases/run.h"
#include "cases/watch.h"
#include "evaluation/bands.h"
#include "evaluation/change.h"
#include "evaluation/evaluator.h"
#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "evaluation/round.h"
#include "evaluation/target.h"
#include "evaluation/trace.h"
#include "machine/machine.h"
#include "machine/place.h"
#include "machine/value.h"
#include "profile/choices.h"
#include "profile/profile.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"

namespace rux::cases {
namespace {

// The most rounds of the machine that a step of a case takes.
constexpr std::uint64_t kMostRounds = 10000;
constexpr char kIpmiName[] = "IPMI";

std::string Joined(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : ", ") + text;
  return all.empty() ? "none" : all;
}

std::string TextOf(const GivenReading& reading) {
  std::vector<std::string> numbers;
  for (const evaluation::Number number : reading.sequence)
    numbers.push_back(evaluation::TextOf(number));
  return fmt::format("reading {} = {}", reading.key, Joined(numbers));
}

std::string PathOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
  return evaluation::Target{ruxcomp::language::FindCompiledKind(section.kind()), section, entry}
      .Path();
}

}  // namespace

std::string Difference::Text() const {
  return fmt::format("{}{}expected {} {}{} found {}", path, path.empty() ? "" : ": ", what,
                     expected, path.empty() ? ";" : ",", found);
}

CaseRun::CaseRun(const Bench& bench, const Case& source, Coverage& coverage,
                 const evaluation::Change* change)
    : bench_(bench),
      source_(source),
      coverage_(coverage),
      evaluator_(bench.plan, bench.profile, readings_),
      rounds_(evaluator_) {
  evaluator_.AddObserver(coverage);
  evaluator_.AddObserver(effects_);
  evaluator_.AddObserver(watch_);
  evaluator_.Try(change);
}

CaseResult CaseRun::Run() {
  const std::vector<BoundRound> rounds = Bind(machine(), evaluator_.arithmetic(), source_);
  // A sensor that a later round asks for has its band from the readings of those before.
  for (const BoundRound& bound : rounds) rounds_.Watch(bound.targets);
  for (const BoundRound& bound : rounds) RunRound(bound);
  CaseResult result{&source_, std::move(mismatches_), {}};
  for (const BoundRound& bound : rounds) {
    for (const BoundReading& reading : bound.readings) {
      const bool is_given = !reading.given->sequence.empty();
      if (is_given && !watch_.Used(reading.key)) result.unused.push_back(reading.given);
    }
  }
  return result;
}

void CaseRun::RunRound(const BoundRound& bound) {
  const CaseRound& round = *bound.round;
  for (const BoundReading& reading : bound.readings) {
    readings_.Set(reading.key, reading.given->sequence);
    given_[reading.key] = {given_count_++, reading.given};
  }
  effects_ = evaluation::Effects();
  watch_.BeginRound();
  used_.reset();
  if (source_.starts && &round == &source_.rounds.front()) rounds_.Start(bound.targets);
  const std::optional<std::uint32_t> times = TimesOf(round);
  if (!times) return;
  std::vector<Outcome> outcomes;
  for (std::uint32_t i = 0; i < *times; ++i) {
    if (i > 0) {
      effects_ = evaluation::Effects();
      watch_.BeginMachineRound();
    }
    outcomes = rounds_.Next(bound.targets);
  }
  for (std::size_t i = 0; i < bound.targets.size(); ++i)
    Compare(round.expected[i], bound.targets[i], outcomes[i]);
  CompareEffects(round);
}

std::optional<std::uint32_t> CaseRun::TimesOf(const CaseRound& round) {
  if (!round.after) return 1;
  const auto& unit = bench_.profile.ruxloop_milliseconds;
  const ruxcomp::Sections systems = machine().model().sections(RUX_SECT_SYSTEM);
  const std::uint32_t loop =
      systems.empty() ? 0 : systems[0].entry(RUX_ENTRY_RUXLOOP).value().number();
  const std::uint64_t period = std::uint64_t{unit.stated.value_or(0)} * loop;
  if (period == 0) {
    mismatches_.push_back({round.line, unit.stated ? "after needs a RUXLOOP that is not 0"
                                                   : "after needs a profile that states "
                                                     "ruxloop_milliseconds"});
    return std::nullopt;
  }
  if (*round.after % period != 0) {
    mismatches_.push_back({round.line, fmt::format("after {} ms is between two rounds of {} ms",
                                                   *round.after, period)});
    return std::nullopt;
  }
  const std::uint64_t times = *round.after / period;
  if (times > kMostRounds) {
    mismatches_.push_back(
        {round.line, fmt::format("after {} ms is more than {} rounds", *round.after, kMostRounds)});
    return std::nullopt;
  }
  return static_cast<std::uint32_t>(times);
}

void CaseRun::Compare(const Expectation& expected, const Target& target, const Outcome& outcome) {
  if (expected.value && !expected.value->Fits(outcome.value)) {
    Add(expected.line, {expected.path, "value", expected.value->Text(), outcome.value.Text()},
        {ValueRemark(target, "", "")});
  }
  if (expected.ipmi && (!outcome.ipmi || !expected.ipmi->Fits(*outcome.ipmi))) {
    Add(expected.line,
        {expected.path, "VALUE_IPMI", expected.ipmi->Text(),
         outcome.ipmi ? outcome.ipmi->Text() : "none"},
        {ValueRemark(target, kIpmiName, "")});
  }
  if (!expected.band || !outcome.band) return;
  coverage_.AddBand(bench_.profile, target.section, *outcome.band);
  const std::string found = outcome.band->Name();
  if (found == *expected.band) return;
  Add(expected.line, {expected.path, "band", *expected.band, outcome.band->Text()},
      LimitRemarks(target, outcome, {*expected.band, found}));
}

std::optional<machine::Place> CaseRun::PlaceOf(const ruxcomp::Section& section,
                                               const ruxcomp::Entry& entry) const {
  const std::lock_guard<std::mutex> lock(bench_.places);
  return evaluation::PlaceOf(machine(), section, entry);
}

Remark CaseRun::ValueRemark(const Target& target, const char* name, const std::string& text) const {
  const ruxcomp::Entry entry =
      target.entry ? target.entry : evaluation::ValueEntry(target.section, name);
  return {text.empty() ? PathOf(target.section, entry) : text, PlaceOf(target.section, entry)};
}

std::vector<Remark> CaseRun::LimitRemarks(const Target& target, const Outcome& outcome,
                                          const Texts& bands) const {
  std::vector<Remark> remarks = {ValueRemark(target, "", "VALUE is " + outcome.value.Text())};
  if (outcome.ipmi && !bench_.profile.limit_value.Is(profile::LimitValue::kValue))
    remarks.push_back(ValueRemark(target, kIpmiName, "VALUE_IPMI is " + outcome.ipmi->Text()));
  for (const ruxcomp::Entry entry : target.section.entries()) {
    const ruxcomp::language::LimitRow* limit = machine::LimitWith(entry.identifier());
    if (limit == nullptr) continue;
    if (std::find(bands.begin(), bands.end(), evaluation::BandName(*limit)) == bands.end())
      continue;
    const auto number = evaluation::NumberOfLimit(bench_.profile, entry.value().number());
    remarks.push_back({fmt::format("{} is {}", ruxcomp::language::KeywordOf(limit->entry),
                                   number ? evaluation::TextOf(*number) : "of unknown sign"),
                       PlaceOf(target.section, entry)});
  }
  return remarks;
}

void CaseRun::Add(std::uint32_t line, Difference difference, std::vector<Remark> remarks) {
  Mismatch mismatch{line, difference.Text(), std::move(difference), std::move(remarks)};
  if (!used_) used_ = UsedReadings();
  for (const GivenReading* reading : *used_) {
    if (mismatch.readings.size() == kMostReadings) {
      mismatch.remarks.push_back({"and other readings"});
      break;
    }
    mismatch.readings.push_back(reading);
    mismatch.remarks.push_back({TextOf(*reading)});
  }
  mismatches_.push_back(std::move(mismatch));
}

std::vector<const GivenReading*> CaseRun::UsedReadings() const {
  std::vector<Given> used;
  for (const auto& [key, given] : given_) {
    if (watch_.UsedInRound(key)) used.push_back(given);
  }
  std::sort(used.begin(), used.end(),
            [](const Given& a, const Given& b) { return a.number < b.number; });
  if (used.size() > kMostReadings) used.resize(kMostReadings + 1);
  std::vector<const GivenReading*> readings;
  readings.reserve(used.size());
  for (const Given& given : used) readings.push_back(given.reading);
  return readings;
}

void CaseRun::CompareEffects(const CaseRound& round) {
  Texts calls;
  for (const evaluation::CallMade& call : effects_.calls()) calls.push_back(call.Text());
  Texts writes;
  for (const evaluation::AccessMade& access : effects_.accesses()) {
    if (access.is_write) writes.push_back(access.key);
  }
  if (const std::optional<evaluation::Result>& obstacle = effects_.obstacle()) {
    calls.push_back("more: " + obstacle->Text());
    writes.push_back("more: " + obstacle->Text());
  }
  CompareLists(round, "calls", round.calls, calls, watch_.calls());
  CompareLists(round, "writes", round.writes, writes, watch_.writes());
}

// Where they first differ, it helps to know where what is found comes from.
void CaseRun::CompareLists(const CaseRound& round, const char* what,
                           const std::optional<Texts>& expected, const Texts& found,
                           const std::vector<Origin>& origins) {
  if (!expected || *expected == found) return;
  std::vector<Remark> remarks;
  const auto at = static_cast<std::size_t>(
      std::mismatch(found.begin(), found.end(), expected->begin(), expected->end()).first -
      found.begin());
  if (at < found.size() && at < origins.size()) {
    const Origin& origin = origins[at];
    remarks.push_back(
        {fmt::format("{} comes from {}", found[at], PathOf(origin.section, origin.entry)),
         PlaceOf(origin.section, origin.entry)});
  }
  Add(round.line, {"", what, Joined(*expected), Joined(found)}, std::move(remarks));
}

}  // namespace rux::cases
