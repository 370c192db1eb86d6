#include "tool/meta/entry_value.h"

#include <algorithm>
#include <cstddef>

#include "ruxcomp/identifiers.h"

namespace rux {
namespace {

constexpr std::uint32_t SELECTOR_ANY = 0xFFFFFFFF;
constexpr std::uint32_t SELECTOR_REPEATER = 0xFFFFFFFF;  // no value type: those have 24 bits

struct PartRow {
  const char* name;
  std::uint32_t type;
  std::uint32_t least;
  std::uint32_t most;
  std::uint32_t first;
  std::uint32_t last;
};

constexpr PartRow kParts[] = {
#define SELECTOR(part, type, least, most, selector, first, last) \
  {part, type, least, most, first, last},
#include "ruxcomp/selectors.def"
};

// The values from one position up to, and not with, another.
EntryPart PartOf(const MetaView& meta, const tagGCENTRY& entry, const char* name, bool is_list,
                 std::size_t begin, std::size_t end) {
  EntryPart part{name, is_list, {}};
  for (std::size_t i = begin; i < std::min(end, entry.values.size()); ++i) {
    part.items.push_back(meta.Resolve(entry.values[i]));
  }
  return part;
}

// The parts of an entry whose values from `begin` on are told by a type.
std::vector<EntryPart> PartsOf(const MetaView& meta, const tagGCENTRY& entry, std::uint32_t type,
                               std::size_t begin) {
  std::vector<EntryPart> parts;
  const std::size_t count = entry.values.size();
  for (const PartRow& row : kParts) {
    if (row.type != type || count < row.least || count > row.most) continue;
    // The items of a group follow the value that its bare selector picks.
    const bool is_list = row.last > row.first;
    const std::size_t first = std::size_t{row.first} + (is_list ? 1 : 0);
    parts.push_back(PartOf(meta, entry, row.name, is_list, first, std::size_t{row.last} + 1));
  }
  if (parts.empty() && count > begin) {
    parts.push_back(PartOf(meta, entry, "Values", true, begin, count));
  }
  return parts;
}

}  // namespace

EntryValue ValueOf(const MetaView& meta, const tagGCENTRY& entry) {
  const std::uint32_t entry_class = entry.identifier & 0xFF000000;
  if (entry_class == RUX_CLASS_Repeater) {
    return {std::nullopt, PartsOf(meta, entry, SELECTOR_REPEATER, 0)};
  }
  if (entry_class == RUX_CLASS_Value || entry_class == RUX_CLASS_Global) {
    const Datum type = entry.values.empty() ? Datum() : meta.Resolve(entry.values.front());
    if (type.is == Datum::Class::kType) {
      return {type.number, PartsOf(meta, entry, type.number, 1)};
    }
  }
  const bool is_list = entry.values.size() != 1;
  return {std::nullopt, {PartOf(meta, entry, "", is_list, 0, entry.values.size())}};
}

}  // namespace rux
