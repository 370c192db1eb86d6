// Names that are misspelt where they are given.
#include <fmt/format.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_set>
#include <vector>

#include "advice/consequences.h"
#include "advice/message_advice.h"
#include "advice/missing.h"
#include "diagnostics/diagnostic.h"
#include "reader/script.h"
#include "reader/value.h"
#include "run/log.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/nearest.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;
using run::Finding;
using ruxcomp::reader::Item;

struct Given {
  const sources::SourceFile* file;
  std::string_view name;
};

// What the sections of the kind are called by, or the keys that they have.
std::map<std::string, Given> NamesOf(const sources::SourceSet& sources,
                                     const Definition& definition) {
  std::map<std::string, Given> names;
  for (const sources::SourceSection& section : sources.sections()) {
    if (section.section->name != language::KindOf(definition.kind).keyword) continue;
    for (std::uint32_t i = 0; i < section.section->item_count; ++i) {
      const Item& item = section.section->items[i];
      const bool is_key = definition.is_key();
      if (!is_key && item.key != language::KeywordOf(definition.entry)) continue;
      const std::string_view name = is_key ? item.key : ruxcomp::reader::FirstPart(item);
      names.emplace(std::string(name), Given{section.file, name});
    }
  }
  return names;
}

// All texts of the script that may refer to a name.
std::unordered_set<std::string_view> UsesIn(const sources::SourceSet& sources) {
  std::unordered_set<std::string_view> uses;
  for (const sources::SourceSection& section : sources.sections()) {
    for (std::uint32_t i = 0; i < section.section->item_count; ++i) {
      const Item& item = section.section->items[i];
      if (item.key == language::KeywordOf(language::ENTRY_NAME)) continue;
      ruxcomp::reader::ForEachPart(item, [&](std::string_view part) { uses.insert(part); });
    }
  }
  return uses;
}

}  // namespace

void Consequences::PlanMisspeltNames() {
  std::map<std::tuple<language::SectionId, language::EntryId, std::string_view>,
           std::vector<const Finding*>>
      uses;
  for (const Finding& finding : result_.findings) {
    const auto missing = MissingOf(finding);
    if (!missing || cause_of_.count(&finding) != 0) continue;
    const Definition& definition = missing->definition;
    if (!definition.is_key() && definition.entry != language::ENTRY_NAME) continue;
    uses[{definition.kind, definition.entry, missing->text}].push_back(&finding);
  }
  std::unordered_set<std::string_view> used;
  for (const auto& [name, findings] : uses) {
    if (findings.size() < 2) continue;
    if (used.empty()) used = UsesIn(result_.sources);
    PlanMisspeltName(findings, used);
  }
}

void Consequences::PlanMisspeltName(const std::vector<const Finding*>& findings,
                                    const std::unordered_set<std::string_view>& used) {
  const Missing missing = *MissingOf(*findings.front());
  std::vector<std::string> names;
  const auto given = NamesOf(result_.sources, missing.definition);
  for (const auto& [name, place] : given) {
    if (used.count(name) == 0) names.push_back(name);
  }
  const auto meant = support::ClosestName(std::string(missing.text), names);
  if (!meant) return;
  for (const Finding* each : findings) {
    if (each != findings.front()) Plan(*each, *findings.front());
  }
  const Given& place = given.at(*meant);
  causes_[findings.front()].notes.push_back(
      {fmt::format("nothing refers to {}: is it misspelt here? {} places refer to {}", *meant,
                   findings.size(), missing.text),
       diagnostics::LocationIn(*place.file, place.file->RangeOf(place.name))});
}

}  // namespace rux::advice
