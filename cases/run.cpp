#include "cases/run.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "cases/case.h"
#include "cases/coverage.h"
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
#include "profile/profile.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/model/handles.h"
#include "support/failure.h"

namespace rux::cases {

using evaluation::Outcome;
using evaluation::Target;

namespace {

// The most rounds of the machine that a step of a case takes.
constexpr std::uint64_t kMostRounds = 10000;
// How many readings a failed case shows.
constexpr std::size_t kMostReadings = 8;

std::string Joined(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : ", ") + text;
  return all.empty() ? "none" : all;
}

// One case from its first round to its last.
class CaseRun {
 public:
  CaseRun(const Bench& bench, const Case& source, Coverage& coverage,
          const evaluation::Change* change)
      : bench_(bench),
        source_(source),
        coverage_(coverage),
        evaluator_(bench.plan, bench.profile, readings_),
        rounds_(evaluator_) {
    evaluator_.AddObserver(coverage);
    evaluator_.AddObserver(effects_);
    evaluator_.Try(change);
  }

  CaseResult Run() {
    for (const CaseRound& round : source_.rounds) {
      try {
        RunRound(round);
      } catch (const support::Failure& failure) {
        mismatches_.push_back({round.line, failure.what()});
      }
    }
    return {&source_, std::move(mismatches_)};
  }

 private:
  const machine::Machine& machine() const { return bench_.plan.machine(); }

  void RunRound(const CaseRound& round) {
    effects_ = evaluation::Effects();
    for (const auto& [key, sequence] : round.readings) readings_.Set(machine(), key, sequence);
    std::vector<Target> targets;
    for (const Expectation& each : round.expected) {
      Target& target = targets.emplace_back(evaluation::FindTarget(machine(), each.path));
      for (const evaluation::Number number : each.arguments)
        target.arguments.push_back(evaluator_.arithmetic().Given(number));
    }
    if (source_.starts && &round == &source_.rounds.front()) rounds_.Start(targets);
    const std::optional<std::uint32_t> times = TimesOf(round);
    if (!times) return;
    std::vector<Outcome> outcomes;
    for (std::uint32_t i = 0; i < *times; ++i) {
      if (i > 0) effects_ = evaluation::Effects();
      outcomes = rounds_.Next(targets);
    }
    for (std::size_t i = 0; i < targets.size(); ++i)
      Compare(round, round.expected[i], targets[i], outcomes[i]);
    CompareEffects(round);
  }

  // How many rounds of the machine fit until then; none when that is not known.
  std::optional<std::uint32_t> TimesOf(const CaseRound& round) {
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
      mismatches_.push_back({round.line, fmt::format("after {} ms is more than {} rounds",
                                                     *round.after, kMostRounds)});
      return std::nullopt;
    }
    return static_cast<std::uint32_t>(times);
  }

  void Compare(const CaseRound& round, const Expectation& expected, const Target& target,
               const Outcome& outcome) {
    if (outcome.band) coverage_.AddBand(bench_.profile, target.section, *outcome.band);
    if (expected.value && !expected.value->Fits(outcome.value)) {
      Add(round, expected, "value", expected.value->Text(), outcome.value.Text(),
          {{Target{target.kind, target.section, ValueOf(target)}.Path(),
            PlaceOf(target.section, ValueOf(target))}});
    }
    if (expected.ipmi && (!outcome.ipmi || !expected.ipmi->Fits(*outcome.ipmi))) {
      Add(round, expected, "VALUE_IPMI", expected.ipmi->Text(),
          outcome.ipmi ? outcome.ipmi->Text() : "none", {});
    }
    if (expected.band.empty()) return;
    const std::string found = outcome.band ? outcome.band->Name() : evaluation::kNoBand;
    if (found == expected.band) return;
    Add(round, expected, "band", expected.band, outcome.band ? outcome.band->Text() : found,
        LimitRemarks(target, outcome, {expected.band, found}));
  }

