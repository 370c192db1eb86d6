#include "sources/script_names.h"

#include "compiled/section_schema.h"
#include "sources/sub_strings.h"

namespace rux::sources {

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
  return {
#define SECTION(keyword, kind, notation, form, naming, uniqueness) #keyword,
#include "ruxcomp/language/sections.def"
  };
}

std::vector<std::string> Operators() {
  return {
#define OPERATOR(text, code) text,
#include "ruxcomp/language/operators.def"
  };
}

std::vector<std::string> KeywordsOf(std::string_view section) {
  std::vector<std::string> keywords;
  for (std::uint32_t kind = 1; const compiled::SectionSchema* schema = compiled::FindSchema(kind);
       ++kind) {
    if (section != schema->keyword) continue;
    for (const compiled::SchemaKey& key : schema->keys) {
      keywords.emplace_back(compiled::SourceEntryKeyword(key.identifier));
    }
    // INCLUDE takes its one key any number of times.
    for (const compiled::SchemaKey& key : schema->more) {
      if ((key.notation & compiled::kFreeName) == 0) {
        keywords.emplace_back(compiled::SourceEntryKeyword(key.identifier));
      }
    }
  }
  return keywords;
}

}  // namespace rux::sources
