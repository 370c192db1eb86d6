// IDs put into the lists of other sections.
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "assistance/place.h"
#include "assistance/refactorings.h"
#include "assistance/wording.h"
#include "index/index.h"
#include "index/records.h"
#include "index/spot.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"

namespace rux::assistance {
namespace {

using index::Index;
using index::Spot;

// What a menu can show.
constexpr std::size_t kMostLists = 50;

// Where one looks for what a section is: elsewhere, a menu would be full of lists.
bool IsAboutSection(const Index& index, const Spot& spot) {
  if (spot.kind == Spot::Kind::kHeader) return true;
  if (spot.item == kNone) return false;
  const std::uint32_t entry = index.items()[spot.item].entry;
  return entry == language::ENTRY_NAME || entry == language::ENTRY_ID;
}

bool HasNumber(const Index& index, Id list, std::uint32_t number) {
  const std::vector<std::string_view> parts = index::PartsOf(index, list);
  return std::any_of(parts.begin(), parts.end(), [&](std::string_view part) {
    return index.words().NumberOrWord(part) == number;
  });
}

// A list that is empty or ends in a comma lacks what a new part comes after.
bool CanGrow(const Index& index, Id list) {
  const std::vector<std::string_view> parts = index::PartsOf(index, list);
  return std::none_of(parts.begin(), parts.end(),
                      [](std::string_view part) { return part.empty(); }) &&
         !parts.empty();
}

void AddToList(const Index& index, Id list, std::string_view text, Refactorings& refactorings) {
  const index::ItemRecord& item = index.items()[list];
  const Id file = index.sections()[item.section].file;
  const std::uint32_t end = index.files()[file]->RangeOf(item.item->value).end;
  refactorings.push_back(
      {Refactoring::Kind::kRewrite,
       fmt::format("Add ID {} to the {} of {}", text, item.item->key, NameOf(index, item.section)),
       {{{file, {end, end}}, fmt::format(", {}", text)}}});
}

}  // namespace

void AddToLists(const Place& at, Refactorings& refactorings) {
  const Index& index = at.index;
  const Spot spot = index::SpotAt(index, at.file, at.offset);
  if (spot.section == kNone || index.sections()[spot.section].kind == nullptr) return;
  const language::SectionId kind = index.sections()[spot.section].kind->source;
  const language::Reference* row = language::FindReference(kind, language::ENTRY_ID);
  const Id id = index.DefinitionIn(spot.section, language::ENTRY_ID);
  if (row == nullptr || id == kNone || !IsAboutSection(index, spot)) return;
  const std::string_view text = index.TextOf(spot.section, language::ENTRY_ID);
  const auto number = index.words().NumberOrWord(text);
  if (!number) return;
  std::size_t offered = 0;
  for (Id section = 0; section < index.sections().size() && offered < kMostLists; ++section) {
    const language::SectionKind* other = index.sections()[section].kind;
    if (other == nullptr || other->source != row->target) continue;
    const Id list = index.FindItem(section, row->key);
    if (list == kNone || !CanGrow(index, list) || HasNumber(index, list, *number)) continue;
    AddToList(index, list, text, refactorings);
    ++offered;
  }
}

}  // namespace rux::assistance
