#include "advice/missing_header.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "reader/script.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/keys.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "support/nearest.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;
using language::SectionKind;
using ruxcomp::reader::Item;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Whether a name of the script's own is one that such entries have; a closer look is for the
// library.
bool LooksLike(std::string_view name, language::NameForm form) {
  const bool is_number = IsDigit(name.front());
  if (form == language::NameForm::kAny) return true;
  return form == language::NameForm::kNoDigitFirst ? !is_number : is_number;
}

// Whether a key is one that the kind asks for, by a template or by what its own names begin with.
bool HasKeyOf(const SectionKind& kind, std::string_view key) {
  if (language::FindTemplateRow(kind, key) < kind.templates.size()) return true;
  return std::any_of(kind.free_entries.begin(), kind.free_entries.end(), [&](const auto& rule) {
    const std::string_view keyword = language::KeywordOf(rule.identifier);
    return !keyword.empty() && language::BeginsWith(key, keyword);
  });
}

// Whether its own names begin with nothing certain.
bool IsOfPlainNames(const language::FreeEntryRule& rule) {
  return language::KeywordOf(rule.identifier).empty();
}

bool Takes(const SectionKind& kind, std::string_view key) {
  if (HasKeyOf(kind, key)) return true;
  return std::any_of(kind.free_entries.begin(), kind.free_entries.end(), [&](const auto& rule) {
    return IsOfPlainNames(rule) && LooksLike(key, language::NameFormOf(rule.identifier));
  });
}

// Whether sections of the kind take any key: nothing in them is out of place.
bool TakesAny(const SectionKind& kind) { return Takes(kind, "x"); }

bool HasRequired(const SectionKind& kind, const Items& items) {
  const auto is_there = [&](const language::EntryTemplate& row) {
    return (row.notation & language::kRequired) == 0 ||
           std::any_of(items.first, items.end, [&](const Item& item) {
             return item.key == language::KeywordOf(row.identifier);
           });
  };
  return std::all_of(kind.templates.begin(), kind.templates.end(), is_there);
}

// The first one with the key of one before it.
const Item* FirstRepeated(const Items& items) {
  std::unordered_set<std::string_view> seen;
  return std::find_if(items.first, items.end,
                      [&](const Item& item) { return !seen.insert(item.key).second; });
}

const Item* FirstMisplaced(const SectionKind& kind, const Items& items) {
  const Item* foreign = std::find_if(items.first, items.end,
                                     [&](const Item& item) { return !Takes(kind, item.key); });
  if (kind.uniqueness == language::Uniqueness::kNothing) return foreign;
  return std::min(foreign, FirstRepeated(items));
}

// In a section that takes any key, the first one that looks like that of another kind.
const Item* FirstKeyword(const Items& items, const Evidence& evidence) {
  return std::find_if(items.first, items.end, [&](const Item& item) {
    const auto has = [&](const SectionKind& kind) {
      return !kind.templates.empty() &&
             item.key == language::KeywordOf(kind.templates.begin()->identifier);
    };
    return evidence.is_missed(item.key) ||
           std::any_of(std::begin(language::kSectionKinds), std::end(language::kSectionKinds), has);
  });
}

bool IsWholeSection(const SectionKind& kind, const Items& items) {
  const bool is_enough = items.end - items.first > 1 || kind.templates.size() == 1;
  return !kind.templates.empty() && is_enough && HasRequired(kind, items) &&
         std::all_of(items.first, items.end,
                     [&](const Item& item) { return Takes(kind, item.key); });
}

bool IsRepeat(const Item& item, const Evidence& evidence) {
  const std::vector<std::string_view> parts = ruxcomp::reader::Parts(item);
  return parts.size() > 1 && !parts[0].empty() && IsDigit(parts[0].front()) &&
         evidence.is_action(parts[1]);
}

