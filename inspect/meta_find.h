// Answering a path with what is there.
#ifndef INSPECT_META_FIND_H_
#define INSPECT_META_FIND_H_

#include <optional>
#include <string>
#include <vector>

#include "inspect/entry_value.h"
#include "inspect/meta_path.h"
#include "inspect/meta_view.h"
#include "ruxcomp/language/sections.h"

namespace rux::inspect {

// The kind of that keyword. Throws a Failure that names the kinds near it.
const ruxcomp::language::SectionKind& ExpectKind(const std::string& keyword);

// What a path leads to: a section, one of its entries, or a part of that entry.
struct Found {
  ruxcomp::Section section;
  ruxcomp::Entry entry = {};
  std::optional<EntryPart> part = {};
};

// KIND/SECTION[/ENTRY[/PART]]
//
//   SECTION  a name, #ID, or @ordinal. In kinds without names, a name is that of an entry and leads
//            to it in the first section that has it.
//   ENTRY    the key as a script writes it
//   PART     Type or the name of a part; @n is the n-th value of the entry, from 0
//
// Throws a Failure of findings that says what does not exist and which names are near it, and one
// of wrong usage for a path of another form.
Found Find(const MetaView& meta, const std::vector<PathStep>& path);

}  // namespace rux::inspect

#endif  // INSPECT_META_FIND_H_
