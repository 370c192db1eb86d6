#include <set>

#include "tool/completion/path_words.h"
#include "tool/completion/typed_path.h"
#include "tool/meta/kinds.h"
#include "tool/meta/meta_find.h"
#include "tool/meta/meta_view.h"
#include "tool/meta/value_text.h"

namespace rux {
namespace {

constexpr char kPartFollows[] = "/";

void AddEntries(const MetaView& meta, const MetaSection& section, TypedPath& path) {
  std::set<std::string> keys;  // of two entries with a key, a path leads to the first
  for (const tagGCENTRY& entry : section.record->entries) {
    const std::string key = meta.KeyOf(section, entry);
    const EntryValue value = ValueOf(meta, entry);
    const bool has_parts = value.type || value.parts.size() > 1;
    if (keys.insert(key).second) path.AddName(key, ValueText(value), has_parts ? kPartFollows : "");
  }
}

void AddSections(const MetaView& meta, const Kind& kind, TypedPath& path) {
  for (const MetaSection& section : meta.SectionsOf(kind)) {
    if (kind.has_names) {
      path.AddSection({section.ordinal, meta.NameOf(section), meta.IdOf(section)});
    } else if (path.NextBegins('@')) {
      path.AddOrdinal(section.ordinal, "", kPartFollows);
    } else {
      AddEntries(meta, section, path);
    }
  }
}

void AddParts(const MetaView& meta, const tagGCENTRY& entry, TypedPath& path) {
  const EntryValue value = ValueOf(meta, entry);
  const bool has_names = value.type || value.parts.size() > 1;
  if (has_names && !path.NextBegins('@')) {
    if (value.type) path.AddName("Type", std::to_string(*value.type));
    for (const EntryPart& part : value.parts) path.AddName(part.name, PartText(part));
    return;
  }
  for (std::size_t i = 0; i < entry.values.size(); ++i) {
    path.AddOrdinal(i, PartText({"", false, {meta.Resolve(entry.values[i])}}));
  }
}

}  // namespace

std::vector<Candidate> MetaPathWords(const std::string& file, const std::string& typed) {
  TypedPath path(typed);
  const MetaView meta(file);
  if (path.steps().empty()) {
    for (const Kind& kind : Kinds()) path.AddKind(kind.keyword, meta.CountOf(kind));
  } else if (path.steps().size() == 1) {
    AddSections(meta, ExpectKind(path.steps().front().text), path);
  } else {
    const Found found = Find(meta, path.steps());
    if (found.part) return {};
    if (found.entry == nullptr) {
      AddEntries(meta, found.section, path);
    } else {
      AddParts(meta, *found.entry, path);
    }
  }
  return path.TakeWords();
}

std::vector<Candidate> KindWords(const std::string& file) {
  std::vector<Candidate> words = MetaPathWords(file, "");
  for (Candidate& word : words) word.text.pop_back();  // nothing follows: no slash
  return words;
}

}  // namespace rux
