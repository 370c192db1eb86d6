#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "inspect/entry_value.h"
#include "inspect/meta_find.h"
#include "inspect/meta_view.h"
#include "inspect/value_text.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "tool/completion/candidate.h"
#include "tool/completion/path_words.h"
#include "tool/completion/typed_path.h"

namespace rux::tool {
namespace {

constexpr char kPartFollows[] = "/";

bool HasNamedParts(const inspect::EntryValue& value) {
  return value.type || (!value.parts.empty() && !value.parts.front().name.empty());
}

void AddEntries(const ruxcomp::Section& section, TypedPath& path) {
  std::set<std::string> keys;  // of two entries with a key, a path leads to the first
  for (const ruxcomp::Entry entry : section.entries()) {
    const std::string key = inspect::KeyOf(section, entry);
    if (!keys.insert(key).second) continue;
    const inspect::EntryValue value = inspect::ValueOf(entry);
    path.AddName(key, inspect::ValueText(value), HasNamedParts(value) ? kPartFollows : "");
  }
}

void AddSections(const inspect::MetaView& meta, const ruxcomp::language::SectionKind& kind,
                 TypedPath& path) {
  for (const ruxcomp::Section section : meta.SectionsOf(kind)) {
    if (kind.HasNames()) {
      const auto name =
          section.has_name() ? std::optional<std::string>(section.name()) : std::nullopt;
      path.AddSection({section.ordinal(), name, section.id()});
    } else if (path.NextBegins('@')) {
      path.AddOrdinal(section.ordinal(), "", kPartFollows);
    } else {
      AddEntries(section, path);
    }
  }
}

void AddParts(const ruxcomp::Entry& entry, TypedPath& path) {
  const inspect::EntryValue value = inspect::ValueOf(entry);
  if (HasNamedParts(value) && !path.NextBegins('@')) {
    if (value.type) path.AddName("Type", std::to_string(*value.type));
    for (const inspect::EntryPart& part : value.parts)
      path.AddName(part.name, inspect::PartText(part));
    return;
  }
  std::size_t ordinal = 0;
  for (const ruxcomp::Value item : entry.values()) {
    path.AddOrdinal(ordinal++, inspect::PartText({"", false, {inspect::DatumOf(item)}}));
  }
}

}  // namespace

std::vector<Candidate> KindWords(const std::string& file) {
  std::vector<Candidate> words = MetaPathWords(file, "");
  for (Candidate& word : words) word.text.pop_back();  // nothing follows: no slash
  return words;
}

std::vector<Candidate> MetaPathWords(const std::string& file, const std::string& typed) {
  TypedPath path(typed);
  const inspect::MetaView meta(file);
  if (path.steps().empty()) {
    for (const ruxcomp::language::SectionKind& kind : ruxcomp::language::kSectionKinds) {
      if (kind.IsCompiled()) path.AddKind(kind.keyword, meta.SectionsOf(kind).size());
    }
  } else if (path.steps().size() == 1) {
    AddSections(meta, inspect::ExpectKind(path.steps().front().text), path);
  } else {
    const inspect::Found found = inspect::Find(meta, path.steps());
    if (found.part) return {};
    if (found.entry) {
      AddParts(found.entry, path);
    } else {
      AddEntries(found.section, path);
    }
  }
  return path.TakeWords();
}

}  // namespace rux::tool
