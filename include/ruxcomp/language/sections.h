// The section kinds with all that is known of each.
#ifndef RUXCOMP_LANGUAGE_SECTIONS_H_
#define RUXCOMP_LANGUAGE_SECTIONS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/spelling.h"

namespace ruxcomp::language {

// The marks of section identifiers in the source model (and the debug meta file) and in the meta
// file; the kind number is below.
inline constexpr std::uint32_t kSectionMark = 0x20000000;
inline constexpr std::uint32_t kCompiledSectionMark = 0x01000000;
inline constexpr std::uint32_t kKindMask = 0x00FFFFFF;

enum SectionId : std::uint32_t {
#define SECTION(keyword, number, notation, form, naming, uniqueness) \
  SECTION_##keyword = kSectionMark + (number),
#include "ruxcomp/language/sections.def"
};

enum class Form : std::uint8_t {
  kCompiled,     // in the meta file and in the debug meta file
  kSourceOnly,   // acts while the script is read; in the debug meta file only
  kNotRestored,  // the same, and passed over when that file is loaded
};

enum class Naming : std::uint8_t {
  kByName,   // by the text of the NAME entry
  kByKeys,   // by the key of any entry
  kUnnamed,  // not at all
};

enum class Uniqueness : std::uint8_t {
  kSingle,                // one section of the kind; no key twice in it
  kKeys,                  // no key twice in all sections of the kind
  kNameAndId,             // no NAME and no ID twice; no key twice in a section
  kNameAndIdAfterParent,  // the same, and the parent is on a line with a smaller number
  kOwnKeys,               // no key twice in a section
  kNothing,               // anything may repeat
};

// What the text of an entry is, beside its payload.
enum class TextUse : std::uint8_t {
  kPlain,
  kMayBeEmpty,  // the empty text is allowed
  kGroupName,   // compiles to the index of a group
  kActionName,  // compiles to the index of an action
  kWord,        // a word, which need not be defined
};

// An empty entry that every new section of the kind starts with.
struct EntryTemplate {
  SectionId section;
  EntryId identifier;
  Notation notation;
  TextUse text;
};

// A key that no template takes becomes an entry of this identifier when it begins with the prefix.
struct FreeEntryRule {
  SectionId section;
  std::string_view prefix;
  EntryId identifier;
  Notation notation;
};

inline constexpr EntryTemplate kEntryTemplates[] = {
#define ENTRY_OF(section, entry, notation, text) \
  {SECTION_##section, ENTRY_##entry, notation, TextUse::text},
#include "ruxcomp/language/templates.def"
};
inline constexpr FreeEntryRule kFreeEntryRules[] = {
#define FREE_OF(section, prefix, entry, notation) \
  {SECTION_##section, prefix, ENTRY_##entry, notation},
#include "ruxcomp/language/templates.def"
};

// What an entry refers to; see templates.def.
enum class RefersUnless : std::uint8_t {
  kNever,
  kRoot,  // the root group, which has no section
  kZero,  // the number 0
};
struct Reference {
  SectionId section;
  EntryId entry;
  SectionId target;
  EntryId key;
  RefersUnless unless;
};
inline constexpr Reference kReferences[] = {
#define REFERS_TO(section, entry, target, key, unless) \
  {SECTION_##section, ENTRY_##entry, SECTION_##target, ENTRY_##key, RefersUnless::unless},
#include "ruxcomp/language/templates.def"
};

static_assert(AreNeighbours(kEntryTemplates, [](const auto& row) { return row.section; }));
static_assert(AreNeighbours(kFreeEntryRules, [](const auto& row) { return row.section; }));

struct SectionKind {
  const char* keyword;
  SectionId source;        // in the source model and the debug meta file
  std::uint32_t compiled;  // in the meta file, and what queries ask for
  Notation notation;       // of a section that a script opens
  Form form;
  Naming naming;
  Uniqueness uniqueness;
  Rows<EntryTemplate> templates;
  Rows<FreeEntryRule> free_entries;

  constexpr bool IsCompiled() const { return form == Form::kCompiled; }
  constexpr bool HasNames() const { return naming == Naming::kByName; }
};

constexpr SectionKind MakeKind(const char* keyword, std::uint32_t number, Notation notation,
                               Form form, Naming naming, Uniqueness uniqueness) {
  const auto source = static_cast<SectionId>(kSectionMark + number);
  const auto is_own = [source](const auto& row) { return row.section == source; };
  return {keyword,
          source,
          kCompiledSectionMark + number,
          notation,
          form,
          naming,
          uniqueness,
          RowsThat(kEntryTemplates, is_own),
          RowsThat(kFreeEntryRules, is_own)};
}

inline constexpr SectionKind kSectionKinds[] = {
#define SECTION(keyword, number, notation, form, naming, uniqueness) \
  MakeKind(#keyword, number, notation, Form::form, Naming::naming, Uniqueness::uniqueness),
#include "ruxcomp/language/sections.def"
};
inline constexpr std::size_t kSectionKindCount = sizeof kSectionKinds / sizeof *kSectionKinds;

// The kind with that number; null when there is none.
constexpr const SectionKind* FindKindNumber(std::uint32_t number) {
  return number - 1 < kSectionKindCount ? &kSectionKinds[number - 1] : nullptr;
}
constexpr bool AreNumberedInOrder() {
  for (const SectionKind& kind : kSectionKinds) {
    if (FindKindNumber(kind.source & kKindMask) != &kind) return false;
  }
  return true;
}
static_assert(AreNumberedInOrder(), "the rows of sections.def count from 1");

constexpr bool HasEntries() {
  for (const SectionKind& kind : kSectionKinds) {
    if (kind.templates.empty() && kind.free_entries.empty()) return false;
  }
  return true;
}
static_assert(HasEntries(), "every kind of sections.def has rows in templates.def");

// The kind of that keyword, and of that identifier of either file; null when there is none.
constexpr const SectionKind* FindKind(std::string_view keyword) {
  return FindRow(kSectionKinds, [&](const SectionKind& kind) { return kind.keyword == keyword; });
}
constexpr const SectionKind* FindSourceKind(std::uint32_t identifier) {
  return FindKindNumber(identifier - kSectionMark);
}
constexpr const SectionKind* FindCompiledKind(std::uint32_t identifier) {
  return FindKindNumber(identifier - kCompiledSectionMark);
}

// A kind that is known to exist.
constexpr const SectionKind& KindOf(SectionId section) { return *FindSourceKind(section); }

// The identifier of the source model for one of the meta file.
constexpr std::uint32_t SourceSection(std::uint32_t compiled) {
  return kSectionMark | (compiled & kKindMask);
}

// What an entry of a section refers to; null when it refers to nothing.
constexpr const Reference* FindReference(std::uint32_t section, std::uint32_t entry) {
  return FindRow(kReferences, [&](const Reference& row) {
    return row.section == section && row.entry == entry;
  });
}
constexpr bool IsReference(std::uint32_t section, std::uint32_t entry) {
  return HasRow(kReferences,
                [&](const Reference& row) { return row.section == section && row.entry == entry; });
}

// The use of the text of an entry in a section, both named by their identifiers in the source
// model.
constexpr TextUse TextUseOf(std::uint32_t section, std::uint32_t entry) {
  const SectionKind* kind = FindSourceKind(section);
  if (kind == nullptr) return TextUse::kPlain;
  for (const EntryTemplate& row : kind->templates) {
    if (row.identifier == entry) return row.text;
  }
  return TextUse::kPlain;
}

// Where the keys of a symbol table come from: the keys of entries, without their prefix, or their
// texts.
struct KeySource {
  std::uint32_t table;
  SectionId section;
  EntryId entry;
  bool is_text;
};
inline constexpr KeySource kKeySources[] = {
#define KEYS_OF(table, section, entry) {CLASS_##table, SECTION_##section, ENTRY_##entry, false},
#define TEXTS_OF(table, section, entry) {CLASS_##table, SECTION_##section, ENTRY_##entry, true},
#include "ruxcomp/language/symbol_tables.def"
};
static_assert(AreNeighbours(kKeySources, [](const KeySource& row) { return row.table; }));

constexpr Rows<KeySource> KeySourcesOf(std::uint32_t table) {
  return RowsThat(kKeySources, [&](const KeySource& row) { return row.table == table; });
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_SECTIONS_H_
