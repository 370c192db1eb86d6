// Sections and entries with the machines that they are of.
#ifndef DIFF_PLACED_H_
#define DIFF_PLACED_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "diff/change.h"
#include "machine/machine.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"

namespace rux::diff {

// A section, with the machine that it is of.
struct PlacedSection {
  const machine::Machine* machine;
  const machine::Machine* rules;  // whose project file states what its limits are numbers of
  const language::SectionKind* kind;
  std::uint32_t ordinal;
  ruxcomp::Section section;

  // What is said of it, or of one of its entries.
  Side SideFor(std::string_view key = {}) const;
  machine::Quantity Quantity() const { return rules->QuantityOf(section); }
};

// An entry with the section that it is in.
struct PlacedEntry {
  PlacedSection section;
  ruxcomp::Entry entry;

  std::string Key() const;
  Side SideOf() const;  // without its text
};

// The kind of the sections whose IDs the entry gives; null when it gives none.
const language::SectionKind* KindOfIds(const PlacedEntry& entry);

// Null for an entry that is not a limit.
const language::LimitRow* LimitOf(const PlacedEntry& entry);

// "0x101 CPU0_TEMP"
std::string IdText(const machine::Machine& machine, const language::SectionKind& kind,
                   std::uint32_t id);

// The whole value; of a limit, the amount.
std::string TextOf(const PlacedEntry& entry);

// All but those that say what the section is called.
std::vector<PlacedEntry> EntriesOf(const PlacedSection& section);

}  // namespace rux::diff

#endif  // DIFF_PLACED_H_
