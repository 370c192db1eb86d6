#include "compiled/meta_references.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "compiled/text_set.h"
#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"

namespace rux::compiled {
namespace {

constexpr std::uint32_t kTableSection = language::KindOf(language::SECTION_TABLE).compiled;

// Reports as if the cursor were at that word.
template <class... Args>
void ReportAt(Cursor& cursor, WordPlace place, std::string_view reason, const Args&... args) {
  const Record sections(cursor, "sections");
  const Record section(cursor, "section", place.section);
  const Record entry(cursor, "entry", place.entry);
  cursor.Report("value", place.offset, reason, args...);
}

}  // namespace

bool MetaReferences::Define(std::uint32_t index) {
  return !std::exchange(NamesOf(language::ClassOf(index))[language::OrdinalOf(index)].is_defined,
                        true);
}

void MetaReferences::Use(std::uint32_t index, WordPlace place) {
  Name& name = NamesOf(language::ClassOf(index))[language::OrdinalOf(index)];
  if (name.first_use.offset == 0) name.first_use = place;
}

bool MetaReferences::NameSection(std::uint32_t section_identifier, std::uint32_t index) {
  named_in_.resize(tables_.CountOf(language::CLASS_String));
  if (section_identifier == kTableSection) table_sections_.push_back(index);
  return std::exchange(named_in_[language::OrdinalOf(index)], section_identifier) !=
         section_identifier;
}

void MetaReferences::SetParent(std::uint32_t group, std::uint32_t parent, WordPlace place) {
  Name& name = NamesOf(language::CLASS_Group)[language::OrdinalOf(group)];
  name.parent = language::OrdinalOf(parent);
  name.parent_place = place;
}

void MetaReferences::Check(Cursor& cursor) {
  DefineTables();
  for (const std::uint32_t base : {language::CLASS_Group, language::CLASS_Action,
                                   language::CLASS_Global, language::CLASS_TableName}) {
    CheckUses(cursor, base);
  }
  CheckParents(cursor);
  CheckCells(cursor);
}

MetaReferences::Names& MetaReferences::NamesOf(std::uint32_t base) {
  Names& names = base == language::CLASS_Group    ? groups_
                 : base == language::CLASS_Action ? actions_
                 : base == language::CLASS_Global ? globals_
                                                  : table_names_;
  if (names.empty()) names.resize(tables_.CountOf(base));
  return names;
}

// The sections of tables have strings for their names, values have the names of tables.
void MetaReferences::DefineTables() {
  TextSet texts;
  for (const std::uint32_t index : table_sections_) texts.Insert(tables_.TextOf(index));
  Names& names = NamesOf(language::CLASS_TableName);
  for (std::size_t i = 0; i < names.size(); ++i) {
    const bool is_used = names[i].first_use.offset != 0;
    const auto index = static_cast<std::uint32_t>(language::CLASS_TableName + i);
    names[i].is_defined = is_used && !texts.Insert(tables_.TextOf(index));
  }
}

void MetaReferences::CheckUses(Cursor& cursor, std::uint32_t base) {
  const Names& names = NamesOf(base);
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].first_use.offset == 0 || names[i].is_defined) continue;
    ReportAt(cursor, names[i].first_use, "it is {} {}, which stands nowhere in the file",
             language::FindClass(base)->title, i);
  }
}

// From every group, the way up ends at the root.
void MetaReferences::CheckParents(Cursor& cursor) {
  constexpr std::uint32_t kRoot = 0;
  std::vector<std::size_t> came_from(groups_.size(), 0);  // the first group of the way, from 1
  for (std::size_t first = 1; first < groups_.size(); ++first) {
    std::size_t group = first;
    while (group != kRoot && groups_[group].parent_place.offset != 0 && came_from[group] == 0) {
      came_from[group] = first;
      group = groups_[group].parent;
    }
    if (group == kRoot || came_from[group] != first || groups_[group].parent_place.offset == 0) {
      continue;
    }
    ReportAt(cursor, groups_[group].parent_place, "the group is above itself");
  }
}

// Each section of a table has its cells.
void MetaReferences::CheckCells(Cursor& cursor) const {
  const MetaTableView& cells = tables_.cells();
  if (cells.length == table_sections_.size() * language::kTableCells) return;
  const Record record(cursor, "table", cells.ordinal);
  cursor.Report("length", cells.length_offset, "it is {}, TABLE sections: {}", cells.length,
                table_sections_.size());
}

}  // namespace rux::compiled
