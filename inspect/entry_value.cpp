#include "inspect/entry_value.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "compiled/datum.h"
#include "inspect/meta_view.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/selectors.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/handles.h"

namespace rux::inspect {
namespace {

// The values from one position up to, and not with, another.
EntryPart PartOf(const ruxcomp::Values& values, const char* name, bool is_list, std::size_t begin,
                 std::size_t end) {
  EntryPart part{name, is_list, {}};
  for (std::size_t i = begin; i < std::min(end, values.size()); ++i) {
    part.items.push_back(DatumOf(values[i]));
  }
  return part;
}

// The parts of an entry whose values from `begin` on are described by a type.
std::vector<EntryPart> PartsOf(const ruxcomp::Values& values, std::uint32_t type,
                               std::size_t begin) {
  std::vector<EntryPart> parts;
  for (const ruxcomp::language::SelectorRow& row : ruxcomp::language::kSelectorRows) {
    if (!row.Fits(type, values.size())) continue;
    // The items of a group follow the value that its bare selector picks.
    const bool is_list = row.last > row.first;
    const std::size_t first = std::size_t{row.first} + (is_list ? 1 : 0);
    parts.push_back(PartOf(values, row.part, is_list, first, std::size_t{row.last} + 1));
  }
  if (parts.empty() && values.size() > begin) {
    parts.push_back(PartOf(values, "Values", true, begin, values.size()));
  }
  return parts;
}

}  // namespace

EntryValue ValueOf(const ruxcomp::Entry& entry) {
  const ruxcomp::Values values = entry.values();
  const std::uint32_t entry_class = ruxcomp::language::ClassOf(entry.identifier());
  if (entry_class == RUX_CLASS_Repeater) {
    return {std::nullopt, PartsOf(values, ruxcomp::language::kRepeaterType, 0)};
  }
  if (entry_class == RUX_CLASS_Value || entry_class == RUX_CLASS_Global) {
    const compiled::Datum type = DatumOf(entry.value());
    if (type.Is(ruxcomp::language::CLASS_ValueType))
      return {type.number, PartsOf(values, type.number, 1)};
  }
  return {std::nullopt, {PartOf(values, "", values.size() != 1, 0, values.size())}};
}

}  // namespace rux::inspect
