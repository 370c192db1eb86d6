#include "sources/script_names.h"

#include "ruxcomp/language/operators.h"
#include "ruxcomp/language/sections.h"
#include "sources/sub_strings.h"

namespace rux::sources {

namespace language = ruxcomp::language;

std::vector<SourceItem> ItemsOf(const SourceView& sources, std::string_view section,
                                std::string_view key) {
  std::vector<SourceItem> items;
  for (const SourceSection& each : sources.sections()) {
    if (each.section->name != section) continue;
    for (std::uint32_t i = 0; i < each.section->item_count; ++i) {
      const reader::Item& item = each.section->items[i];
      if (key.empty() || item.key == key) items.push_back({each.file, each.section, &item});
    }
  }
  return items;
}

std::optional<SourceItem> FindItem(const SourceView& sources, std::string_view section,
                                   std::string_view key, std::string_view text) {
  for (const SourceItem& found : ItemsOf(sources, section, key)) {
    if (FirstSubString(*found.item) == text) return found;
  }
  return std::nullopt;
}

std::vector<std::string> ValuesOf(const SourceView& sources, std::string_view section,
                                  std::string_view key) {
  std::vector<std::string> values;
  for (const SourceItem& found : ItemsOf(sources, section, key)) {
    values.emplace_back(FirstSubString(*found.item));
  }
  return values;
}

std::vector<std::string> KeysOf(const SourceView& sources, std::string_view section) {
  std::vector<std::string> keys;
  for (const SourceItem& found : ItemsOf(sources, section, {})) keys.emplace_back(found.item->key);
  return keys;
}

std::vector<std::string> DefinedWords(const SourceView& sources) {
  std::vector<std::string> words = KeysOf(sources, "DEFINE");
  for (const SourceItem& found : ItemsOf(sources, "IFDEF", {})) {
    // The first one is the condition.
    if (found.item != found.section->items) words.emplace_back(found.item->key);
  }
  return words;
}

std::vector<std::string> SectionKeywords() {
  std::vector<std::string> keywords;
  for (const language::SectionKind& kind : language::kSectionKinds) {
    keywords.emplace_back(kind.keyword);
  }
  return keywords;
}

std::vector<std::string> Operators() {
  std::vector<std::string> operators;
  for (const language::Operator& row : language::kOperators) operators.emplace_back(row.text);
  return operators;
}

std::vector<std::string> KeywordsOf(std::string_view section) {
  std::vector<std::string> keywords;
  const auto add = [&](language::EntryId entry) {
    keywords.emplace_back(language::FindEntryRow(entry)->keyword);
  };
  const language::SectionKind* kind = language::FindKind(section);
  if (kind == nullptr) return keywords;
  for (const language::EntryTemplate& row : kind->templates) add(row.identifier);
  // INCLUDE takes its one key any number of times.
  for (const language::FreeEntryRule& row : kind->free_entries) {
    if ((row.notation & language::kFreeName) == 0) add(row.identifier);
  }
  return keywords;
}

}  // namespace rux::sources
