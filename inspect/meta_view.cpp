#include "inspect/meta_view.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "compiled/datum.h"
#include "compiled/meta.h"
#include "inspect/entry_value.h"
#include "inspect/file_view.h"
#include "inspect/path.h"
#include "machine/meta_model.h"
#include "machine/value.h"
#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"

namespace rux::inspect {

MetaView::MetaView(const std::string& path, std::unique_ptr<ruxcomp::file::KeptBytes> bytes)
    : FileView(path), bytes_(std::move(bytes)), model_(machine::OpenModel(path, bytes_->view())) {}

namespace {

using machine::DatumOf;
using machine::KeyOf;
using machine::NamedValueOf;

std::optional<std::size_t> OrdinalOf(const ruxcomp::Section& section) {
  if (!section) return std::nullopt;
  return section.ordinal();
}

NamedSections NamesOf(const ruxcomp::Model* model, const SectionKind& kind, Lister lister) {
  const ruxcomp::Sections sections = model->sections(kind.compiled);
  const auto name = [=](std::size_t i) -> std::optional<std::string> {
    if (!sections[i].has_name()) return std::nullopt;
    return std::string(sections[i].name());
  };
  const std::uint32_t section = kind.compiled;
  return {
      kind.keyword,
      sections.size(),
      name,
      [=](std::size_t i) { return sections[i].id(); },
      [=](const std::string& sought) { return OrdinalOf(model->section_named(section, sought)); },
      [=](std::uint32_t id) { return OrdinalOf(model->section_with_id(section, id)); },
      lister};
}

// By the names that entries of that key have. Entries of other classes may have these, too: then
// this finds nothing.
ruxcomp::Entry EntryByName(const ruxcomp::Section& section, const std::string& key) {
  for (const std::string& name : compiled::NamesOfKey(key)) {
    const ruxcomp::Entry entry = section.entry_named(name);
    if (entry && KeyOf(section, entry) == key) return entry;
  }
  return {};
}

// None when the section does not have it; `keys` then gets what it has.
ruxcomp::Entry FindEntry(const ruxcomp::Section& section, const std::string& key,
                         std::vector<std::string>& keys) {
  if (const ruxcomp::Entry entry = EntryByName(section, key)) return entry;
  for (const ruxcomp::Entry entry : section.entries()) {
    std::string other = KeyOf(section, entry);
    if (other == key) return entry;
    keys.push_back(std::move(other));
  }
  return {};
}

struct FoundEntry {
  ruxcomp::Section section;
  ruxcomp::Entry entry = {};
};

// The entry of that key in the first section of the kind that has it.
FoundEntry FindInAny(const ruxcomp::Model& model, const SectionKind& kind, const std::string& key) {
  for (const std::string& name : compiled::NamesOfKey(key)) {
    const ruxcomp::Section section = model.section_named(kind.compiled, name);
    if (const ruxcomp::Entry entry = EntryByName(section, key)) return {section, entry};
  }
  std::vector<std::string> keys;
  for (const ruxcomp::Section section : model.sections(kind.compiled)) {
    if (const ruxcomp::Entry entry = FindEntry(section, key, keys)) return {section, entry};
  }
  throw EntryNotFound(std::string("no ") + kind.keyword + " section has an", key, keys);
}

// The n-th of all values of the entry.
EntryPart ValueAt(const ruxcomp::Entry& entry, std::uint32_t n) {
  const ruxcomp::Values values = entry.values();
  if (n < values.size()) return {"", false, {DatumOf(values[n])}};
  throw NoValueAt(n, values.size());
}

}  // namespace

const SectionKind& KindInMeta(const std::string& keyword) {
  return FileView::KindNamed(keyword, true, "meta files");
}

std::size_t MetaView::CountOf(const SectionKind& kind) const {
  return kind.IsCompiled() ? SectionsOf(kind).size() : 0;
}

SectionLabel MetaView::LabelOf(const SectionKind& kind, std::size_t ordinal) const {
  const ruxcomp::Section section = SectionsOf(kind)[ordinal];
  SectionLabel label{ordinal, std::nullopt, section.id()};
  if (section.has_name()) label.name = std::string(section.name());
  return label;
}

std::vector<std::string> MetaView::KeysOf(const SectionKind& kind, std::size_t ordinal) const {
  const ruxcomp::Section section = SectionsOf(kind)[ordinal];
  std::vector<std::string> keys;
  for (const ruxcomp::Entry entry : section.entries()) keys.push_back(KeyOf(section, entry));
  return keys;
}

std::vector<KeyedValue> MetaView::EntriesOf(const SectionKind& kind, std::size_t ordinal) const {
  const ruxcomp::Section section = SectionsOf(kind)[ordinal];
  std::vector<KeyedValue> entries;
  for (const ruxcomp::Entry entry : section.entries()) {
    entries.push_back({KeyOf(section, entry), NamedValueOf(model_, section, entry)});
  }
  return entries;
}

std::optional<EntryValue> MetaView::EntryOf(const SectionKind& kind, std::size_t ordinal,
                                            const std::string& key) const {
  const ruxcomp::Section section = SectionsOf(kind)[ordinal];
  std::vector<std::string> keys;
  const ruxcomp::Entry entry = FindEntry(section, key, keys);
  return entry ? std::make_optional(NamedValueOf(model_, section, entry)) : std::nullopt;
}

const compiled::TableCells* MetaView::CellsOf(const SectionKind& kind, std::size_t ordinal) const {
  return kind.source == ruxcomp::language::SECTION_TABLE
             ? model_.table(static_cast<std::uint32_t>(ordinal))
             : nullptr;
}

Found FindIn(const ruxcomp::Model& model, const std::vector<PathStep>& path, Lister lister) {
  const SectionKind& kind = KindInMeta(path.front().text);
  ExpectSection(kind, path, lister);
  const ruxcomp::Sections sections = model.sections(kind.compiled);
  if (sections.empty()) throw NotFound(std::string("there is no ") + kind.keyword + " section");
  auto step = path.begin() + 1;
  FoundEntry at;
  if (kind.HasNames() || inspect::OrdinalOf(*step)) {
    at.section = sections[FindSection(NamesOf(&model, kind, lister), *step++)];
    if (step == path.end()) return {&kind, at.section.ordinal()};
    std::vector<std::string> keys;
    at.entry = FindEntry(at.section, step->text, keys);
    if (!at.entry)
      throw EntryNotFound(std::string("the ") + kind.keyword + " section has no", step->text, keys);
  } else {
    at = FindInAny(model, kind, step->text);
  }
  Found found{&kind, at.section.ordinal(),
              KeyedValue{KeyOf(at.section, at.entry), NamedValueOf(model, at.section, at.entry)}};
  if (++step == path.end()) return found;
  const auto number = inspect::OrdinalOf(*step);
  found.part = number ? ValueAt(at.entry, *number) : PartNamed(found.entry->value, step->text);
  if (++step != path.end()) throw PathTooLong();
  return found;
}

}  // namespace rux::inspect
