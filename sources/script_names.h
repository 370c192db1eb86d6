// The names that a script gives, for those who look for what was meant.
#ifndef SOURCES_SCRIPT_NAMES_H_
#define SOURCES_SCRIPT_NAMES_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sources/source_view.h"

namespace rux::sources {

// An item and the file that it stands in.
struct SourceItem {
  const SourceFile* file;
  const reader::Section* section;
  const reader::Item* item;
};

// The items with that key in all sections of that name; those with any key when it is empty.
std::vector<SourceItem> ItemsOf(const SourceView& sources, std::string_view section,
                                std::string_view key);

// The first of them whose value is the text.
std::optional<SourceItem> FindItem(const SourceView& sources, std::string_view section,
                                   std::string_view key, std::string_view text);

// The values of those items, without quotes.
std::vector<std::string> ValuesOf(const SourceView& sources, std::string_view section,
                                  std::string_view key);

// Their keys.
std::vector<std::string> KeysOf(const SourceView& sources, std::string_view section);

std::vector<std::string> DefinedWords(const SourceView& sources);

// What the language itself names: the section keywords, the operators, and the keys that sections
// of a name take.
std::vector<std::string> SectionKeywords();
std::vector<std::string> Operators();
std::vector<std::string> KeywordsOf(std::string_view section);

}  // namespace rux::sources

#endif  // SOURCES_SCRIPT_NAMES_H_
