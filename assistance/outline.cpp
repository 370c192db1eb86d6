#include "assistance/outline.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "assistance/place.h"
#include "assistance/targets.h"
#include "assistance/wording.h"
#include "index/index.h"
#include "index/records.h"
#include "reader/value.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"

namespace rux::assistance {
namespace {

// Whether the key of the item is the name.
bool IsKey(const index::Index& index, const index::Definition& definition) {
  const sources::SourceFile& file = *index.files()[definition.file];
  return definition.item != kNone &&
         file.RangeOf(index.items()[definition.item].item->key).begin == definition.name.begin;
}

// With one blank for several: values may be on many lines.
std::string OnOneLine(std::string_view text) {
  std::string line;
  for (const char c : text) {
    const bool is_more = ruxcomp::reader::IsBlank(c) && !line.empty() && line.back() == ' ';
    if (!is_more) line += ruxcomp::reader::IsBlank(c) ? ' ' : c;
  }
  return line;
}

OutlineEntry EntryOf(const index::Index& index, const index::Definition& definition) {
  const index::Space& space = index.symbols()[definition.symbol].space;
  const index::ItemRecord& item = index.items()[definition.item];
  return {std::string(item.item->key),
          OnOneLine(item.item->value),
          space,
          space.section,
          index.RangeOfItem(definition.item),
          definition.name,
          {}};
}

OutlineEntry EntryOf(const index::Index& index, Id id) {
  const index::SectionRecord& section = index.sections()[id];
  const sources::SourceFile& file = *index.files()[section.file];
  OutlineEntry entry{std::string(NameOf(index, id)),
                     section.kind->keyword,
                     {},
                     section.kind->source,
                     index.RangeOfSection(id),
                     file.RangeOf(section.section->header),
                     {}};
  const Id name = index.DefinitionIn(id, language::ENTRY_NAME);
  const Id number_at = name != kNone ? name : index.DefinitionIn(id, language::ENTRY_ID);
  entry.is_named = number_at != kNone;
  if (entry.is_named) entry.name_range = index.definitions()[number_at].name;
  entry.id = id;
  if (entry.name.empty()) std::swap(entry.name, entry.detail);
  const std::string_view number = index.TextOf(id, language::ENTRY_ID);
  if (!number.empty()) entry.detail += fmt::format(" {}", number);
  for (const index::ItemRecord& item : index.ItemsOf(id)) {
    const auto at = static_cast<Id>(&item - index.items().data());
    for (const index::Definition& definition : index.DefinitionsIn(at)) {
      if (definition.symbol != kNone && IsKey(index, definition)) {
        entry.children.push_back(EntryOf(index, definition));
      }
    }
  }
  return entry;
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool IsSame(char a, char b) { return Lower(a) == Lower(b); }

bool HasInOrder(std::string_view name, std::string_view query) {
  for (const char c : name) {
    if (query.empty()) return true;
    if (IsSame(c, query.front())) query.remove_prefix(1);
  }
  return query.empty();
}

bool BeginsWith(std::string_view name, std::string_view query) {
  return name.size() >= query.size() &&
         std::equal(query.begin(), query.end(), name.begin(), IsSame);
}

// Numbers and what belongs to one section are not looked for by name; files have folders in their
// names.
bool IsLookedFor(const index::Symbol& symbol) {
  const bool is_local = symbol.section != kNone || symbol.space == index::kFiles;
  return IsName(symbol) && !index::HasNumbers(symbol.space) && !is_local;
}

}  // namespace

std::vector<OutlineEntry> OutlineOf(const index::Index& index, Id file) {
  std::vector<OutlineEntry> entries;
  for (const Id section : index.SectionsOf(file)) {
    if (index.sections()[section].kind != nullptr) entries.push_back(EntryOf(index, section));
  }
  return entries;
}

std::vector<FoundSymbol> FindSymbols(const index::Index& index, std::string_view query,
                                     std::size_t most) {
  std::vector<Id> found;
  for (Id id = 0; id < index.symbols().size(); ++id) {
    const index::Symbol& symbol = index.symbols()[id];
    if (IsLookedFor(symbol) && HasInOrder(symbol.name, query)) found.push_back(id);
  }
  std::stable_partition(found.begin(), found.end(),
                        [&](Id id) { return BeginsWith(index.symbols()[id].name, query); });
  if (found.size() > most) found.resize(most);
  std::vector<FoundSymbol> symbols;
  for (const Id id : found) {
    const index::Symbol& symbol = index.symbols()[id];
    const index::Definition& taken = index.definitions()[index.TakenDefinitionOf(id)];
    symbols.push_back({std::string(symbol.name), symbol.space,
                       fmt::format("[{}]", language::KindOf(symbol.space.section).keyword),
                       LocationOf(taken)});
  }
  return symbols;
}

}  // namespace rux::assistance
