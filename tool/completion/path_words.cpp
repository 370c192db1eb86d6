// The words that a path into a meta file or a debug meta file may go on with.
#include <fmt/format.h>

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/debug_find.h"
#include "inspect/debug_text.h"
#include "inspect/entry_value.h"
#include "inspect/meta_view.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/model/handles.h"
#include "ruxcomp/model/value.h"
#include "tool/completion/completion.h"
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

void AddKinds(const compiled::DebugMeta& meta, TypedPath& path) {
  for (const std::vector<compiled::DebugSection>& sections : meta.kinds) {
    if (!sections.empty()) path.AddKind(sections.front().name, sections.size());
  }
  path.AddKind(inspect::kWordKind, meta.words.size(), "defined word");
}

void AddWords(const compiled::DebugMeta& meta, TypedPath& path) {
  for (const compiled::DebugWord& word : meta.words) {
    path.AddName(word.name, inspect::NumberText(word.value));
  }
}

void AddEntries(const compiled::DebugSection& section, TypedPath& path) {
  std::set<std::string> keys;  // a path leads to all entries with a key
  for (const compiled::DebugEntry& entry : section.entries) {
    if (entry.payload_type == 0 || !keys.insert(entry.name).second) continue;
    path.AddName(entry.name, inspect::ValueText(entry));
  }
}

void AddSections(const compiled::DebugMeta& meta,
                 const std::vector<compiled::DebugSection>& sections, TypedPath& path) {
  const ruxcomp::language::SectionKind* kind = ruxcomp::language::FindKind(sections.front().name);
  const bool have_names = kind != nullptr && kind->HasNames();
  for (std::size_t i = 0; i < sections.size(); ++i) {
    if (have_names) {
      path.AddSection({i, inspect::NameOf(sections[i]), inspect::IdOf(meta, sections[i])});
    } else if (path.NextBegins('@')) {
      path.AddOrdinal(i, "", "/");
    } else {
      AddEntries(sections[i], path);
    }
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

std::vector<Candidate> DebugMetaPathWords(const std::string& file, const std::string& typed) {
  TypedPath path(typed);
  const compiled::DebugMeta meta = compiled::ReadDebugMeta(file);
  if (path.steps().empty()) {
    AddKinds(meta, path);
  } else if (path.steps().size() == 1) {
    const std::string keyword = inspect::ExpectKeyword(path.steps().front().text);
    if (keyword == inspect::kWordKind) AddWords(meta, path);
    for (const std::vector<compiled::DebugSection>& sections : meta.kinds) {
      if (!sections.empty() && sections.front().name == keyword) AddSections(meta, sections, path);
    }
  } else {
    const inspect::DebugFound found = inspect::Find(meta, path.steps()).front();
    if (found.entry == nullptr) AddEntries(*found.section, path);
  }
  return path.TakeWords();
}

}  // namespace rux::tool
