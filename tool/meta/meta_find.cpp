#include "tool/meta/meta_find.h"

#include <fmt/format.h>
#include <strings.h>

#include <algorithm>

#include "tool/failure.h"
#include "tool/meta/section_search.h"
#include "tool/text/name_text.h"
#include "tool/text/nearest.h"

namespace rux {
namespace {

NamedSections NamesOf(const MetaView& meta, const std::vector<MetaSection>& sections) {
  return {sections.front().kind->keyword, sections.size(),
          [&](std::size_t i) { return meta.NameOf(sections[i]); },
          [&](std::size_t i) { return meta.IdOf(sections[i]); }};
}

// Null when the section does not have it; `keys` then gets what it has.
const tagGCENTRY* FindEntry(const MetaView& meta, const MetaSection& section,
                            const std::string& key, std::vector<std::string>& keys) {
  for (const tagGCENTRY& entry : section.record->entries) {
    std::string other = meta.KeyOf(section, entry);
    if (other == key) return &entry;
    keys.push_back(std::move(other));
  }
  return nullptr;
}

// The entry of that key in the first of the sections that has it.
Found FindInAny(const MetaView& meta, const std::vector<MetaSection>& sections,
                const std::string& key) {
  std::vector<std::string> keys;
  for (const MetaSection& section : sections) {
    if (const tagGCENTRY* entry = FindEntry(meta, section, key, keys)) {
      return {section, entry, std::nullopt};
    }
  }
  throw NoEntry("no " + sections.front().kind->keyword + " section has an", key, keys);
}

// The n-th of all values of the entry.
EntryPart ValueAt(const MetaView& meta, const tagGCENTRY& entry, std::uint32_t n) {
  if (n < entry.values.size()) return {"", false, {meta.Resolve(entry.values[n])}};
  throw NotThere(fmt::format("there is no value @{}; the entry has {}", n, entry.values.size()));
}

EntryPart PartNamed(const MetaView& meta, const tagGCENTRY& entry, const std::string& name) {
  EntryValue value = ValueOf(meta, entry);
  if (value.type) {
    Datum type;
    type.is = Datum::Class::kNumber;
    type.number = *value.type;
    value.parts.insert(value.parts.begin(), {"Type", false, {type}});
  }
  std::vector<std::string> names;
  for (const EntryPart& part : value.parts) {
    if (part.name.empty()) continue;
    if (strcasecmp(part.name.c_str(), name.c_str()) == 0) return part;
    names.push_back(part.name);
  }
  throw NotThere("the entry has no part " + NameText(name) + NearText(name, names));
}

void CheckForm(const Kind& kind, const std::vector<PathStep>& path) {
  if (path.size() == 1) {
    throw Failure(ExitStatus::kWrongUsage,
                  "the path names no section (rux ls lists those of kind " + kind.keyword + ")");
  }
}

}  // namespace

const Kind& ExpectKind(const std::string& keyword) {
  if (const Kind* kind = FindKind(keyword)) return *kind;
  std::vector<std::string> keywords;
  for (const Kind& kind : Kinds()) keywords.push_back(kind.keyword);
  throw NotThere("meta files have no kind " + NameText(keyword) + NearText(keyword, keywords));
}

Found Find(const MetaView& meta, const std::vector<PathStep>& path) {
  const Kind& kind = ExpectKind(path.front().text);
  CheckForm(kind, path);
  const std::vector<MetaSection> sections = meta.SectionsOf(kind);
  if (sections.empty()) throw NotThere("there is no " + kind.keyword + " section");
  auto step = path.begin() + 1;
  Found found;
  if (kind.has_names || OrdinalOf(*step)) {
    found.section = sections[FindSection(NamesOf(meta, sections), *step++)];
    if (step == path.end()) return found;
    std::vector<std::string> keys;
    found.entry = FindEntry(meta, found.section, step->text, keys);
    if (found.entry == nullptr) {
      throw NoEntry("the " + kind.keyword + " section has no", step->text, keys);
    }
  } else {
    found = FindInAny(meta, sections, step->text);
  }
  if (++step == path.end()) return found;
  const auto number = OrdinalOf(*step);
  found.part =
      number ? ValueAt(meta, *found.entry, *number) : PartNamed(meta, *found.entry, step->text);
  if (++step != path.end()) {
    throw Failure(ExitStatus::kWrongUsage, "the path goes on behind a part of an entry");
  }
  return found;
}

}  // namespace rux
