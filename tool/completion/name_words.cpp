// The names that a machine has: what rux refs takes.
#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "browse/refs.h"
#include "browse/relations.h"
#include "ruxcomp/language/sections.h"
#include "tool/completion/completion.h"
#include "tool/completion/typed_path.h"
#include "tool/machine_arguments.h"

namespace rux::tool {
namespace {

namespace language = ruxcomp::language;

// The kinds that things are of, for a step after which a name follows.
void AddKinds(const browse::Relations& relations, TypedPath& path) {
  for (const language::SectionKind& kind : language::kSectionKinds) {
    std::size_t count = 0;
    for (const browse::Thing& thing : relations.things()) count += thing.kind == &kind ? 1 : 0;
    path.AddKind(kind.keyword, count);
  }
}

// Several things may have one name.
void AddThings(const browse::Relations& relations, const language::SectionKind* only,
               TypedPath& path) {
  std::set<std::string> known;
  for (const browse::Thing& thing : relations.things()) {
    if (only != nullptr && thing.kind != only) continue;
    if (path.NextBegins('#')) {
      if (thing.id) path.AddId(*thing.id, thing.Title());
      continue;
    }
    const std::string& name = thing.key.empty() ? thing.name.value_or("") : thing.key;
    if (!name.empty() && known.insert(name).second) path.AddName(name, thing.Title());
  }
}

}  // namespace

std::vector<Candidate> NameWords(const std::string& file, const std::string& typed) {
  TypedPath path(typed);
  const browse::Relations relations =
      browse::ReadRelations(file, LoadOptionsOf(MachineOptions{file, {}, {}}));
  if (path.steps().empty()) {
    if (!path.NextBegins('#')) AddKinds(relations, path);
    AddThings(relations, nullptr, path);
  } else if (path.steps().size() == 1) {
    const language::SectionKind* kind = browse::FindKindInAnyCase(path.steps().front().text);
    if (kind != nullptr) AddThings(relations, kind, path);
  }
  return path.TakeWords();
}

}  // namespace rux::tool
