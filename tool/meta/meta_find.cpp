#include "tool/meta/meta_find.h"

#include <fmt/format.h>
#include <strings.h>

#include <algorithm>

#include "tool/failure.h"
#include "tool/text/name_text.h"
#include "tool/text/nearest.h"
#include "tool/text/safe_text.h"

namespace rux {
namespace {

constexpr char kIdSign = '#';
constexpr char kOrdinalSign = '@';

Failure NotThere(const std::string& text) { return Failure(ExitStatus::kFindings, text); }

std::string IdText(std::uint32_t id) { return fmt::format("#0x{:X}", id); }

// A section by its name, ID or ordinal among those of a kind.
class SectionFinder {
 public:
  SectionFinder(const MetaView& meta, const Kind& kind)
      : meta_(meta), kind_(kind), sections_(meta.SectionsOf(kind)) {
    if (sections_.empty()) throw NotThere("there is no " + kind.keyword + " section");
  }

  const std::vector<MetaSection>& sections() const { return sections_; }

  const MetaSection& Find(const PathStep& step) const {
    if (const auto ordinal = step.NumberBehind(kOrdinalSign)) return ByOrdinal(*ordinal);
    if (const auto id = step.NumberBehind(kIdSign)) return ById(*id);
    return ByName(step.text);
  }

 private:
  const MetaSection& ByOrdinal(std::uint32_t ordinal) const {
    if (ordinal < sections_.size()) return sections_[ordinal];
    throw NotThere(fmt::format("there is no {} @{}; the last one is @{}", kind_.keyword, ordinal,
                               sections_.size() - 1));
  }

  const MetaSection& ById(std::uint32_t id) const {
    std::vector<std::string> ids;
    for (const MetaSection& section : sections_) {
      const std::optional<std::uint32_t> other = meta_.IdOf(section);
      if (!other) continue;
      if (*other == id) return section;
      ids.push_back(IdText(*other));
    }
    throw NotThere("there is no " + kind_.keyword + " with the ID " + IdText(id) +
                   NearText(IdText(id), ids, SafeText));
  }

  const MetaSection& ByName(const std::string& name) const {
    std::vector<std::string> names;
    for (const MetaSection& section : sections_) {
      const std::optional<std::string> other = meta_.NameOf(section);
      if (!other) continue;
      if (*other == name) return section;
      names.push_back(*other);
    }
    throw NotThere("there is no " + kind_.keyword + " " + NameText(name) + NearText(name, names));
  }

  const MetaView& meta_;
  const Kind& kind_;
  const std::vector<MetaSection> sections_;
};

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
  throw NotThere("no " + sections.front().kind->keyword + " section has an entry " + NameText(key) +
                 NearText(key, keys));
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
  const SectionFinder sections(meta, kind);
  auto step = path.begin() + 1;
  Found found;
  if (kind.has_names || step->NumberBehind(kOrdinalSign)) {
    found.section = sections.Find(*step++);
    if (step == path.end()) return found;
    std::vector<std::string> keys;
    found.entry = FindEntry(meta, found.section, step->text, keys);
    if (found.entry == nullptr) {
      throw NotThere("the " + kind.keyword + " section has no entry " + NameText(step->text) +
                     NearText(step->text, keys));
    }
  } else {
    found = FindInAny(meta, sections.sections(), step->text);
  }
  if (++step == path.end()) return found;
  const auto number = step->NumberBehind(kOrdinalSign);
  found.part =
      number ? ValueAt(meta, *found.entry, *number) : PartNamed(meta, *found.entry, step->text);
  if (++step != path.end()) {
    throw Failure(ExitStatus::kWrongUsage, "the path goes on behind a part of an entry");
  }
  return found;
}

}  // namespace rux
