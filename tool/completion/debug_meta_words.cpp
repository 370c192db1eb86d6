#include <fmt/format.h>

#include <set>

#include "compiled/debug_meta.h"
#include "compiled/keywords.h"
#include "inspect/debug_find.h"
#include "inspect/debug_text.h"
#include "inspect/kinds.h"
#include "tool/completion/path_words.h"
#include "tool/completion/typed_path.h"

namespace rux {
namespace {

void AddKinds(const DebugMeta& meta, TypedPath& path) {
  for (const std::vector<DebugSection>& sections : meta.kinds) {
    if (!sections.empty()) path.AddKind(sections.front().name, sections.size());
  }
  path.AddKind(kWordKind, meta.words.size(), "defined word");
}

void AddWords(const DebugMeta& meta, TypedPath& path) {
  for (const DebugWord& word : meta.words) {
    path.AddName(word.name, fmt::format("{0} (0x{0:X})", word.value));
  }
}

void AddEntries(const DebugSection& section, TypedPath& path) {
  std::set<std::string> keys;  // a path leads to all entries with a key
  for (const DebugEntry& entry : section.entries) {
    if (entry.payload_type == 0 || !keys.insert(entry.name).second) continue;
    path.AddName(entry.name, ValueText(entry));
  }
}

void AddSections(const DebugMeta& meta, const std::vector<DebugSection>& sections,
                 TypedPath& path) {
  const Kind* kind = FindKind(sections.front().name);
  const bool have_names = kind != nullptr && kind->has_names;
  for (std::size_t i = 0; i < sections.size(); ++i) {
    if (have_names) {
      path.AddSection({i, NameOf(sections[i]), IdOf(meta, sections[i])});
    } else if (path.NextBegins('@')) {
      path.AddOrdinal(i, "", "/");
    } else {
      AddEntries(sections[i], path);
    }
  }
}

}  // namespace

std::vector<Candidate> DebugMetaPathWords(const std::string& file, const std::string& typed) {
  TypedPath path(typed);
  const DebugMeta meta = ReadDebugMeta(file);
  if (path.steps().empty()) {
    AddKinds(meta, path);
  } else if (path.steps().size() == 1) {
    const std::string keyword = ExpectKeyword(path.steps().front().text);
    if (keyword == kWordKind) AddWords(meta, path);
    for (const std::vector<DebugSection>& sections : meta.kinds) {
      if (!sections.empty() && sections.front().name == keyword) AddSections(meta, sections, path);
    }
  } else {
    const DebugFound found = Find(meta, path.steps()).front();
    if (found.entry == nullptr) AddEntries(*found.section, path);
  }
  return path.TakeWords();
}

}  // namespace rux
