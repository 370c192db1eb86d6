#include "inspect/debug_view.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/compiled_file.h"
#include "compiled/datum.h"
#include "compiled/debug_meta.h"
#include "compiled/verify.h"
#include "inspect/debug_find.h"
#include "inspect/debug_value.h"
#include "inspect/entry_value.h"
#include "inspect/file_view.h"
#include "inspect/path.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/language/sections.h"

namespace rux::inspect {
namespace {

compiled::DebugMeta Decoded(const std::string& path, std::string_view bytes) {
  compiled::Faults faults = compiled::Verify(bytes);
  if (!faults.empty()) throw compiled::Unsound(path, bytes);
  return compiled::DecodeDebugMeta(bytes, faults);
}

bool IsGiven(const compiled::DebugEntry& entry) { return entry.payload_type != 0; }

// The n-th of all values of the entry.
EntryPart ValueAt(const EntryValue& value, std::uint32_t n) {
  const std::vector<compiled::Datum> items = ItemsOf(value);
  if (n < items.size()) return {"", false, {items[n]}};
  throw NoValueAt(n, items.size());
}

}  // namespace

DebugView::DebugView(const std::string& path, std::string_view bytes)
    : FileView(path), meta_(Decoded(path, bytes)), places_(meta_), names_(meta_) {
  for (const std::vector<Section>& kind : meta_.kinds) {
    for (const Section& section : kind) {
      sections_[(section.identifier & ruxcomp::language::kKindMask) - 1].push_back(&section);
    }
  }
}

const SectionKind& DebugView::ExpectKind(const std::string& keyword) const {
  return KindNamed(keyword, false, "debug meta files");
}

const std::vector<const compiled::DebugSection*>& DebugView::SectionsOf(
    const SectionKind& kind) const {
  return sections_[(kind.source & ruxcomp::language::kKindMask) - 1];
}

SectionLabel DebugView::LabelOf(const SectionKind& kind, std::size_t ordinal) const {
  const Section& section = *SectionsOf(kind)[ordinal];
  return {ordinal, NameOf(section), IdOf(meta_, section)};
}

std::vector<std::string> DebugView::KeysOf(const SectionKind& kind, std::size_t ordinal) const {
  std::vector<std::string> keys;
  for (const compiled::DebugEntry& entry : SectionsOf(kind)[ordinal]->entries) {
    if (IsGiven(entry)) keys.push_back(entry.name);
  }
  return keys;
}

std::vector<KeyedValue> DebugView::EntriesOf(const SectionKind& kind, std::size_t ordinal) const {
  const Section& section = *SectionsOf(kind)[ordinal];
  std::vector<KeyedValue> entries;
  for (const compiled::DebugEntry& entry : section.entries) {
    if (IsGiven(entry)) entries.push_back({entry.name, NamedValueOf(section, entry)});
  }
  return entries;
}

std::optional<EntryValue> DebugView::EntryOf(const SectionKind& kind, std::size_t ordinal,
                                             const std::string& key) const {
  const Section& section = *SectionsOf(kind)[ordinal];
  for (const compiled::DebugEntry& entry : section.entries) {
    if (IsGiven(entry) && entry.name == key) return NamedValueOf(section, entry);
  }
  return std::nullopt;
}

std::string DebugView::SourceFileOf(const SectionKind& kind, std::size_t ordinal) const {
  const std::uint32_t file = SectionsOf(kind)[ordinal]->file_index;
  return file < places_.paths().size() ? places_.paths()[file] : "";
}

EntryValue DebugView::NamedValueOf(const Section& section,
                                   const compiled::DebugEntry& entry) const {
  EntryValue value = ValueOf(meta_, section, entry);
  const SectionKind* target = KindOfIds(section.identifier, entry.identifier);
  if (target == nullptr) return value;
  for (EntryPart& part : value.parts) {
    for (compiled::Datum& item : part.items) {
      if (item.IsNumber()) item.name = names_.Of(target, item.number);
    }
  }
  return value;
}

Found DebugView::Find(const std::vector<PathStep>& path) const {
  const std::string keyword = ExpectKeyword(path.front().text);
  const SectionKind* named = ruxcomp::language::FindKind(keyword);
  if (named != nullptr) ExpectSection(*named, path);
  // The first steps lead to an entry, or to a section when they are two and the second names one.
  const bool names_section = named != nullptr && path.size() > 1 &&
                             (named->HasNames() || inspect::OrdinalOf(path[1]).has_value());
  const std::size_t depth = names_section ? 3 : 2;
  const std::vector<PathStep> front(
      path.begin(), path.begin() + static_cast<std::ptrdiff_t>(std::min(path.size(), depth)));
  const DebugFound at = inspect::Find(meta_, front).front();
  const SectionKind& kind = *ruxcomp::language::FindSourceKind(at.section->identifier);
  const std::vector<const Section*>& sections = SectionsOf(kind);
  Found found{&kind,
              static_cast<std::size_t>(std::find(sections.begin(), sections.end(), at.section) -
                                       sections.begin())};
  if (at.entry == nullptr) return found;
  found.entry = KeyedValue{at.entry->name, NamedValueOf(*at.section, *at.entry)};
  if (path.size() == depth) return found;
  const PathStep& step = path[depth];
  const std::optional<std::uint32_t> number = inspect::OrdinalOf(step);
  found.part =
      number ? ValueAt(found.entry->value, *number) : PartNamed(found.entry->value, step.text);
  if (path.size() > depth + 1) throw PathTooLong();
  return found;
}

}  // namespace rux::inspect
