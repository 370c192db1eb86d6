#include "diff/classes.h"

#include <cstdint>
#include <string_view>

#include "machine/value.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/values.h"

namespace rux::diff {
namespace {

constexpr std::string_view kAny = "ANY";

// `key`: the entry in the source model, or the class of a symbol table.
struct Row {
  std::string_view section;
  std::uint32_t key;
  EntryClasses classes;
};
constexpr Row kEntryRows[] = {
#define ENTRY_CHANGES(section, entry, added, removed, changed) \
  {#section,                                                   \
   language::ENTRY_##entry,                                    \
   {ClassId::k##added, ClassId::k##removed, ClassId::k##changed}},
#include "diff/classes.def"
};
constexpr Row kTableRows[] = {
#define TABLE_CHANGES(section, table, added, removed, changed) \
  {#section,                                                   \
   language::CLASS_##table,                                    \
   {ClassId::k##added, ClassId::k##removed, ClassId::k##changed}},
#include "diff/classes.def"
};

template <class Rows>
constexpr bool HaveSections(const Rows& rows) {
  return !language::HasRow(rows, [](const Row& row) {
    return row.section != kAny && !language::HasRow(language::kSectionKinds, [&](const auto& kind) {
             return kind.keyword == row.section;
           });
  });
}
static_assert(HaveSections(kEntryRows) && HaveSections(kTableRows));

struct RoleRow {
  language::Role role;
  ClassId changed;
};
constexpr RoleRow kRoleRows[] = {
#define ROLE_CHANGES(role, changed) {language::Role::role, ClassId::k##changed},
#include "diff/classes.def"
};

template <class Rows>
const Row* FindClasses(const Rows& rows, const language::SectionKind& kind, std::uint32_t key) {
  return language::FindRow(rows, [&](const Row& row) {
    return row.key == key && (row.section == kAny || row.section == kind.keyword);
  });
}

}  // namespace

EntryClasses ClassesOf(const language::SectionKind& kind, std::uint32_t identifier) {
  if (machine::LimitWith(identifier) != nullptr)
    return {ClassId::kLimitAdded, ClassId::kLimitRemoved, ClassId::kLimitChanged};
  const language::EntryRow* fixed = language::FindCompiledEntryRow(identifier);
  const Row* row = fixed != nullptr ? FindClasses(kEntryRows, kind, fixed->source)
                                    : FindClasses(kTableRows, kind, language::ClassOf(identifier));
  if (row != nullptr) return row->classes;
  return {ClassId::kEntryAdded, ClassId::kEntryRemoved, ClassId::kEntryChanged};
}

ClassId ClassOf(const language::Field& field, language::Role role) {
  if (field.kind == language::FieldKind::kList) return ClassId::kArgumentsChanged;
  const RoleRow* row =
      language::FindRow(kRoleRows, [&](const RoleRow& each) { return each.role == role; });
  return row != nullptr ? row->changed : ClassId::kEntryChanged;
}

}  // namespace rux::diff
