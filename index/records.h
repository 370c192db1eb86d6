// What an index holds. All refer to each other by numbers.
#ifndef INDEX_RECORDS_H_
#define INDEX_RECORDS_H_

#include <cstdint>
#include <string_view>

#include "reader/script.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"
#include "support/text_file.h"

namespace rux::index {

namespace language = ruxcomp::language;

using Id = std::uint32_t;
inline constexpr Id kNone = 0xFFFFFFFF;

// Where a name is looked for: what the entries of that row in sections of the kind give as names.
struct Space {
  language::SectionId section;
  language::EntryId entry;

  constexpr bool operator==(const Space& other) const {
    return section == other.section && entry == other.entry;
  }
  constexpr bool operator!=(const Space& other) const { return !(*this == other); }
};

// Those that have more to them than a row: words, which IFDEF sections also define; the arguments
// of an action; files.
inline constexpr Space kWords{language::SECTION_DEFINE, language::ENTRY_DEFINED_WORD};
inline constexpr Space kArguments{language::SECTION_ACTION, language::ENTRY_ARGNUMBER};
inline constexpr Space kFiles{language::SECTION_INCLUDE, language::ENTRY_FILE};

// Whether names are numbers there: 0x10 and 16 are the same.
constexpr bool HasNumbers(const Space& space) {
  return language::IsNumericString(space.entry) || language::IsNumericList(space.entry);
}
// Whether each section has names of its own there.
constexpr bool IsLocal(const Space& space) {
  if (space == kArguments) return true;
  const language::SectionKind& kind = language::KindOf(space.section);
  for (const language::FreeEntryRule& rule : kind.free_entries) {
    if (rule.identifier == space.entry) {
      return space != kWords && space != kFiles && kind.uniqueness != language::Uniqueness::kKeys;
    }
  }
  return false;
}

// A section of a file. One that is read twice is here once.
struct SectionRecord {
  Id file;
  const ruxcomp::reader::Section* section;
  const language::SectionKind* kind;  // null: unknown, and left out by the library
  Id first_item;                      // its items follow each other
};

struct ItemRecord {
  Id section;
  std::uint32_t entry;  // 0: the section does not take the key
  const ruxcomp::reader::Item* item;
  Id first_definition;  // of those in the item, which follow each other
  Id first_reference;   // the same
};

// A name in its space.
struct Symbol {
  Space space;
  Id section;             // the one that it is local to; kNone: none
  std::uint32_t number;   // where names are numbers
  std::string_view name;  // as it is first defined; of a file, its path
};

struct Definition {
  Id symbol;
  Id file;
  Id section;  // kNone: a file
  Id item;     // kNone: a file
  support::ByteRange name;
  std::uint32_t value;  // of a word: the number that it gets; of a number: that
};

enum class Resolution : std::uint8_t {
  kFound,
  kExempt,  // it needs no definition: a root, a zero, an argument that a caller passes
  kMissing,
};

struct Reference {
  Id symbol;      // kNone: not found
  Id definition;  // the one that the library takes; kNone: none
  Id file;
  Id item;
  support::ByteRange name;
  Space space;  // where it is looked for
  std::uint32_t part;
  language::Role role;  // of a part of a value or repeater
  Resolution resolution;
  // The check takes the text for another name, and what is compiled is this word's number.
  bool hides;
};

}  // namespace rux::index

#endif  // INDEX_RECORDS_H_
