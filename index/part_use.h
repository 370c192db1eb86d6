// What the parts of an item are, by the rows of the language.
#ifndef INDEX_PART_USE_H_
#define INDEX_PART_USE_H_

#include <cstddef>
#include <cstdint>

#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

namespace rux::index {

namespace language = ruxcomp::language;

enum class Use : std::uint8_t {
  kText,     // says nothing of other things
  kNumber,   // a number or a word
  kWord,     // a word, which need not be defined
  kType,     // of a value: a word
  kPath,     // of a file to include
  kField,    // of a value or a repeater: see the role
  kDropped,  // the library does not look at it
};

struct PartUse {
  Use use = Use::kText;
  language::Role role = language::Role::kNone;     // of a field
  const language::Field* field = nullptr;          // the one that takes the part
  const language::Reference* reference = nullptr;  // what a text or number refers to
};

// Of the part with that number in an item that is such an entry of a section. `record`: of a value
// whose type is known and of a repeater; else null.
PartUse UseOfPart(language::SectionId section, std::uint32_t entry,
                  const language::ValueType* record, std::size_t part);

}  // namespace rux::index

#endif  // INDEX_PART_USE_H_
