// The values of a compiled entry, by the names of their parts, and what they mean.
#ifndef MACHINE_VALUE_H_
#define MACHINE_VALUE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/datum.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"

namespace rux::machine {

struct EntryPart {
  std::string name;  // empty: the whole of an entry that has no named parts
  bool is_list;
  std::vector<compiled::Datum> items;
  bool is_address = false;  // of a register or a bus, for people in hexadecimal
};

struct EntryValue {
  std::optional<std::uint32_t> type;  // of a value or global entry
  std::vector<EntryPart> parts;
  std::string written_type = {};  // as the script wrote it; empty when that is not known
};

// Whether the entry says what its section is called: its NAME or ID.
bool IsLabel(const ruxcomp::Entry& entry);

// The limit that an entry with that identifier of the meta file is; null for any other entry.
const ruxcomp::language::LimitRow* LimitWith(std::uint32_t identifier);

// Whether the part of a value of that type is where something is on a bus.
bool IsAddress(std::uint32_t type, std::string_view part);

// The kind of sections whose IDs an entry gives, both named by their identifiers in the source
// model, or in the meta file; null when it gives none.
const ruxcomp::language::SectionKind* KindOfIds(std::uint32_t section, std::uint32_t entry);
const ruxcomp::language::SectionKind* KindOfCompiledIds(std::uint32_t section, std::uint32_t entry);

// The kind of sections whose NAMEs are in a symbol table; null when they are none.
const ruxcomp::language::SectionKind* KindOfNames(std::uint32_t index_class);

// The section that a part of a value refers to: by NAME, or by ID when the entry gives the IDs of
// that kind (null: it gives none). No section when it refers to nothing.
ruxcomp::Section SectionFor(const ruxcomp::Model& model, const ruxcomp::language::SectionKind* ids,
                            const compiled::Datum& datum);

// What a value is, with names as a script writes them.
compiled::Datum DatumOf(const ruxcomp::Value& value);

// Value, global and repeater entries have the parts that the library's selectors pick; what no
// selector fits is one part "Values". All other entries are one nameless part.
EntryValue ValueOf(const ruxcomp::Entry& entry);

// The same, with the names of the sections whose IDs it gives.
EntryValue NamedValueOf(const ruxcomp::Model& model, const ruxcomp::Section& section,
                        const ruxcomp::Entry& entry);

// The key of an entry as a script writes it in such a section.
std::string KeyOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry);

}  // namespace rux::machine

#endif  // MACHINE_VALUE_H_
