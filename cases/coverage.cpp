#include "cases/coverage.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <map>
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

// What was known once stays so.
template <class Key>
void Note(const Key& key, bool is_known, std::map<Key, bool>& noted) {
  bool& was_known = noted[key];
  was_known = was_known || is_known;
}

template <class Key>
void NoteAll(const std::map<Key, bool>& more, std::map<Key, bool>& noted) {
  for (const auto& [key, is_known] : more) Note(key, is_known, noted);
}

}  // namespace

void Coverage::End(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                   const evaluation::Result& result) {
  const bool is_known = !result.IsOpen();
  Note(evaluation::KeyOf(section, entry), is_known, steps_);
  if (!is_known && !calls_.empty()) calls_.back().is_known = false;
}

void Coverage::Call(const ruxcomp::Section& action, const std::vector<evaluation::Result>&) {
  calls_.push_back({action.ordinal()});
}

void Coverage::Return(const evaluation::Result& result) {
  const OpenCall call = calls_.back();
  calls_.pop_back();
  Note(call.action, call.is_known && !result.IsOpen(), actions_);
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
  std::vector<evaluation::ValueKey> keys;
  keys.reserve(steps_.size() + limits_.size() + cells_.size());
  for (const auto& [key, is_known] : steps_) keys.push_back(key);
  for (const auto& [key, ways] : limits_) keys.push_back(key);
  for (const auto& [table, index] : cells_)
    keys.push_back(evaluation::Change::CellKey(table, index));
  return keys;
}

void Coverage::Add(const Coverage& other) {
  NoteAll(other.steps_, steps_);
  NoteAll(other.actions_, actions_);
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
      CountKnown(actions_, coverage_.actions_, section.ordinal(), section, {}, "never called");
    for (const ruxcomp::Entry entry : section.entries()) {
      if (!HasValue(entry)) continue;
      CountKnown(steps_, coverage_.steps_, evaluation::KeyOf(section, entry), section, entry,
                 "never evaluated");
      if (IsBranch(entry))
        CountWays(branches_, coverage_.branches_, section, entry, "never holds", "always holds");
    }
  }

  void ReadLimits(const ruxcomp::Section& sensor) {
    using Use = evaluation::StatedLimit::Use;
    for (const evaluation::StatedLimit& limit : evaluation::StatedLimitsOf(profile_, sensor)) {
      if (limit.use == Use::kCompared) {
        CountWays(limits_, coverage_.limits_, sensor, limit.entry, "never beyond it",
                  "never within it");
      } else if (limit.use == Use::kUnknown) {
        Count(limits_, false, sensor, limit.entry, fmt::format("unknown ({})", limit.reason));
      } else {
        limits_.left_out.push_back(
            ThingOf(sensor, limit.entry, fmt::format("not compared: {}", limit.reason)));
      }
    }
  }

  void ReadCells(const ruxcomp::Section& table) {
    const auto* cells = machine_.model().table(table.ordinal());
    if (cells == nullptr) return;
    ForEachEdgeCell(*cells, [&](std::uint32_t index) {
      Count(cells_, coverage_.cells_.count({table.ordinal(), index}) > 0, table, {},
            fmt::format("cell {} ({}) never read", index, (*cells)[index]));
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
    CoveredThing thing = ThingOf(section, entry, what);
    kind.things.push_back(thing.key);
    if (!is_covered) kind.missing.push_back(std::move(thing));
  }

  CoveredThing ThingOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                       const std::string& what) const {
    const evaluation::Target target{language::FindCompiledKind(section.kind()), section, entry};
    return {entry ? evaluation::KeyOf(section, entry)
                  : evaluation::ValueKey(section.kind(), section.ordinal(), 0),
            target.Path(), what, evaluation::PlaceOf(machine_, section, entry)};
  }

  template <class Key>
  void CountKnown(CoveredKind& kind, const std::map<Key, bool>& noted, const Key& key,
                  const ruxcomp::Section& section, const ruxcomp::Entry& entry,
                  const char* never) const {
    const auto found = noted.find(key);
    if (found == noted.end()) {
      Count(kind, false, section, entry, never);
    } else {
      Count(kind, found->second, section, entry, "always unknown");
    }
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
  CoveredKind limits_{kCoveredKinds[0], "limits with expected bands within and beyond"};
  CoveredKind actions_{kCoveredKinds[1], "actions that are called"};
  CoveredKind steps_{kCoveredKinds[2], "values that are evaluated"};
  CoveredKind cells_{kCoveredKinds[3], "first and last cells of equal ones that are read"};
  CoveredKind branches_{kCoveredKinds[4], "comparisons and conditions that hold and do not"};
};

std::string CoveredKind::CountText() const {
  std::string text = fmt::format("{} of {}", covered(), all());
  if (!left_out.empty())
    text += fmt::format(", {} not compared under this profile", left_out.size());
  return text;
}

std::vector<CoveredKind> CoverageOf(const machine::Machine& machine,
                                    const profile::Profile& profile, const Coverage& coverage) {
  return CoverageReader(machine, profile, coverage).Read();
}

}  // namespace rux::cases
