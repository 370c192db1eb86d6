// Which entries the sections of the meta file hold, and what their values are: the compiled form of
// the templates of each kind.
#ifndef RUXCOMP_LANGUAGE_COMPILED_ENTRIES_H_
#define RUXCOMP_LANGUAGE_COMPILED_ENTRIES_H_

#include <cstdint>
#include <string_view>

#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"

namespace ruxcomp::language {

// The values of a compiled entry.
enum class Content : std::uint8_t {
  kNumber,      // one number
  kNumbers,     // any number of numbers
  kText,        // one text that is not empty
  kAnyText,     // one text
  kName,        // one text that no other section of the kind has
  kGroupName,   // one group, the section's own
  kActionName,  // one action, the section's own
  kParent,      // one group
  kTypedValue,  // a type and what belongs to it
  kRepetition,  // a count, an action and its arguments, or nothing at all
};

// Of an entry that every section of the kind has when the script gives it. Such entries come in the
// order of the templates, before all others.
struct CompiledEntry {
  std::uint32_t identifier;  // fixed, or the index of a fixed key
  const char* keyword;
  bool is_required;
  Content content;
};

constexpr Content ContentOf(const EntryTemplate& row) {
  if (PayloadOf(row.identifier) == PAYLOAD_VALUE) return Content::kTypedValue;
  if (IsNumericList(row.identifier)) return Content::kNumbers;
  if (IsNumericString(row.identifier)) return Content::kNumber;
  switch (row.text) {
    case TextUse::kMayBeEmpty:
      return Content::kAnyText;
    case TextUse::kGroupName:
      return IsReference(row.section, row.identifier) ? Content::kParent : Content::kGroupName;
    case TextUse::kActionName:
      return Content::kActionName;
    case TextUse::kPlain:
    case TextUse::kWord:
      break;
  }
  return row.identifier == ENTRY_NAME ? Content::kName : Content::kText;
}

// A compiled template has a fixed identifier, or its name is among the fixed keys of its table.
constexpr bool HaveIdentifiers() {
  for (const EntryTemplate& row : kEntryTemplates) {
    const EntryRow& entry = *FindEntryRow(row.identifier);
    if (entry.table == 0) continue;
    const std::string_view name = NameInKey(entry, entry.keyword);
    const auto is_its_key = [&](const FixedKey& key) {
      return key.table == entry.table && key.text == name;
    };
    if (!HasRow(kFixedKeys, is_its_key)) return false;
  }
  return true;
}
static_assert(HaveIdentifiers(), "symbol_tables.def has the names of templates as fixed keys");

constexpr CompiledEntry MakeCompiledEntry(const EntryTemplate& row) {
  const EntryRow& entry = *FindEntryRow(row.identifier);
  const std::uint32_t identifier = entry.compiled != 0
                                       ? entry.compiled
                                       : FixedIndex(entry.table, NameInKey(entry, entry.keyword));
  return {identifier, entry.keyword, (row.notation & kRequired) != 0, ContentOf(row)};
}

// Row by row those of the templates and of the rules for free entries.
inline constexpr CompiledEntry kCompiledEntries[] = {
#define ENTRY_OF(section, entry, notation, text) \
  MakeCompiledEntry({SECTION_##section, ENTRY_##entry, notation, TextUse::text}),
#include "ruxcomp/language/templates.def"
};
inline constexpr std::uint32_t kFreeEntryClasses[] = {
#define FREE_OF(section, prefix, entry, notation) FindEntryRow(ENTRY_##entry)->table,
#include "ruxcomp/language/templates.def"
};

// The entries of a kind that its templates make.
constexpr Rows<CompiledEntry> CompiledEntriesOf(const SectionKind& kind) {
  if (kind.templates.empty()) return {};
  return {kCompiledEntries + (kind.templates.begin() - kEntryTemplates), kind.templates.size()};
}

// Whether sections of the kind hold entries whose identifier is an index of that class.
constexpr bool HoldsIndices(const SectionKind& kind, std::uint32_t index_class) {
  for (const FreeEntryRule& rule : kind.free_entries) {
    if (index_class != 0 && kFreeEntryClasses[&rule - kFreeEntryRules] == index_class) return true;
  }
  return false;
}

// The content of such an entry.
constexpr Content ContentOfNamed(std::uint32_t index_class) {
  switch (index_class) {
    case CLASS_Value:
    case CLASS_Global:
      return Content::kTypedValue;
    case CLASS_Repeater:
      return Content::kRepetition;
    default:
      return Content::kText;
  }
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_COMPILED_ENTRIES_H_
