#include "cases/mutation.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cases/case.h"
#include "cases/coverage.h"
#include "cases/run.h"
#include "cases/stretches.h"
#include "evaluation/bands.h"
#include "evaluation/change.h"
#include "evaluation/result.h"
#include "evaluation/target.h"
#include "machine/machine.h"
#include "profile/choices.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model/handles.h"

namespace rux::cases {

namespace language = ruxcomp::language;

namespace {

// One up and one down.
constexpr std::uint32_t kSteps[] = {1, 0xFFFFFFFF};

// The next operator of its kind; after the last one, the first.
const language::Operator* NextOperator(std::uint32_t code) {
  const language::Operator* found = language::FindOperator(code);
  if (found == nullptr) return nullptr;
  const auto place = static_cast<std::size_t>(found - language::kOperators);
  constexpr std::size_t kCount = std::size(language::kOperators);
  for (std::size_t step = 1; step < kCount; ++step) {
    const language::Operator& other = language::kOperators[(place + step) % kCount];
    if (language::IsComparison(other.code) == language::IsComparison(code)) return &other;
  }
  return nullptr;
}

class MutantMaker {
 public:
  explicit MutantMaker(const Bench& bench) : bench_(bench), machine_(bench.plan.machine()) {}

  std::vector<Mutant> Make() {
    for (const language::SectionKind& kind : language::kSectionKinds) {
      if (!kind.IsCompiled()) continue;
      for (const ruxcomp::Section section : machine_.model().sections(kind.compiled)) {
        if (kind.source == language::SECTION_SENSOR) AddLimits(section);
        if (kind.source == language::SECTION_TABLE) AddCells(section);
        for (const ruxcomp::Entry entry : section.entries()) AddOperator(section, entry);
      }
    }
    return std::move(mutants_);
  }

 private:
  void AddLimits(const ruxcomp::Section& sensor) {
    for (const evaluation::SensorLimit& limit :
         evaluation::LimitsOf(bench_.profile, sensor).limits) {
      const std::uint32_t stored = limit.entry.value().number();
      for (const std::uint32_t step : kSteps) {
        const auto number = evaluation::NumberOfLimit(bench_.profile, stored + step);
        Add({evaluation::KeyOf(sensor, limit.entry), step}, sensor, limit.entry,
            fmt::format("{} for {}", number ? evaluation::TextOf(*number) : "unknown",
                        evaluation::TextOf(limit.number)));
      }
    }
  }

  void AddCells(const ruxcomp::Section& table) {
    const auto* cells = machine_.model().table(table.ordinal());
    if (cells == nullptr) return;
    ForEachEdgeCell(*cells, [&](std::uint32_t index) {
      const std::uint8_t cell = (*cells)[index];
      for (const std::uint32_t step : kSteps) {
        Add({evaluation::Change::CellKey(table.ordinal(), index), step}, table, {},
            fmt::format("cell {}: {} for {}", index, static_cast<std::uint8_t>(cell + step), cell));
      }
    });
  }

  void AddOperator(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
    const std::uint32_t index_class = language::ClassOf(entry.identifier());
    if (index_class != language::CLASS_Value && index_class != language::CLASS_Global) return;
    const std::uint32_t type = language::OrdinalOf(entry.value().index());
    if (bench_.profile.MeaningOf(type) != profile::Meaning::kCalculate) return;
    const std::uint32_t code = language::OrdinalOf(entry.value(1).index());
    const language::Operator* other = NextOperator(code);
    if (other == nullptr) return;
    Add({evaluation::KeyOf(section, entry), other->code}, section, entry,
        fmt::format("{} for {}", other->text, language::FindOperator(code)->text));
  }

  void Add(const evaluation::Change& change, const ruxcomp::Section& section,
           const ruxcomp::Entry& entry, const std::string& what) {
    const evaluation::Target target{language::FindCompiledKind(section.kind()), section, entry};
    mutants_.push_back({change, fmt::format("{}: {}", target.Path(), what),
                        evaluation::PlaceOf(machine_, section, entry)});
  }

  const Bench& bench_;
  const machine::Machine& machine_;
  std::vector<Mutant> mutants_;
};

}  // namespace

std::vector<Mutant> MutantsOf(const Bench& bench) { return MutantMaker(bench).Make(); }

std::size_t CountLimitsLeftOut(const Bench& bench) {
  std::size_t count = 0;
  for (const ruxcomp::Section sensor : bench.plan.machine().model().sections(RUX_SECT_SENSOR)) {
    for (const evaluation::StatedLimit& limit : evaluation::StatedLimitsOf(bench.profile, sensor))
      count += limit.use == evaluation::StatedLimit::Use::kLeftOut ? 1 : 0;
  }
  return count;
}

void FindNoticing(const Bench& bench, const std::vector<const Case*>& cases,
                  std::vector<Mutant>& mutants) {
  // The cases by what they evaluate, each once.
  std::map<evaluation::ValueKey, std::vector<const Case*>> by_key;
  for (const Case* each : cases) {
    Coverage coverage;
    RunCase(bench, *each, coverage);
    for (const evaluation::ValueKey& key : coverage.Keys()) by_key[key].push_back(each);
  }
  for (Mutant& mutant : mutants) {
    const auto concerned = by_key.find(mutant.change.where);
    if (concerned == by_key.end()) continue;
    for (const Case* each : concerned->second) {
      Coverage ignored;
      if (!RunCase(bench, *each, ignored, &mutant.change).passes())
        mutant.noticed_by.push_back(each);
    }
  }
}

std::size_t MutationResult::noticed() const {
  return static_cast<std::size_t>(
      std::count_if(mutants.begin(), mutants.end(),
                    [](const Mutant& mutant) { return !mutant.noticed_by.empty(); }));
}

}  // namespace rux::cases
