// Proposals for the beginnings of lines: headers and keys.
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "assistance/completion.h"
#include "assistance/place.h"
#include "assistance/proposals.h"
#include "assistance/wording.h"
#include "index/index.h"
#include "index/records.h"
#include "index/spot.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"

namespace rux::assistance {
namespace {

// Whether there is such an entry in the section besides the one that is being written.
bool HasOther(const Writing& writing, std::uint32_t entry) {
  const auto items = writing.index.ItemsOf(writing.spot.section);
  return std::any_of(items.begin(), items.end(), [&](const index::ItemRecord& item) {
    const auto id = static_cast<Id>(&item - writing.index.items().data());
    return item.entry == entry && id != writing.spot.item;
  });
}

// A key that is followed by its value gets no second '='.
std::string KeyWithEquals(const Writing& writing, std::string_view key) {
  const bool has_equals =
      writing.spot.item != kNone && !writing.index.items()[writing.spot.item].item->value.empty();
  return has_equals ? std::string(key) : fmt::format("{} = ", key);
}

void ProposeTemplates(const Writing& writing, const language::SectionKind& kind, bool are_required,
                      ProposalList& proposals) {
  for (const language::EntryTemplate& row : kind.templates) {
    const bool is_required = (row.notation & language::kRequired) != 0;
    if (is_required != are_required || HasOther(writing, row.identifier)) continue;
    const std::string key(language::KeywordOf(row.identifier));
    proposals.push_back({Proposal::Kind::kKey, key, KeyText(kind, row.identifier, row.notation),
                         KeyWithEquals(writing, key)});
  }
}

// Prefixes of the script's own names, and keys that may repeat.
void ProposeFree(const Writing& writing, const language::SectionKind& kind,
                 ProposalList& proposals) {
  for (const language::FreeEntryRule& rule : kind.free_entries) {
    const std::string key(language::KeywordOf(rule.identifier));
    if (key.empty()) continue;
    const bool is_prefix = (rule.notation & language::kFreeName) != 0;
    proposals.push_back({Proposal::Kind::kKey, is_prefix ? key + "..." : key,
                         KeyText(kind, rule.identifier, rule.notation),
                         is_prefix ? key : KeyWithEquals(writing, key)});
  }
}

// The header with the required keys, each with a place to fill in.
std::string SectionSnippet(const language::SectionKind& kind) {
  std::string text = fmt::format("[{}]\n", kind.keyword);
  int next = 0;
  for (const language::EntryTemplate& row : kind.templates) {
    if ((row.notation & language::kRequired) == 0) continue;
    text += fmt::format("{} = ${{{}}}\n", language::KeywordOf(row.identifier), ++next);
  }
  return text + "$0";
}

}  // namespace

void ProposeSections(const Writing& writing, ProposalList& proposals) {
  const bool is_new = writing.spot.kind != index::Spot::Kind::kHeader;
  for (const language::SectionKind& kind : language::kSectionKinds) {
    const std::string label = is_new ? fmt::format("[{}]", kind.keyword) : kind.keyword;
    proposals.push_back(
        {Proposal::Kind::kSection, label, "", is_new ? SectionSnippet(kind) : label, is_new});
  }
}

void ProposeKeys(const Writing& writing, ProposalList& proposals) {
  if (writing.spot.section == kNone) return;
  const language::SectionKind* kind = writing.index.sections()[writing.spot.section].kind;
  if (kind == nullptr) return;
  ProposeTemplates(writing, *kind, true, proposals);
  ProposeTemplates(writing, *kind, false, proposals);
  ProposeFree(writing, *kind, proposals);
}

}  // namespace rux::assistance
