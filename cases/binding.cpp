#include "cases/binding.h"

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "cases/case.h"
#include "cases/located.h"
#include "evaluation/arithmetic.h"
#include "evaluation/readings.h"
#include "evaluation/target.h"
#include "machine/machine.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"

namespace rux::cases {

using evaluation::ReadingKey;
using evaluation::Target;
using evaluation::ValueKey;

namespace {

bool IsWhole(const Target& target, ruxcomp::language::SectionId kind) {
  return target.kind->source == kind && !target.entry;
}

class Binder {
 public:
  Binder(const machine::Machine& machine, const evaluation::Arithmetic& arithmetic,
         const Case& source)
      : machine_(machine), arithmetic_(arithmetic), source_(source) {}

  BoundRound Bind(const CaseRound& round) {
    BoundRound bound{&round};
    std::set<ReadingKey> in_round;
    for (const GivenReading& given : round.readings) {
      bound.readings.push_back({&given, KeyOf(given)});
      if (!in_round.insert(bound.readings.back().key).second)
        Refuse(given.line, given.key + ": another reading of the round is of the same");
    }
    std::set<ValueKey> evaluated;
    for (const Expectation& expected : round.expected) {
      bound.targets.push_back(TargetOf(expected));
      for (const ValueKey& key : KeysOf(bound.targets.back())) {
        if (!evaluated.insert(key).second)
          Refuse(expected.line, expected.path + ": another path of the round is of the same");
      }
    }
    return bound;
  }

 private:
  [[noreturn]] void Refuse(std::uint32_t line, const std::string& text) const {
    RefuseAt(source_.file, line, text);
  }

  ReadingKey KeyOf(const GivenReading& given) {
    ReadingKey key = Located(source_.file, given.line,
                             [&] { return evaluation::Readings::KeyOf(machine_, given.key); });
    if (!given.sequence.empty()) {
      given_.insert(key);
    } else if (given_.erase(key) == 0) {
      Refuse(given.line, given.key + ": no round before gives this reading");
    }
    return key;
  }

  Target TargetOf(const Expectation& expected) const {
    Target target = Located(source_.file, expected.line,
                            [&] { return evaluation::FindTarget(machine_, expected.path); });
    const bool is_sensor = IsWhole(target, ruxcomp::language::SECTION_SENSOR);
    if (!is_sensor && (expected.ipmi || expected.band)) {
      Refuse(expected.line,
             expected.path + ": only SENSOR/NAME has a VALUE_IPMI and a band beside its value");
    }
    if (!expected.arguments.empty() && !IsWhole(target, ruxcomp::language::SECTION_ACTION))
      Refuse(expected.line, expected.path + ": only ACTION/NAME has arguments");
    for (const auto& number : expected.arguments)
      target.arguments.push_back(arithmetic_.Given(number));
    return target;
  }

  // What the evaluation of a target is the evaluation of.
  static std::vector<ValueKey> KeysOf(const Target& target) {
    if (target.entry) return {evaluation::KeyOf(target.section, target.entry)};
    std::vector<ValueKey> keys = {{target.section.kind(), target.section.ordinal(), 0}};
    if (!IsWhole(target, ruxcomp::language::SECTION_SENSOR)) return keys;
    for (const char* name : {"", "IPMI"}) {
      if (const ruxcomp::Entry entry = evaluation::ValueEntry(target.section, name))
        keys.push_back(evaluation::KeyOf(target.section, entry));
    }
    return keys;
  }

  const machine::Machine& machine_;
  const evaluation::Arithmetic& arithmetic_;
  const Case& source_;
  std::set<ReadingKey> given_;  // and not taken back
};

}  // namespace

std::vector<BoundRound> Bind(const machine::Machine& machine,
                             const evaluation::Arithmetic& arithmetic, const Case& source) {
  Binder binder(machine, arithmetic, source);
  std::vector<BoundRound> rounds;
  rounds.reserve(source.rounds.size());
  for (const CaseRound& round : source.rounds) rounds.push_back(binder.Bind(round));
  return rounds;
}

}  // namespace rux::cases
