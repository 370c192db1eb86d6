#include <fmt/format.h>

#include <cstddef>
#include <set>
#include <vector>

#include "compiled/debug_meta.h"
#include "inspect/debug_find.h"
#include "inspect/debug_text.h"
#include "ruxcomp/language/sections.h"
#include "tool/completion/candidate.h"
#include "tool/completion/path_words.h"
#include "tool/completion/typed_path.h"

namespace rux::tool {
namespace {

void AddKinds(const compiled::DebugMeta& meta, TypedPath& path) {
  for (const std::vector<compiled::DebugSection>& sections : meta.kinds) {
    if (!sections.empty()) path.AddKind(sections.front().name, sections.size());
  }
  path.AddKind(inspect::kWordKind, meta.words.size(), "defined word");
}

void AddWords(const compiled::DebugMeta& meta, TypedPath& path) {
  for (const compiled::DebugWord& word : meta.words) {
    path.AddName(word.name, fmt::format("{0} (0x{0:X})", word.value));
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