// Of a kind without templates.
bool AreEntriesOf(const SectionKind& kind, const Items& items, const Evidence& evidence) {
  const auto is_of_kind = [&](const Item& item) { return HasKeyOf(kind, item.key); };
  const auto is_repeat = [&](const Item& item) { return IsRepeat(item, evidence); };
  const auto is_missed = [&](const Item& item) { return evidence.is_missed(item.key); };
  if (std::all_of(items.first, items.end, is_of_kind)) return true;
  if (kind.source == language::SECTION_REPEATER) {
    return std::all_of(items.first, items.end, is_repeat);
  }
  return kind.source == language::SECTION_DEFINE && std::any_of(items.first, items.end, is_missed);
}

// Whether these are several of which none could be meant as one of the kind.
bool AreForeign(const SectionKind& kind, const Items& items) {
  std::vector<std::string> keywords;
  for (const language::EntryTemplate& row : kind.templates) {
    keywords.emplace_back(language::KeywordOf(row.identifier));
  }
  return items.end - items.first > 1 && std::none_of(items.first, items.end, [&](const Item& item) {
           return item.value.empty() || Takes(kind, item.key) ||
                  support::ClosestName(std::string(item.key), keywords);
         });
}

// What "TABLE]" is the header of; null for other items.
const SectionKind* KindOfUnopened(const Item& item) {
  if (!item.value.empty() || item.key.back() != ']') return nullptr;
  return language::FindKind(ruxcomp::reader::Trim(item.key.substr(0, item.key.size() - 1)));
}

bool IsUnopened(const Item& item) { return KindOfUnopened(item) != nullptr; }

const SectionKind& KindOfPlainNames(const Items& items) {
  const bool are_numbers = std::all_of(
      items.first, items.end, [](const Item& item) { return IsDigit(item.value.front()); });
  return language::KindOf(are_numbers ? language::SECTION_DEFINE : language::SECTION_PROPERTY);
}

}  // namespace

const SectionKind* KindOfItems(const Items& items, const Evidence& evidence) {
  if (items.first == items.end) return nullptr;
  for (const SectionKind& kind : language::kSectionKinds) {
    const bool is_of_kind =
        kind.templates.empty() ? AreEntriesOf(kind, items, evidence) : IsWholeSection(kind, items);
    if (is_of_kind) return &kind;
  }
  return nullptr;
}

std::string HintAbove(const SectionKind& kind, std::uint32_t line) {
  constexpr std::string_view kVowels = "AEIOU";
  const bool has_vowel = kVowels.find(kind.keyword[0]) != std::string_view::npos;
  return fmt::format("is {} [{}] line missing above line {}?", has_vowel ? "an" : "a", kind.keyword,
                     line);
}

std::optional<MissingHeader> FindMissingHeader(const ruxcomp::reader::Section& section,
                                               const Evidence& evidence) {
  const SectionKind* above = language::FindKind(section.name);
  if (above == nullptr) return std::nullopt;
  const Items all{section.items, section.items + section.item_count};
  const Item* unopened = std::find_if(all.first, all.end, IsUnopened);
  if (unopened != all.end)
    return MissingHeader{KindOfUnopened(*unopened), {unopened, all.end}, true};
  const Item* first = TakesAny(*above) ? FirstKeyword(all, evidence) : FirstMisplaced(*above, all);
  if (first == all.end || first == all.first || !HasRequired(*above, {all.first, first})) {
    return std::nullopt;
  }
  // A header may be missing further down as well.
  const Items swallowed{first, all.end};
  const Items own{first, FirstRepeated(swallowed)};
  const SectionKind* kind = KindOfItems(own, evidence);
  if (kind == nullptr && AreForeign(*above, own)) kind = &KindOfPlainNames(own);
  const bool may_repeat = above->uniqueness != language::Uniqueness::kSingle && !TakesAny(*above);
  if (kind == nullptr || (kind == above && !may_repeat)) return std::nullopt;
  return MissingHeader{kind, swallowed, false};
}

}  // namespace rux::advice
