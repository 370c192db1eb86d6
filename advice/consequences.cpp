#include "advice/consequences.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "advice/line_hints.h"
#include "advice/message_advice.h"
#include "advice/places.h"
#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "findings/origin.h"
#include "reader/script.h"
#include "reader/value.h"
#include "run/log.h"
#include "run/run.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "sources/source_set.h"
#include "support/nearest.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;
namespace rows = ruxcomp::findings::rows;
using run::Finding;
using ruxcomp::findings::MessageRow;
using ruxcomp::findings::Origin;
using ruxcomp::reader::Item;
using ruxcomp::reader::Section;

// The first text after the place and the names of section and entry; empty when there is none.
std::string_view Mentioned(const Finding& finding) {
  const std::size_t at = finding.row->lead.arguments();
  if (at >= finding.arguments.size()) return {};
  const auto* text = std::get_if<std::string>(&finding.arguments[at]);
  return text == nullptr ? std::string_view() : *text;
}

// The name of the entry, in findings that have one.
std::string_view EntryOf(const Finding& finding) {
  if (!finding.row->lead.has_entry) return {};
  return std::get<std::string>(finding.arguments[finding.row->lead.arguments() - 1]);
}

bool AreInOneSection(const Finding& one, const Finding& other) {
  return one.origin.script == other.origin.script && one.origin.section == other.origin.section;
}

template <std::size_t kCount>
bool IsOneOf(const MessageRow* row, const MessageRow* const (&list)[kCount]) {
  return std::find(std::begin(list), std::end(list), row) != std::end(list);
}

bool IsMisplacedItem(const Finding& finding) {
  return IsOneOf(finding.row,
                 {&rows::kInvalidEntryName, &rows::kUnknownEntry, &rows::kRedefinedEntry});
}

bool IsUnknownReference(const Finding& finding) {
  return IsOneOf(finding.row, {&rows::kUnknownSensor, &rows::kUnlistedSensor, &rows::kUnknownAction,
                               &rows::kUnknownTable, &rows::kUnknownParentGroup,
                               &rows::kUnknownParentPelmgroup});
}

// Whether sections of the kind take the key: by a template, or as a name of the form that they ask
// for.
bool Takes(const language::SectionKind& kind, std::string_view key) {
  if (language::FindTemplateRow(kind, key) < kind.templates.size()) return true;
  return std::any_of(kind.free_entries.begin(), kind.free_entries.end(), [&](const auto& rule) {
    const std::string_view keyword = language::KeywordOf(rule.identifier);
    return !keyword.empty() && language::BeginsWith(key, keyword);
  });
}

// Whether the items from `first` on are all that a section of the kind needs, and nothing else.
bool AreWholeSection(const language::SectionKind& kind, const Item* first, const Item* end) {
  const auto is_there = [&](const language::EntryTemplate& row) {
    return std::any_of(first, end, [&](const Item& item) {
      return item.key == language::KeywordOf(row.identifier);
    });
  };
  const auto lacks = [&](const language::EntryTemplate& row) {
    return (row.notation & language::kRequired) != 0 && !is_there(row);
  };
  return kind.templates.size() >= 3 &&
         std::none_of(kind.templates.begin(), kind.templates.end(), lacks) &&
         std::all_of(first, end, [&](const Item& item) { return Takes(kind, item.key); });
}

const language::SectionKind* FindWholeSection(const Item* first, const Item* end) {
  for (const language::SectionKind& kind : language::kSectionKinds) {
    if (AreWholeSection(kind, first, end)) return &kind;
  }
  return nullptr;
}

}  // namespace

Consequences::Consequences(const run::Result& result) : result_(result) {
  // What another reader found may be somewhere else in the files.
  if (result.has_foreign_reader) return;
  FoldMissingHeaders();
  FoldUnknownParents();
  FoldFirstSections();
  FoldMisspeltKeys();
  FoldCutValues();
  FoldListsWithoutCommas();
  FoldRepeatedIds();
  FoldMistypedIds();
}

void Consequences::AddNotes(const Finding& cause, Places& places,
                            diagnostics::Diagnostic& diagnostic) const {
  const auto found = notes_.find(&cause);
  if (found == notes_.end()) return;
  for (const Note& note : found->second) {
    diagnostics::Diagnostic other;
    if (note.at != nullptr) places.Locate(note.at->origin, Underline::kPlace, other);
    diagnostic.notes.push_back({note.text, other.at});
  }
}

void Consequences::Fold(const Finding& consequence, const Finding& cause, std::string text) {
  Fold(consequence);
  notes_[&cause].push_back({std::move(text), &consequence});
}

std::vector<const Finding*> Consequences::Of(const MessageRow& row) const {
  std::vector<const Finding*> found;
  for (const Finding& finding : result_.findings) {
    if (finding.row == &row && !Includes(finding)) found.push_back(&finding);
  }
  return found;
}

void Consequences::FoldMissingHeaders() {
  std::map<std::pair<std::uint32_t, std::uint32_t>, std::vector<const Finding*>> by_section;
  for (const Finding& finding : result_.findings) {
    if (!IsMisplacedItem(finding) || finding.origin.item == Origin::kNone) continue;
    by_section[{finding.origin.script, finding.origin.section}].push_back(&finding);
  }
  for (auto& [section, findings] : by_section) {
    std::stable_sort(findings.begin(), findings.end(), [](const Finding* one, const Finding* two) {
      return one->origin.item < two->origin.item;
    });
    FoldMissingHeader(findings);
  }
}

