// Which entry the key of an item becomes.
//
// The rows of a kind that take keys are counted through: its templates, then its free entries.
#ifndef RUXCOMP_LANGUAGE_KEYS_H_
#define RUXCOMP_LANGUAGE_KEYS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/language/sections.h"

namespace ruxcomp::language {

inline constexpr std::size_t kTemplateCount = sizeof kEntryTemplates / sizeof *kEntryTemplates;

// The keywords of kEntryTemplates, in the same order.
inline constexpr std::array<std::string_view, kTemplateCount> kTemplateKeywords = [] {
  std::array<std::string_view, kTemplateCount> keywords{};
  for (std::size_t i = 0; i < kTemplateCount; ++i) {
    keywords[i] = FindEntryRow(kEntryTemplates[i].identifier)->keyword;
  }
  return keywords;
}();

// How many rows of a kind take keys; as a row, it says that none takes the key.
constexpr std::size_t KeyRowCount(const SectionKind& kind) {
  return kind.templates.size() + kind.free_entries.size();
}

// The template of that keyword.
constexpr std::size_t FindTemplateRow(const SectionKind& kind, std::string_view key) {
  const auto first = static_cast<std::size_t>(kind.templates.begin() - kEntryTemplates);
  for (std::size_t row = 0; row < kind.templates.size(); ++row) {
    const std::string_view keyword = kTemplateKeywords[first + row];
    // The last characters differ in most keywords of one length.
    const bool may_match = key.size() == keyword.size() && key.back() == keyword.back();
    if (may_match && key == keyword) return row;
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
