// The words that a path into a meta file or a debug meta file may go on with.
#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "compiled/datum.h"
#include "compiled/debug_meta.h"
#include "inspect/debug_find.h"
#include "inspect/debug_text.h"
#include "inspect/entry_value.h"
#include "inspect/file_view.h"
#include "ruxcomp/language/sections.h"
#include "tool/completion/completion.h"
#include "tool/completion/typed_path.h"

namespace rux::tool {
namespace {

constexpr char kPartFollows[] = "/";

bool HasNamedParts(const inspect::EntryValue& value) {
  return value.type || (!value.parts.empty() && !value.parts.front().name.empty());
}

void AddEntries(const inspect::FileView& view, const inspect::SectionKind& kind,
                std::size_t ordinal, TypedPath& path) {
  std::set<std::string> keys;  // of two entries with a key, a path leads to the first
  for (const inspect::KeyedValue& entry : view.EntriesOf(kind, ordinal)) {
    if (!keys.insert(entry.key).second) continue;
    path.AddName(entry.key, inspect::ValueText(entry.value),
                 HasNamedParts(entry.value) ? kPartFollows : "");
  }
}

void AddSections(const inspect::FileView& view, const inspect::SectionKind& kind, TypedPath& path) {
  for (std::size_t i = 0; i < view.CountOf(kind); ++i) {
    if (kind.HasNames()) {
      const inspect::SectionLabel label = view.LabelOf(kind, i);
      path.AddSection({i, label.name, label.id});
    } else if (path.NextBegins('@')) {
      path.AddOrdinal(i, "", kPartFollows);
    } else {
      AddEntries(view, kind, i, path);
    }
  }
}

void AddParts(const inspect::EntryValue& value, TypedPath& path) {
  if (HasNamedParts(value) && !path.NextBegins('@')) {
    if (value.type) path.AddName("Type", std::to_string(*value.type));
    for (const inspect::EntryPart& part : value.parts)
      path.AddName(part.name, inspect::PartText(part));
    return;
  }
  std::size_t ordinal = 0;
  for (const compiled::Datum& item : inspect::ItemsOf(value)) {
    path.AddOrdinal(ordinal++, inspect::PartText({"", false, {item}}));
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
  std::vector<Candidate> words = PathWords(file, "");
  for (Candidate& word : words) word.text.pop_back();  // nothing follows: no slash
  return words;
}

std::vector<Candidate> PathWords(const std::string& file, const std::string& typed) {
  TypedPath path(typed);
  const std::unique_ptr<inspect::FileView> view = inspect::OpenView(file);
  if (path.steps().empty()) {
    for (const inspect::SectionKind& kind : ruxcomp::language::kSectionKinds) {
      path.AddKind(kind.keyword, view->CountOf(kind));
    }
  } else if (path.steps().size() == 1) {
    AddSections(*view, view->ExpectKind(path.steps().front().text), path);
  } else {
    const inspect::Found found = view->Find(path.steps());
    if (found.part) return {};
    if (found.entry) {
      AddParts(found.entry->value, path);
    } else {
      AddEntries(*view, *found.kind, found.ordinal, path);
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
