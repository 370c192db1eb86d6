// Which entry the key of an item becomes.
//
// The rows of a kind that take keys have one count: its templates, then its free entries.
#ifndef RUXCOMP_LANGUAGE_KEYS_H_
#define RUXCOMP_LANGUAGE_KEYS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/language/sections.h"

namespace ruxcomp::language {

// How many rows of a kind take keys; as a row, it says that none takes the key.
constexpr std::size_t KeyRowCount(const SectionKind& kind) {
  return kind.templates.size() + kind.free_entries.size();
}

// Where the template for that entry is; the number of templates when there is none.
constexpr std::size_t PlaceOfTemplate(const SectionKind& kind, std::uint32_t entry) {
  std::size_t row = 0;
  while (row < kind.templates.size() && kind.templates[row].identifier != entry) ++row;
  return row;
}

// The template of that keyword.
constexpr std::size_t FindTemplateRow(const SectionKind& kind, std::string_view key) {
  for (std::size_t place = FirstOfKeyword(key); place < kEntryCount; place = NextOfKeyword(place)) {
    const std::size_t row = PlaceOfTemplate(kind, kEntries[place].source);
    if (row < kind.templates.size()) return row;
  }
  return KeyRowCount(kind);
}

// The first free entry that fits.
constexpr std::size_t FindFreeRow(const SectionKind& kind, std::string_view key) {
  std::size_t row = kind.templates.size();
  for (const FreeEntryRule& rule : kind.free_entries) {
    if (BeginsWith(key, rule.prefix)) return row;
    ++row;
  }
  return row;
}

// The row that takes the key of the index-th item of a section. The condition of an IFDEF section
// is its first item; all others define words, whatever their keys are.
constexpr std::size_t FindKeyRow(const SectionKind& kind, std::string_view key, std::size_t index) {
  const bool has_condition = kind.source == SECTION_IFDEF;
  if (has_condition && index > 0) return FindFreeRow(kind, key);
  const std::size_t row = FindTemplateRow(kind, key);
  return row != KeyRowCount(kind) || has_condition ? row : FindFreeRow(kind, key);
}

// The entry of such a row; 0 when no row takes the key.
constexpr std::uint32_t EntryOfRow(const SectionKind& kind, std::size_t row) {
  const std::size_t templates = kind.templates.size();
  if (row < templates) return kind.templates[row].identifier;
  if (row == KeyRowCount(kind)) return 0;
  return kind.free_entries[row - templates].identifier;
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_KEYS_H_
