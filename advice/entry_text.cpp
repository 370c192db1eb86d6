#include "advice/entry_text.h"

#include <algorithm>
#include <string_view>

#include "reader/script.h"
#include "reader/value.h"
#include "ruxcomp/language/entries.h"

namespace rux::advice {

namespace language = ruxcomp::language;

const ruxcomp::reader::Item* FindItem(const ruxcomp::reader::Section& section,
                                      language::EntryId entry) {
  const ruxcomp::reader::Item* end = section.items + section.item_count;
  const auto* found = std::find_if(section.items, end, [&](const ruxcomp::reader::Item& item) {
    return item.key == language::KeywordOf(entry);
  });
  return found == end ? nullptr : found;
}

std::string_view TextOf(const ruxcomp::reader::Section& section, language::EntryId entry) {
  const ruxcomp::reader::Item* item = FindItem(section, entry);
  return item == nullptr ? std::string_view() : ruxcomp::reader::FirstPart(*item);
}

}  // namespace rux::advice
