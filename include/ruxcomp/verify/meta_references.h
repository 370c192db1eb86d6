// The names in a meta file that sections have and that other sections refer to.
#ifndef RUXCOMP_VERIFY_META_REFERENCES_H_
#define RUXCOMP_VERIFY_META_REFERENCES_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/verify/meta_tables.h"
#include "ruxcomp/verify/text_set.h"

namespace ruxcomp::verify {

// A word of the sections.
struct WordPlace {
  std::uint32_t section = 0;
  std::uint32_t entry = 0;
  std::uint32_t offset = 0;  // of no word: 0
};

// All indices must be in their tables.
class MetaReferences {
 public:
  // The tables must be complete when the first index comes in.
  explicit MetaReferences(const MetaTables& tables) : tables_(tables) {}

  // A group, action or global, and what refers to one: in any order. Define() returns false when
  // the name was defined before.
  bool Define(std::uint32_t index) { return !std::exchange(NameOf(index).is_defined, true); }
  void Use(std::uint32_t index, WordPlace place) {
    Name& name = NameOf(index);
    if (name.first_use.offset == 0) name.first_use = place;
  }

  // A section of another kind has that string for its name: false when one before it has it.
  bool NameSection(std::uint32_t section_identifier, std::uint32_t index) {
    named_in_.resize(tables_.CountOf(language::CLASS_String));
    if (section_identifier == kTableSection) table_sections_.push_back(index);
    return std::exchange(named_in_[language::OrdinalOf(index)], section_identifier) !=
           section_identifier;
  }

  // Which group a group is in.
  void SetParent(std::uint32_t group, std::uint32_t parent, WordPlace place) {
    Name& name = NameOf(group);
    name.parent = language::OrdinalOf(parent);
    name.parent_place = place;
  }

  // Once all sections are read: reports what is referred to but not defined, groups that are their
  // own ancestors, and tables without cells.
  void Check(file::Cursor& cursor) {
    DefineTables();
    for (const std::uint32_t base : {language::CLASS_Group, language::CLASS_Action,
                                     language::CLASS_Global, language::CLASS_TableName}) {
      CheckUses(cursor, base);
    }
    CheckParents(cursor);
    CheckCells(cursor);
  }

 private:
  static constexpr std::uint32_t kTableSection = language::KindOf(language::SECTION_TABLE).compiled;

  struct Name {
    bool is_defined = false;
    WordPlace first_use;
    // Of a group.
    std::uint32_t parent = 0;
    WordPlace parent_place;
  };
  using Names = std::vector<Name>;  // by ordinal

  Names& NamesOf(std::uint32_t base) {
    Names& names = base == language::CLASS_Group    ? groups_
                   : base == language::CLASS_Action ? actions_
                   : base == language::CLASS_Global ? globals_
                                                    : table_names_;
    if (names.empty()) names.resize(tables_.CountOf(base));
    return names;
  }
  Name& NameOf(std::uint32_t index) {
    return NamesOf(language::ClassOf(index))[language::OrdinalOf(index)];
  }

  // Reports as if the cursor were at that word.
  template <class... Args>
  static void ReportAt(file::Cursor& cursor, WordPlace place, std::string_view reason,
                       const Args&... args) {
    const file::Record sections(cursor, "sections");
    const file::Record section(cursor, "section", place.section);
    const file::Record entry(cursor, "entry", place.entry);
    cursor.Report("value", place.offset, reason, args...);
  }

  void DefineTables();
  void CheckUses(file::Cursor& cursor, std::uint32_t base);
  void CheckParents(file::Cursor& cursor);
  void CheckCells(file::Cursor& cursor) const;

  const MetaTables& tables_;
  Names groups_;
  Names actions_;
  Names globals_;
  Names table_names_;
  std::vector<std::uint32_t> table_sections_;  // the strings that TABLE sections have for names
  std::vector<std::uint32_t> named_in_;        // by ordinal of the string: the kind so named last
};

// The sections of tables have strings for their names, values have the names of tables.
inline void MetaReferences::DefineTables() {
  TextSet texts;
  for (const std::uint32_t index : table_sections_) texts.Insert(tables_.TextOf(index));
  Names& names = NamesOf(language::CLASS_TableName);
  for (std::size_t i = 0; i < names.size(); ++i) {
    const bool is_used = names[i].first_use.offset != 0;
    const auto index = static_cast<std::uint32_t>(language::CLASS_TableName + i);
    names[i].is_defined = is_used && !texts.Insert(tables_.TextOf(index));
  }
}

inline void MetaReferences::CheckUses(file::Cursor& cursor, std::uint32_t base) {
  const Names& names = NamesOf(base);
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].first_use.offset == 0 || names[i].is_defined) continue;
    ReportAt(cursor, names[i].first_use, "it is {} {}, which is not in the file",
             language::FindClass(base)->title, i);
  }
}

// From every group, the way up ends at the root.
inline void MetaReferences::CheckParents(file::Cursor& cursor) {
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
    ReportAt(cursor, groups_[group].parent_place, "the group is its own ancestor");
  }
}

// Each section of a table has its cells.
inline void MetaReferences::CheckCells(file::Cursor& cursor) const {
  const file::MetaTableView& cells = tables_.cells();
  if (cells.length == table_sections_.size() * language::kTableCells) return;
  const file::Record record(cursor, "table", cells.ordinal);
  cursor.Report("length", cells.length_offset, "it is {}, TABLE sections: {}", cells.length,
                table_sections_.size());
}

}  // namespace ruxcomp::verify

#endif  // RUXCOMP_VERIFY_META_REFERENCES_H_
