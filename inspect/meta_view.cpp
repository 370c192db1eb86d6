#include "inspect/meta_view.h"

#include <fmt/format.h>
#include <strings.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "compiled/compiled_file.h"
#include "compiled/datum.h"
#include "inspect/entry_value.h"
#include "inspect/path.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/records.h"
#include "ruxcomp/verify.h"
#include "support/failure.h"
#include "support/nearest.h"
#include "support/safe_text.h"

namespace rux::inspect {

MetaView::MetaView(const std::string& path) : path_(path) {
  constexpr auto kForm = compiled::Form::kMeta;
  compiled::MapWholeFile(path, bytes_);
  compiled::ExpectForm(path, bytes_.view(), kForm);
  ruxcomp::Fault fault;
  std::optional<ruxcomp::Model> opened = ruxcomp::Model::OpenBytes(bytes_.view(), &fault);
  if (!opened) throw compiled::Unsound(path, kForm, fault);
  model_ = std::move(*opened);
}

compiled::Datum DatumOf(const ruxcomp::Value& value) {
  if (const std::optional<compiled::Datum> immediate = compiled::ImmediateDatum(value.index()))
    return *immediate;
  switch (value.kind()) {
    case RUX_DATA_NUMBER:
      return compiled::NumberDatum(value.number());
    case RUX_DATA_STRING:
      return compiled::TextDatum(value.index(), value.text());
    default:
      return {};
  }
}

std::string KeyOf(const ruxcomp::Section& section, const ruxcomp::Entry& entry) {
  std::string key =
      compiled::KeyText(section.kind(), entry.identifier(), DatumOf(entry.identity()));
  return key.empty() ? fmt::format("(entry 0x{:08X})", entry.identifier()) : key;
}

namespace {

std::optional<std::size_t> OrdinalOf(const ruxcomp::Section& section) {
  if (!section) return std::nullopt;
  return section.ordinal();
}

NamedSections NamesOf(const MetaView& meta, const ruxcomp::language::SectionKind& kind) {
  const ruxcomp::Sections sections = meta.SectionsOf(kind);
  const auto name = [=](std::size_t i) -> std::optional<std::string> {
    if (!sections[i].has_name()) return std::nullopt;
    return std::string(sections[i].name());
  };
  const ruxcomp::Model* model = &meta.model();
  const std::uint32_t section = kind.compiled;
  return {
      kind.keyword,
      sections.size(),
      name,
      [=](std::size_t i) { return sections[i].id(); },
      [=](const std::string& sought) { return OrdinalOf(model->section_named(section, sought)); },
      [=](std::uint32_t id) { return OrdinalOf(model->section_with_id(section, id)); }};
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

// The entry of that key in the first section of the kind that has it.
Found FindInAny(const MetaView& meta, const ruxcomp::language::SectionKind& kind,
                const std::string& key) {
  for (const std::string& name : compiled::NamesOfKey(key)) {
    const ruxcomp::Section section = meta.model().section_named(kind.compiled, name);
    if (const ruxcomp::Entry entry = EntryByName(section, key)) return {section, entry};
  }
  std::vector<std::string> keys;
  for (const ruxcomp::Section section : meta.SectionsOf(kind)) {
    if (const ruxcomp::Entry entry = FindEntry(section, key, keys)) return {section, entry};
  }
  throw EntryNotFound(std::string("no ") + kind.keyword + " section has an", key, keys);
}

// The n-th of all values of the entry.
EntryPart ValueAt(const ruxcomp::Entry& entry, std::uint32_t n) {
  const ruxcomp::Values values = entry.values();
  if (n < values.size()) return {"", false, {DatumOf(values[n])}};
  throw NotFound(fmt::format("there is no value @{}; the entry has {}", n, values.size()));
}

EntryPart PartNamed(const ruxcomp::Entry& entry, const std::string& name) {
  EntryValue value = ValueOf(entry);
  if (value.type) {
    value.parts.insert(value.parts.begin(), {"Type", false, {compiled::NumberDatum(*value.type)}});
  }
  std::vector<std::string> names;
  for (const EntryPart& part : value.parts) {
    if (part.name.empty()) continue;
    if (strcasecmp(part.name.c_str(), name.c_str()) == 0) return part;
    names.push_back(part.name);
  }
  throw NotFound("the entry has no part " + support::NameText(name) +
                 support::NearText(name, names));
}

void CheckForm(const ruxcomp::language::SectionKind& kind, const std::vector<PathStep>& path) {
  if (path.size() == 1) {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "the path names no section (rux ls lists those of kind {})",
                           kind.keyword);
  }
}

}  // namespace

const ruxcomp::language::SectionKind& ExpectKind(const std::string& keyword) {
  std::vector<std::string> keywords;
  for (const ruxcomp::language::SectionKind& kind : ruxcomp::language::kSectionKinds) {
    if (!kind.IsCompiled()) continue;
    if (strcasecmp(kind.keyword, keyword.c_str()) == 0) return kind;
    keywords.emplace_back(kind.keyword);
  }
  throw NotFound("meta files have no kind " + support::NameText(keyword) +
                 support::NearText(keyword, keywords, "'rux ls FILE' lists the kinds"));
}

Found Find(const MetaView& meta, const std::vector<PathStep>& path) {
  const ruxcomp::language::SectionKind& kind = ExpectKind(path.front().text);
  CheckForm(kind, path);
  const ruxcomp::Sections sections = meta.SectionsOf(kind);
  if (sections.empty()) throw NotFound(std::string("there is no ") + kind.keyword + " section");
  auto step = path.begin() + 1;
  Found found;
  if (kind.HasNames() || OrdinalOf(*step)) {
    found.section = sections[FindSection(NamesOf(meta, kind), *step++)];
    if (step == path.end()) return found;
    std::vector<std::string> keys;
    found.entry = FindEntry(found.section, step->text, keys);
    if (!found.entry)
      throw EntryNotFound(std::string("the ") + kind.keyword + " section has no", step->text, keys);
  } else {
    found = FindInAny(meta, kind, step->text);
  }
  if (++step == path.end()) return found;
  const auto number = OrdinalOf(*step);
  found.part = number ? ValueAt(found.entry, *number) : PartNamed(found.entry, step->text);
  if (++step != path.end()) {
    throw support::Failure(support::ExitStatus::kWrongUsage,
                           "the path goes on behind a part of an entry");
  }
  return found;
}

}  // namespace rux::inspect