  std::optional<machine::Place> PlaceOf(const ruxcomp::Section& section,
                                        const ruxcomp::Entry& entry) const {
    const std::lock_guard<std::mutex> lock(bench_.places);
    return evaluation::PlaceOf(machine(), section, entry);
  }

  static ruxcomp::Entry ValueOf(const Target& target) {
    return target.entry ? target.entry : evaluation::ValueEntry(target.section, "");
  }

  // The value, and the limits of these bands; of all others when it has none of them.
  std::vector<Remark> LimitRemarks(const Target& target, const Outcome& outcome,
                                   const std::vector<std::string>& bands) const {
    std::vector<Remark> remarks = {
        {"VALUE is " + outcome.value.Text(), PlaceOf(target.section, ValueOf(target))}};
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

  void Add(const CaseRound& round, const Expectation& expected, std::string_view what,
           const std::string& wanted, const std::string& found, std::vector<Remark> remarks) {
    AddReadings(round, remarks);
    mismatches_.push_back(
        {expected.line,
         fmt::format("{}: expected {} {}, found {}", expected.path, what, wanted, found),
         std::move(remarks)});
  }

  static void AddReadings(const CaseRound& round, std::vector<Remark>& remarks) {
    const std::size_t shown = remarks.size() + kMostReadings;
    for (const auto& [key, sequence] : round.readings) {
      if (remarks.size() == shown) return remarks.push_back({"and other readings"});
      std::vector<std::string> numbers;
      for (const evaluation::Number number : sequence)
        numbers.push_back(evaluation::TextOf(number));
      remarks.push_back({fmt::format("reading {} = {}", key, Joined(numbers))});
    }
  }

  void CompareEffects(const CaseRound& round) {
    std::vector<std::string> calls;
    for (const evaluation::CallMade& call : effects_.calls()) calls.push_back(call.Text());
    std::vector<std::string> writes;
    for (const evaluation::AccessMade& access : effects_.accesses()) {
      if (access.is_write) writes.push_back(access.key);
    }
    CompareLists(round, "calls", round.calls, calls);
    CompareLists(round, "writes", round.writes, writes);
  }

  void CompareLists(const CaseRound& round, const char* what,
                    const std::optional<std::vector<std::string>>& expected,
                    const std::vector<std::string>& found) {
    if (!expected || *expected == found) return;
    std::vector<Remark> remarks;
    AddReadings(round, remarks);
    mismatches_.push_back(
        {round.line,
         fmt::format("expected {} {}; found {}", what, Joined(*expected), Joined(found)),
         std::move(remarks)});
  }

  const Bench& bench_;
  const Case& source_;
  Coverage& coverage_;
  evaluation::Readings readings_;
  evaluation::Effects effects_;
  evaluation::Evaluator evaluator_;
  evaluation::Rounds rounds_;
  std::vector<Mismatch> mismatches_;
};

}  // namespace

std::size_t CountFailed(const std::vector<CaseResult>& results) {
  return static_cast<std::size_t>(std::count_if(
      results.begin(), results.end(), [](const CaseResult& result) { return !result.passes(); }));
}

CaseResult RunCase(const Bench& bench, const Case& source, Coverage& coverage,
                   const evaluation::Change* change) {
  return CaseRun(bench, source, coverage, change).Run();
}

std::vector<CaseResult> RunCases(const Bench& bench, const std::vector<const Case*>& cases,
                                 std::size_t jobs, Coverage& coverage) {
  std::vector<CaseResult> results(cases.size());
  jobs = std::clamp<std::size_t>(jobs, 1, std::max<std::size_t>(cases.size(), 1));
  std::vector<Coverage> parts(jobs);
  const auto run = [&](std::size_t job) {
    for (std::size_t i = job; i < cases.size(); i += jobs)
      results[i] = RunCase(bench, *cases[i], parts[job]);
  };
  std::vector<std::thread> threads;
  for (std::size_t job = 1; job < jobs; ++job) threads.emplace_back(run, job);
  run(0);
  for (std::thread& thread : threads) thread.join();
  for (const Coverage& part : parts) coverage.Add(part);
  return results;
}

}  // namespace rux::cases
