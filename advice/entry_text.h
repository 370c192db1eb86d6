// What a section has in an entry.
#ifndef ADVICE_ENTRY_TEXT_H_
#define ADVICE_ENTRY_TEXT_H_

#include <string_view>

#include "reader/script.h"
#include "ruxcomp/language/entries.h"

namespace rux::advice {

// Null when the section does not have the entry.
const ruxcomp::reader::Item* FindItem(const ruxcomp::reader::Section& section,
                                      ruxcomp::language::EntryId entry);

// Its first part; empty when the section does not have it.
std::string_view TextOf(const ruxcomp::reader::Section& section, ruxcomp::language::EntryId entry);

}  // namespace rux::advice

#endif  // ADVICE_ENTRY_TEXT_H_
