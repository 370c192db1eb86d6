#include "cases/coverage.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cases/stretches.h"
#include "evaluation/bands.h"
#include "evaluation/change.h"
#include "evaluation/result.h"
#include "evaluation/target.h"
#include "machine/machine.h"
#include "profile/choices.h"
#include "profile/profile.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"
#include "ruxcomp/model/handles.h"

namespace rux::cases {

namespace language = ruxcomp::language;

namespace {

constexpr unsigned kOneWay = 1;
constexpr unsigned kOtherWay = 2;

bool HasValue(const ruxcomp::Entry& entry) {
  const std::uint32_t index_class = language::ClassOf(entry.identifier());
  return index_class == language::CLASS_Value || index_class == language::CLASS_Global;
}

}  // namespace

void Coverage::End(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                   const evaluation::Result&) {
  steps_.insert(evaluation::KeyOf(section, entry));
}

void Coverage::Call(const ruxcomp::Section& action, const std::vector<evaluation::Result>&) {
  actions_.insert(action.ordinal());
}

void Coverage::Cell(const ruxcomp::Section& table, std::uint32_t index) {
  cells_.emplace(table.ordinal(), index);
}

void Coverage::Branch(const ruxcomp::Section& section, const ruxcomp::Entry& entry, bool holds) {
  branches_[evaluation::KeyOf(section, entry)] |= holds ? kOneWay : kOtherWay;
}

void Coverage::AddBand(const profile::Profile& profile, const ruxcomp::Section& sensor,
                       const evaluation::Band& band) {
  if (band.obstacle) return;
  for (const evaluation::SensorLimit& limit : evaluation::LimitsOf(profile, sensor).limits) {
    const bool is_beyond =
        std::any_of(band.beyond.begin(), band.beyond.end(),
                    [&](const evaluation::SensorLimit& each) { return each.row == limit.row; });
    limits_[evaluation::KeyOf(sensor, limit.entry)] |= is_beyond ? kOneWay : kOtherWay;
  }
}

std::vector<evaluation::ValueKey> Coverage::Keys() const {
  std::vector<evaluation::ValueKey> keys(steps_.begin(), steps_.end());
  for (const auto& [key, ways] : limits_) keys.push_back(key);
  for (const auto& [table, index] : cells_)
    keys.push_back(evaluation::Change::CellKey(table, index));
  return keys;
}

void Coverage::Add(const Coverage& other) {
  steps_.insert(other.steps_.begin(), other.steps_.end());
  actions_.insert(other.actions_.begin(), other.actions_.end());
  cells_.insert(other.cells_.begin(), other.cells_.end());
  for (const auto& [key, ways] : other.branches_) branches_[key] |= ways;
  for (const auto& [key, ways] : other.limits_) limits_[key] |= ways;
}

// Compares what was noted with what the machine has.
class CoverageReader {
 public:
  CoverageReader(const machine::Machine& machine, const profile::Profile& profile,
                 const Coverage& coverage)
      : machine_(machine), profile_(profile), coverage_(coverage) {}

  std::vector<CoveredKind> Read() {
    for (const language::SectionKind& kind : language::kSectionKinds) {
      if (!kind.IsCompiled()) continue;
      for (const ruxcomp::Section section : machine_.model().sections(kind.compiled))
        ReadSection(kind, section);
    }
    return {limits_, actions_, steps_, cells_, branches_};
  }

 private:
  void ReadSection(const language::SectionKind& kind, const ruxcomp::Section& section) {
    if (kind.source == language::SECTION_SENSOR) ReadLimits(section);
    if (kind.source == language::SECTION_TABLE) ReadCells(section);
    if (kind.source == language::SECTION_ACTION)
      Count(actions_, coverage_.actions_.count(section.ordinal()) > 0, section, {}, "never called");
    for (const ruxcomp::Entry entry : section.entries()) {
      if (!HasValue(entry)) continue;
      Count(steps_, coverage_.steps_.count(evaluation::KeyOf(section, entry)) > 0, section, entry,
            "never evaluated");
      if (IsBranch(entry))
        CountWays(branches_, coverage_.branches_, section, entry, "never holds", "always holds");
    }
  }

  void ReadLimits(const ruxcomp::Section& sensor) {
    for (const evaluation::SensorLimit& limit : evaluation::LimitsOf(profile_, sensor).limits) {
      CountWays(limits_, coverage_.limits_, sensor, limit.entry, "never beyond it",
                "never within it");
    }
  }

  void ReadCells(const ruxcomp::Section& table) {
    const auto* cells = machine_.model().table(table.ordinal());
    if (cells == nullptr) return;
    ForEachStretch(*cells, [&](std::uint32_t first, std::uint32_t last) {
      const auto read = coverage_.cells_.lower_bound({table.ordinal(), first});
      const bool is_read = read != coverage_.cells_.end() &&
                           *read <= std::pair<std::uint32_t, std::uint32_t>(table.ordinal(), last);
      Count(cells_, is_read, table, {},
            fmt::format("cells {} to {} ({}) never read", first, last, (*cells)[first]));
    });
  }

  bool IsBranch(const ruxcomp::Entry& entry) const {
    const std::uint32_t type = language::OrdinalOf(entry.value().index());
    const std::optional<profile::Meaning> meaning = profile_.MeaningOf(type);
    if (meaning == profile::Meaning::kCalculate) {
      return entry.values().size() > 1 &&
             language::IsComparison(language::OrdinalOf(entry.value(1).index()));
    }
    return meaning == profile::Meaning::kIf || meaning == profile::Meaning::kIfNot ||
           meaning == profile::Meaning::kCallIf || meaning == profile::Meaning::kCallIfNot;
  }

  void Count(CoveredKind& kind, bool is_covered, const ruxcomp::Section& section,
             const ruxcomp::Entry& entry, const std::string& what) const {
    const evaluation::ValueKey key =
        entry ? evaluation::KeyOf(section, entry)
              : evaluation::ValueKey(section.kind(), section.ordinal(), 0);
    kind.things.push_back(key);
    if (is_covered) return;
    const evaluation::Target target{language::FindCompiledKind(section.kind()), section, entry};
    kind.missing.push_back(
        {key, target.Path(), what, evaluation::PlaceOf(machine_, section, entry)});
  }

  void CountWays(CoveredKind& kind, const Coverage::Ways& all, const ruxcomp::Section& section,
                 const ruxcomp::Entry& entry, const char* no_one, const char* no_other) const {
    const auto found = all.find(evaluation::KeyOf(section, entry));
    const unsigned ways = found == all.end() ? 0 : found->second;
    if (ways == 0) {
      Count(kind, false, section, entry, "never reached");
    } else {
      Count(kind, ways == (kOneWay | kOtherWay), section, entry,
            ways == kOtherWay ? no_one : no_other);
    }
  }

  const machine::Machine& machine_;
  const profile::Profile& profile_;
  const Coverage& coverage_;
  CoveredKind limits_{kCoveredKinds[0], "limits that readings are within and beyond"};
  CoveredKind actions_{kCoveredKinds[1], "actions that are called"};
  CoveredKind steps_{kCoveredKinds[2], "values that are evaluated"};
  CoveredKind cells_{kCoveredKinds[3], "stretches of equal cells that are read"};
  CoveredKind branches_{kCoveredKinds[4], "comparisons and conditions that hold and do not"};
};

std::vector<CoveredKind> CoverageOf(const machine::Machine& machine,
                                    const profile::Profile& profile, const Coverage& coverage) {
  return CoverageReader(machine, profile, coverage).Read();
}

}  // namespace rux::cases
