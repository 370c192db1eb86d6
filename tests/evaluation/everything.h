// All that can be evaluated in a machine, under any profile and with any readings; what holds then.
#ifndef TESTS_EVALUATION_EVERYTHING_H_
#define TESTS_EVALUATION_EVERYTHING_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "evaluation/evaluator.h"
#include "evaluation/plan.h"
#include "evaluation/readings.h"
#include "evaluation/report.h"
#include "evaluation/result.h"
#include "evaluation/round.h"
#include "evaluation/target.h"
#include "evaluation/trace.h"
#include "machine/machine.h"
#include "profile/choices.h"
#include "profile/profile.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "support/safe_text.h"
#include "support/text_stream.h"

namespace evaluating {

namespace language = ruxcomp::language;
using rux::evaluation::Target;
using rux::machine::Machine;

// More than a value of these machines takes unless it goes on forever, and then each further one
// would be the same again.
inline constexpr std::size_t kMostSteps = 2000;

// Returns a number below the bound.
using Pick = std::function<std::size_t(std::size_t bound)>;
// Reports that something does not hold.
using Expect = std::function<void(bool holds, const char* promise)>;

// One that states about three of four choices.
inline rux::profile::Profile AnyProfile(const Pick& pick) {
  using rux::profile::MemberForm;
  std::string text = "{\"name\": \"any\"";
  for (const rux::profile::MemberRow& row : rux::profile::kMembers) {
    if (pick(4) == 0) continue;
    const std::string key = ", \"" + std::string(row.key) + "\": ";
    if (row.form == MemberForm::kChoice) {
      const auto options = rux::profile::OptionsOf(row.id);
      text += key + '"' + options[pick(options.size())].text + '"';
    } else if (row.form == MemberForm::kNumber) {
      text += key + std::to_string(row.least + pick(row.most - row.least < 60 ? 57 : 1));
    } else if (row.form == MemberForm::kNumbers) {
      text += key + "[0, 1, 3]";
    }
  }
  text += ", \"types\": {\"0\": \"zero\"";
  for (const language::ValueType& type : language::kValueTypes) {
    std::vector<std::string> meanings;
    for (const rux::profile::MeaningRow& row : rux::profile::kMeanings) {
      if (row.Fits(type)) meanings.emplace_back(row.text);
    }
    if (type.code == 0 || pick(8) == 0) continue;
    text += ", \"" + std::to_string(type.code) + "\": \"" + meanings[pick(meanings.size())] + '"';
  }
  return rux::profile::ParseProfile("profile.json", text + "}}");
}

// Up to that many.
inline std::vector<Target> TargetsOf(const Machine& machine, std::size_t most) {
  std::vector<Target> targets;
  const auto add = [&](const Target& target) {
    if (targets.size() >= most) return;
    targets.push_back(target);
    targets.back().arguments = {rux::evaluation::Result::Of(1), rux::evaluation::Result::Of(-2)};
  };
  for (const language::SectionKind& kind : language::kSectionKinds) {
    if (!kind.IsCompiled()) continue;
    const bool is_whole =
        kind.source == language::SECTION_SENSOR || kind.source == language::SECTION_ACTION;
    for (const ruxcomp::Section section : machine.model().sections(kind.compiled)) {
      if (is_whole) add({&kind, section, {}});
      for (const ruxcomp::Entry entry : section.entries()) {
        const std::uint32_t index_class = language::ClassOf(entry.identifier());
        if (index_class == language::CLASS_Value || index_class == language::CLASS_Global ||
            index_class == language::CLASS_Repeater)
          add({&kind, section, entry});
      }
    }
  }
  return targets;
}

inline std::string ReportOf(const Machine& machine, const rux::profile::Profile& profile,
                            const rux::evaluation::Readings& readings, const Target& target,
                            rux::evaluation::Effects& effects) {
  const rux::evaluation::Plan plan(machine);
  rux::evaluation::Evaluator evaluator(plan, profile, readings, kMostSteps);
  rux::evaluation::Trace trace(machine);
  evaluator.AddObserver(effects);
  evaluator.AddObserver(trace);
  rux::evaluation::Rounds rounds(evaluator);
  rounds.Start({target});
  const rux::evaluation::Outcome outcome = rounds.Next({target}).front();
  rounds.Stop({target});
  const rux::evaluation::Report report{machine, profile, target, outcome, effects, &trace};
  return rux::support::WrittenText([&](rux::support::TextStream& out) {
    rux::evaluation::WriteText(report, out);
    rux::support::WriteJson(out, [&](rux::support::JsonObject& json) { WriteJson(report, json); });
  });
}

// Evaluates a target without readings, then with a reading of each access that this needs. Returns
// how many numbers come of it.
inline std::size_t EvaluateTwice(const Machine& machine, const rux::profile::Profile& profile,
                                 const Target& target, const Pick& pick, const Expect& expect) {
  rux::evaluation::Readings readings;
  std::set<std::string> keys;
  for (int i = 0; i < 2; ++i) {
    rux::evaluation::Effects effects;
    const std::string text = ReportOf(machine, profile, readings, target, effects);
    expect(rux::support::AreSafeLines(text), "no text of a machine controls a terminal");
    expect(text.find("unknown ()") == std::string::npos, "what is unknown has a reason");
    rux::evaluation::Effects again;
    expect(ReportOf(machine, profile, readings, target, again) == text,
           "the same readings give the same results");
    for (const rux::evaluation::AccessMade& access : effects.accesses()) {
      if (!access.is_write && keys.insert(access.key).second)
        readings.Set(machine, access.key, {static_cast<std::int64_t>(pick(300))});
    }
  }
  return keys.size();
}

}  // namespace evaluating

#endif  // TESTS_EVALUATION_EVERYTHING_H_