void Consequences::FoldMissingHeader(const std::vector<const Finding*>& of_section) {
  constexpr std::size_t kFewest = 3;
  const auto cause = std::find_if(of_section.begin(), of_section.end(),
                                  [](const Finding* each) { return each->row->lead.is_error; });
  if (of_section.size() < kFewest || cause == of_section.end()) return;
  const sources::OriginSpot spot = result_.sources.At(of_section.front()->origin);
  if (spot.item == nullptr) return;
  const Item* end = spot.section->items + spot.section->item_count;
  const language::SectionKind* kind = FindWholeSection(spot.item, end);
  if (kind == nullptr) return;
  for (const Finding* each : of_section) {
    if (each != *cause) Fold(*each);
  }
  notes_[*cause].push_back(
      {fmt::format("is a [{}] line missing above line {}?", kind->keyword, spot.item->line),
       nullptr});
  FoldReferencesTo(*spot.section, *spot.item);
}

void Consequences::FoldReferencesTo(const Section& section, const Item& first_swallowed) {
  const Item* end = section.items + section.item_count;
  const auto is_defined = [&](std::string_view text) {
    return std::any_of(&first_swallowed, end, [&](const Item& item) {
      const bool names = item.key == language::KeywordOf(language::ENTRY_NAME) ||
                         item.key == language::KeywordOf(language::ENTRY_ID);
      return names && ruxcomp::reader::FirstPart(item) == text;
    });
  };
  for (const Finding& finding : result_.findings) {
    if (IsUnknownReference(finding) && is_defined(Mentioned(finding))) Fold(finding);
  }
}

void Consequences::FoldUnknownParents() {
  const std::vector<const Finding*> unknown = Of(rows::kUnknownParentGroup);
  for (const Finding* later : Of(rows::kParentDefinedLater)) {
    const bool follows = std::any_of(unknown.begin(), unknown.end(), [&](const Finding* each) {
      return AreInOneSection(*each, *later) && each->origin.item == later->origin.item;
    });
    if (follows) Fold(*later);
  }
}

void Consequences::FoldFirstSections() {
  // The others name it as the first one.
  for (const Finding* each : Of(rows::kRedefinedSection)) {
    if (each->other == Origin()) Fold(*each);
  }
}

void Consequences::FoldMisspeltKeys() {
  const std::vector<const Finding*> invalid = Of(rows::kInvalidEntryName);
  for (const Finding* missing : Of(rows::kMissingEntry)) {
    const std::string key(EntryOf(*missing));
    const bool follows = std::any_of(invalid.begin(), invalid.end(), [&](const Finding* each) {
      const std::string found(EntryOf(*each));
      // "ID : 5" is ID with a wrong sign after it.
      const std::string_view word = std::string_view(found).substr(0, found.find_first_of(" \t:/"));
      return AreInOneSection(*each, *missing) &&
             (word == key || support::ClosestName(found, {key}).has_value());
    });
    if (follows) Fold(*missing);
  }
}

void Consequences::FoldCutValues() {
  for (const Finding* rest : Of(rows::kInvalidEntryName)) {
    const sources::OriginSpot spot = result_.sources.At(rest->origin);
    if (spot.item == nullptr || spot.item == spot.section->items) continue;
    if (LineCutBefore(*spot.opening->file, *spot.item) == 0) continue;
    for (const Finding& finding : result_.findings) {
      const bool is_before =
          AreInOneSection(finding, *rest) && finding.origin.item + 1 == rest->origin.item;
      if (is_before && finding.row->lead.is_error) Fold(finding);
    }
  }
}

void Consequences::FoldListsWithoutCommas() {
  const std::vector<const Finding*> unlisted = Of(rows::kUnlistedSensor);
  for (const Finding* list : Of(rows::kUnknownSensor)) {
    const std::string_view text = Mentioned(*list);
    if (text.find_first_of(" \t") == std::string_view::npos) continue;
    const std::string words = ' ' + std::string(text) + ' ';
    for (const Finding* sensor : unlisted) {
      const std::string id = ' ' + std::string(Mentioned(*sensor)) + ' ';
      if (words.find(id) != std::string::npos) Fold(*sensor);
    }
  }
}

void Consequences::FoldRepeatedIds() {
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
  Fold(*unknown.front(), *repeated.front(),
       fmt::format("no [SENSOR] has the ID {} of this list", Mentioned(*unknown.front())));
}

void Consequences::FoldMistypedIds() {
  const std::vector<const Finding*> unknown = Of(rows::kUnknownSensor);
  const std::vector<const Finding*> unlisted = Of(rows::kUnlistedSensor);
  if (unknown.size() != 1 || unlisted.size() != 1) return;
  Fold(*unlisted.front(), *unknown.front(),
       fmt::format("no [PELMGROUP] has this {} in its SENSORS", Mentioned(*unlisted.front())));
}

}  // namespace rux::advice
