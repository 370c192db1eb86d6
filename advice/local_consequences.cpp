// What follows from a slip in the same section, or from one that is alone in the script.
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "advice/consequences.h"
#include "advice/entry_text.h"
#include "advice/line_hints.h"
#include "advice/missing.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "findings/origin.h"
#include "reader/script.h"
#include "run/log.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_set.h"
#include "support/nearest.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;
namespace rows = ruxcomp::findings::rows;
using run::Finding;
using ruxcomp::findings::Origin;
using ruxcomp::reader::Section;

// The name of the entry, in findings that have one.
std::string_view EntryOf(const Finding& finding) {
  if (!finding.row->lead.has_entry) return {};
  return std::get<std::string>(finding.arguments[finding.row->lead.arguments() - 1]);
}

}  // namespace

void Consequences::PlanLocal() {
  PlanUnknownParents();
  PlanFirstSections();
  PlanMisspeltKeys();
  PlanCutValues();
  PlanUnclosedQuotes();
  PlanListsWithoutCommas();
  PlanListsOfNames();
  PlanRepeatedIds();
  PlanMistypedIds();
}

std::vector<const Finding*> Consequences::Of(const ruxcomp::findings::MessageRow& row) const {
  std::vector<const Finding*> found;
  for (const Finding& finding : result_.findings) {
    if (finding.row == &row && cause_of_.count(&finding) == 0) found.push_back(&finding);
  }
  return found;
}

void Consequences::PlanUnknownParents() {
  std::map<std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>, const Finding*> unknown;
  const auto place_of = [](const Finding& finding) {
    return std::tuple(finding.origin.script, finding.origin.section, finding.origin.item);
  };
  for (const Finding& finding : result_.findings) {
    if (finding.row != &rows::kUnknownParentGroup) continue;
    unknown[place_of(finding)] = &finding;
    const Section* section = result_.sources.At(finding.origin).section;
    const bool is_group =
        section != nullptr && section->name == language::KindOf(language::SECTION_GROUP).keyword;
    lacks_parent_ = lacks_parent_ || is_group;
  }
  for (const Finding* later : Of(rows::kParentDefinedLater)) {
    const auto cause = unknown.find(place_of(*later));
    if (cause != unknown.end()) Plan(*later, *cause->second);
  }
}

void Consequences::PlanFirstSections() {
  const std::vector<const Finding*> all = Of(rows::kRedefinedSection);
  for (const Finding* first : all) {
    if (first->other != Origin()) continue;
    const auto again = std::find_if(all.begin(), all.end(), [&](const Finding* each) {
      return each->other.script == first->origin.script &&
             each->other.section == first->origin.section;
    });
    if (again != all.end()) Plan(*first, **again);
  }
}

void Consequences::PlanMisspeltKeys() {
  std::vector<const Finding*> invalid = Of(rows::kInvalidEntryName);
  const std::vector<const Finding*> unknown = Of(rows::kUnknownEntry);
  invalid.insert(invalid.end(), unknown.begin(), unknown.end());
  for (const Finding* missing : Of(rows::kMissingEntry)) {
    const std::string key(EntryOf(*missing));
    const auto cause = std::find_if(invalid.begin(), invalid.end(), [&](const Finding* each) {
      if (!AreInOneSection(*each, *missing)) return false;
      const std::string found(EntryOf(*each));
      // "ID : 5" is ID with a wrong sign after it.
      const std::string_view word = std::string_view(found).substr(0, found.find_first_of(" \t:/"));
      return word == key || support::ClosestName(found, {key}).has_value();
    });
    if (cause != invalid.end()) Plan(*missing, **cause);
  }
}

void Consequences::PlanCutValues() {
  for (const Finding* rest : Of(rows::kInvalidEntryName)) {
    const sources::OriginSpot spot = result_.sources.At(rest->origin);
    if (spot.item == nullptr || spot.item == spot.section->items) continue;
    if (LineCutBefore(*spot.opening->file, *spot.item) == 0) continue;
    for (const Finding& finding : result_.findings) {
      const bool is_before =
          AreInOneSection(finding, *rest) && finding.origin.item + 1 == rest->origin.item;
      if (is_before && finding.row->lead.is_error) Plan(finding, *rest);
    }
  }
}

void Consequences::PlanUnclosedQuotes() {
  for (const Finding* quote : Of(rows::kUnclosedQuote)) {
    if (!quote->place) continue;
    for (const Finding& finding : result_.findings) {
      if (finding.origin.script != quote->origin.script || !finding.row->lead.is_error) continue;
      const ruxcomp::reader::Item* item = result_.sources.At(finding.origin).item;
      if (item != nullptr && item->line == quote->place->line) Plan(finding, *quote);
    }
  }
}

void Consequences::PlanListsWithoutCommas() {
  const std::vector<const Finding*> unlisted = Of(rows::kUnlistedSensor);
  for (const Finding* list : Of(rows::kUnknownSensor)) {
    const std::string_view text = Mentioned(*list);
    if (text.find_first_of(" \t") == std::string_view::npos) continue;
    const std::string words = ' ' + std::string(text) + ' ';
    for (const Finding* sensor : unlisted) {
      const std::string id = ' ' + std::string(Mentioned(*sensor)) + ' ';
      if (words.find(id) != std::string::npos) Plan(*sensor, *list);
    }
  }
}

void Consequences::PlanListsOfNames() {
  std::map<std::string_view, const Finding*> unlisted;  // by the names of the sensors
  for (const Finding* sensor : Of(rows::kUnlistedSensor)) {
    const Section* section = result_.sources.At(sensor->origin).section;
    if (section != nullptr) unlisted.emplace(TextOf(*section, language::ENTRY_NAME), sensor);
  }
  for (const Finding* list : Of(rows::kUnknownSensor)) {
    const std::string_view name = Mentioned(*list);
    const auto meant = unlisted.find(name);
    if (meant == unlisted.end()) continue;
    Plan(*meant->second, *list,
         fmt::format("{} is the NAME of this sensor; SENSORS lists IDs", name));
  }
}

void Consequences::PlanRepeatedIds() {
  std::vector<const Finding*> repeated = Of(rows::kRedefinedId);
  repeated.erase(std::remove_if(repeated.begin(), repeated.end(),
                                [&](const Finding* each) {
                                  const Section* section = result_.sources.At(each->origin).section;
                                  return section == nullptr ||
                                         language::KindOf(language::SECTION_SENSOR).keyword !=
                                             section->name;
                                }),
                 repeated.end());
  const std::vector<const Finding*> unknown = Of(rows::kUnknownSensor);
  if (repeated.size() != 1 || unknown.size() != 1) return;
  Plan(*unknown.front(), *repeated.front(),
       fmt::format("no [SENSOR] has the ID {} of this list", Mentioned(*unknown.front())));
}

void Consequences::PlanMistypedIds() {
  const std::vector<const Finding*> unknown = Of(rows::kUnknownSensor);
  const std::vector<const Finding*> unlisted = Of(rows::kUnlistedSensor);
  if (unknown.size() != 1 || unlisted.size() != 1) return;
  Plan(*unlisted.front(), *unknown.front(),
       fmt::format("no [PELMGROUP] has this {} in its SENSORS", Mentioned(*unlisted.front())));
}

}  // namespace rux::advice
