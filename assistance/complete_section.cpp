// Entries that a section lacks.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "assistance/edit.h"
#include "assistance/place.h"
#include "assistance/refactorings.h"
#include "index/index.h"
#include "index/records.h"
#include "index/spot.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"

namespace rux::assistance {
namespace {

using index::Index;
using Keys = std::vector<std::string>;

bool IsRequired(const language::EntryTemplate& row) {
  return (row.notation & language::kRequired) != 0;
}

// Whether at least half of the other sections of the kind have such an entry.
bool IsUsual(const Index& index, Id section, std::uint32_t entry) {
  const language::SectionKind* kind = index.sections()[section].kind;
  std::size_t others = 0;
  std::size_t having = 0;
  for (Id other = 0; other < index.sections().size(); ++other) {
    if (other == section || index.sections()[other].kind != kind) continue;
    ++others;
    if (index.FindItem(other, entry) != kNone) ++having;
  }
  return having > 0 && having * 2 >= others;
}

// Up to the '=' of the last item, so that those of the new lines are below it.
std::size_t WidthOfKeys(const Index& index, Id section) {
  const auto items = index.ItemsOf(section);
  if (items.empty()) return 0;
  const index::ItemRecord& last = items[items.size() - 1];
  const sources::SourceFile& file = *index.files()[index.sections()[section].file];
  const ByteRange key = file.RangeOf(last.item->key);
  const std::size_t equals = file.text().find_first_of("=\n", key.end);
  const bool has_equals = equals != std::string::npos && file.text()[equals] == '=';
  return has_equals ? equals - key.begin : 0;
}

void AddCompletion(const Index& index, Id section, Refactoring::Kind kind, const char* which,
                   const Keys& keys, Refactorings& refactorings) {
  if (keys.empty()) return;
  const std::size_t width = WidthOfKeys(index, section);
  std::vector<std::string> lines;
  for (const std::string& key : keys) {
    lines.push_back(fmt::format("{:<{}}= ", key + ' ', std::max(width, key.size() + 1)));
  }
  refactorings.push_back({kind,
                          fmt::format("Add the {} entr{} {}", which, keys.size() == 1 ? "y" : "ies",
                                      fmt::join(keys, ", ")),
                          {LinesAfter(index, section, lines)}});
}

}  // namespace

void CompleteSection(const Place& at, Refactorings& refactorings) {
  const Index& index = at.index;
  const Id section = index::SpotAt(index, at.file, at.offset).section;
  if (section == kNone || index.sections()[section].kind == nullptr) return;
  Keys required;
  Keys usual;
  for (const language::EntryTemplate& row : index.sections()[section].kind->templates) {
    if (index.FindItem(section, row.identifier) != kNone) continue;
    const std::string key(language::KeywordOf(row.identifier));
    if (IsRequired(row)) {
      required.push_back(key);
    } else if (IsUsual(index, section, row.identifier)) {
      usual.push_back(key);
    }
  }
  AddCompletion(index, section, Refactoring::Kind::kComplete, "required", required, refactorings);
  AddCompletion(index, section, Refactoring::Kind::kRewrite, "usual", usual, refactorings);
}

}  // namespace rux::assistance
