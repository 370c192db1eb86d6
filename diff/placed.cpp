#include "diff/placed.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/datum.h"
#include "diff/change.h"
#include "diff/matching.h"
#include "inspect/entry_value.h"
#include "machine/machine.h"
#include "machine/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "support/safe_text.h"

namespace rux::diff {

Side PlacedSection::SideFor(std::string_view key) const {
  Side side{section.id(), std::nullopt, std::nullopt, std::nullopt};
  if (section.has_name()) side.name = std::string(section.name());
  side.place = machine->PlaceOf(*kind, ordinal, key);
  return side;
}

std::string PlacedEntry::Key() const { return machine::KeyOf(section.section, entry); }
Side PlacedEntry::SideOf() const { return section.SideFor(Key()); }

const language::SectionKind* KindOfIds(const PlacedEntry& entry) {
  return machine::KindOfCompiledIds(entry.section.kind->compiled, entry.entry.identifier());
}

const language::LimitRow* LimitOf(const PlacedEntry& entry) {
  return machine::LimitWith(entry.entry.identifier());
}

std::string IdText(const machine::Machine& machine, const language::SectionKind& kind,
                   std::uint32_t id) {
  std::string text = fmt::format("0x{:X}", id);
  const ruxcomp::Section named =
      machine::SectionFor(machine.model(), &kind, compiled::NumberDatum(id));
  if (named && named.has_name()) text += ' ' + support::NameText(named.name());
  return text;
}

std::string TextOf(const PlacedEntry& entry) {
  const machine::Machine& machine = *entry.section.machine;
  const std::optional<std::uint32_t> number = NumberOf(entry.entry.value());
  if (number && LimitOf(entry) != nullptr) return entry.section.Quantity().TextOf(*number);
  const language::SectionKind* kind = KindOfIds(entry);
  if (number && kind != nullptr && entry.entry.values().size() == 1)
    return IdText(machine, *kind, *number);
  return inspect::ValueText(machine::ValueOf(entry.entry));
}

std::vector<PlacedEntry> EntriesOf(const PlacedSection& section) {
  std::vector<PlacedEntry> entries;
  for (const ruxcomp::Entry entry : section.section.entries()) {
    if (!machine::IsLabel(entry)) entries.push_back({section, entry});
  }
  return entries;
}

}  // namespace rux::diff
