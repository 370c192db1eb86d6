#include "advice/lost_items.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "advice/message_advice.h"
#include "advice/missing.h"
#include "advice/missing_header.h"
#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "findings/origin.h"
#include "reader/script.h"
#include "reader/value.h"
#include "run/log.h"
#include "run/run.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/nearest.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;
namespace rows = ruxcomp::findings::rows;
using run::Finding;
using ruxcomp::findings::Origin;
using ruxcomp::reader::Item;

// Whether it may be reported because an item is in the wrong section.
bool MayBeMisplaced(const Finding& finding) {
  constexpr const ruxcomp::findings::MessageRow* kRows[] = {
      &rows::kInvalidEntryName, &rows::kUnknownEntry, &rows::kRedefinedEntry,
      &rows::kInvalidArgument,  &rows::kUnknownValue, &rows::kMissingValue};
  return finding.origin.item != Origin::kNone &&
         std::find(std::begin(kRows), std::end(kRows), finding.row) != std::end(kRows);
}

Items AllOf(const ruxcomp::reader::Section& section) {
  return {section.items, section.items + section.item_count};
}

const language::SectionKind* KindMeantBy(std::string_view name, const sources::SourceSet& sources) {
  const auto meant = support::ClosestName(std::string(name), SectionKeywords(sources, {}));
  return meant ? language::FindKind(*meant) : nullptr;
}

}  // namespace

LostItems::LostItems(const run::Result& result) : result_(result) {
  for (const Finding& finding : result.findings) {
    const auto missing = MissingOf(finding);
    misses_ = misses_ || missing;
    if (missing && missing->definition.is_key()) missed_.emplace(missing->text);
    if (!MayBeMisplaced(finding)) continue;
    misplaced_[{finding.origin.script, finding.origin.section}].push_back(&finding);
  }
  FindMisspeltHeaders();
  FindMissingFirstHeaders();
  FindMissingHeaders();
}

Lost* LostItems::Find(const Missing& missing) {
  const Definition& definition = missing.definition;
  const auto found = by_text_.find({definition.entry, Comparable(definition.entry, missing.text)});
  if (found == by_text_.end()) return nullptr;
  const auto fits = std::find_if(found->second.begin(), found->second.end(), [&](Lost* lost) {
    return lost->kind == nullptr || lost->kind->source == definition.kind;
  });
  return fits == found->second.end() ? nullptr : *fits;
}

void LostItems::FindMisspeltHeaders() {
  for (const Finding& finding : result_.findings) {
    if (finding.row != &rows::kUnknownSection) continue;
    const ruxcomp::reader::Section* section = result_.sources.At(finding.origin).section;
    if (section == nullptr) continue;
    Add({&finding, KindMeantBy(section->name, result_.sources), AllOf(*section), {}});
  }
}

// The reader drops what is there.
void LostItems::FindMissingFirstHeaders() {
  for (const Finding& finding : result_.findings) {
    if (finding.row != &rows::kTextBeforeSection || !finding.place) continue;
    const sources::Opening* opening = result_.sources.At(finding.origin).opening;
    if (opening == nullptr) continue;
    const sources::SourceFile& file = *opening->file;
    const std::size_t begin = file.LineStart(finding.place->line);
    const std::size_t end =
        file.sections().empty() ? file.text().size() : file.LineStart(file.sections().front().line);
    const auto& scanned = scanned_.emplace_back("[]\n" + file.text().substr(begin, end - begin),
                                                [](const ruxcomp::reader::Problem&) {});
    const Items items = AllOf(scanned.sections().front());
    const language::SectionKind* kind = KindOfItems(items, evidence());
    if (kind == nullptr) continue;
    Add({&finding, kind, items, {{HintAbove(*kind, finding.place->line), {}}}});
  }
}

void LostItems::FindMissingHeaders() {
  for (const auto& [place, findings] : misplaced_) FindMissingHeader(place);
  if (misses_) FindMissingHeadersInDefinitions();
}

void LostItems::FindMissingHeadersInDefinitions() {
  const std::vector<sources::Opening>& openings = result_.sources.openings();
  for (std::uint32_t script = 0; script < openings.size(); ++script) {
    const auto& sections = openings[script].file->sections();
    for (std::uint32_t i = 0; i < sections.size(); ++i) {
      const language::SectionKind* kind = language::FindKind(sections[i].name);
      const bool takes_any = kind != nullptr && kind->templates.empty();
      if (takes_any && misplaced_.count({script, i}) == 0) FindMissingHeader({script, i});
    }
  }
}

void LostItems::FindMissingHeader(const SectionPlace& place) {
  const sources::OriginSpot spot = result_.sources.At({place.first, place.second});
  if (spot.section == nullptr) return;
  const auto header = advice::FindMissingHeader(*spot.section, evidence());
  if (!header) return;
  const Items& items = header->swallowed;
  const sources::SourceFile& file = *spot.opening->file;
  Lost lost{nullptr, header->kind, items, {}};
  // What is there of it has a hint of its own.
  if (!header->is_unopened) lost.hints = {{HintAbove(*header->kind, items.first->line), {}}};
  lost.file = &file;
  lost.section = spot.section;
  const auto first = static_cast<std::uint32_t>(items.first - spot.section->items);
  for (const Finding* finding : misplaced_[place]) {
    if (finding->origin.item >= first) lost.misplaced.push_back(finding);
  }
  std::stable_sort(
      lost.misplaced.begin(), lost.misplaced.end(),
      [](const auto* one, const auto* two) { return one->origin.item < two->origin.item; });
  if (lost.misplaced.empty() && !lost.hints.empty()) {
    lost.hints.front().at = diagnostics::LocationIn(file, file.RangeOf(items.first->key));
  }
  if (!lost.misplaced.empty()) lost.cause = lost.misplaced.front();
  Add(std::move(lost));
}

void LostItems::Add(Lost lost) {
  Lost& added = all_.emplace_back(std::move(lost));
  for (const Item* item = added.items.first; item != added.items.end; ++item) {
    AddText({}, item->key, added);
    for (const auto entry : {language::ENTRY_NAME, language::ENTRY_ID}) {
      if (item->key == language::KeywordOf(entry)) {
        AddText(entry, ruxcomp::reader::FirstPart(*item), added);
      }
    }
    if (item->key != language::KeywordOf(language::ENTRY_SENSORS)) continue;
    ruxcomp::reader::ForEachPart(
        *item, [&](std::string_view part) { AddText(language::ENTRY_SENSORS, part, added); });
  }
}

void LostItems::AddText(language::EntryId entry, std::string_view text, Lost& lost) {
  by_text_[{entry, Comparable(entry, text)}].push_back(&lost);
}

Evidence LostItems::evidence() {
  if (actions_.empty()) {
    for (std::string& name : ActionNames(result_.sources, {})) actions_.insert(std::move(name));
  }
  return {[this](std::string_view key) { return missed_.count(std::string(key)) != 0; },
          [this](std::string_view name) { return actions_.count(std::string(name)) != 0; }};
}

}  // namespace rux::advice
