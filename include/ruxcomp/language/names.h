// What the parts of values and repeaters name.
#ifndef RUXCOMP_LANGUAGE_NAMES_H_
#define RUXCOMP_LANGUAGE_NAMES_H_

#include <array>
#include <cstddef>
#include <string_view>

#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::language {

// See NAMES_IN in value_types.def.
struct NamedEntry {
  Role role;
  std::string_view prefix;
  SectionId section;
  EntryId entry;
};

inline constexpr NamedEntry kNamedEntries[] = {
#define NAMES_IN(role, prefix, section, entry) \
  {Role::role, prefix, SECTION_##section, ENTRY_##entry},
#include "ruxcomp/language/value_types.def"
};
static_assert(AreNeighbours(kNamedEntries, [](const NamedEntry& row) { return row.role; }));

constexpr bool Takes(const NamedEntry& row, std::string_view text) {
  return row.prefix.empty() || HasPrefix(text, row.prefix);
}

// All that texts of a role can name, in order.
constexpr Rows<NamedEntry> NamedBy(Role role) {
  return RowsThat(kNamedEntries, [&](const NamedEntry& row) { return row.role == role; });
}

inline constexpr std::size_t kRoleCount = static_cast<std::size_t>(Role::kRepeatArgument) + 1;
inline constexpr std::array<Rows<NamedEntry>, kRoleCount> kNamedByRole = [] {
  std::array<Rows<NamedEntry>, kRoleCount> rows{};
  for (std::size_t i = 0; i < kRoleCount; ++i) rows[i] = NamedBy(static_cast<Role>(i));
  return rows;
}();

// What a text of that role names; null for a number or a word.
constexpr const NamedEntry* FindNamed(Role role, std::string_view text) {
  for (const NamedEntry& row : kNamedByRole[static_cast<std::size_t>(role)]) {
    if (Takes(row, text)) return &row;
  }
  return nullptr;
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_NAMES_H_
