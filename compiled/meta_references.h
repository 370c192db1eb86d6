// The names in a meta file that sections have and that other sections refer to.
#ifndef COMPILED_META_REFERENCES_H_
#define COMPILED_META_REFERENCES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "compiled/meta_tables.h"
#include "ruxcomp/file/cursor.h"

namespace rux::compiled {

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

  // A group, action or global, and what refers to one: in any order. Define() answers false when
  // the name was defined before.
  bool Define(std::uint32_t index);
  void Use(std::uint32_t index, WordPlace place);

  // A section of another kind has that string for its name: false when one before it has it.
  bool NameSection(std::uint32_t section_identifier, std::uint32_t index);

  // Which group a group is in.
  void SetParent(std::uint32_t group, std::uint32_t parent, WordPlace place);

  // Once all sections are read: reports what is referred to and defined nowhere, groups that are
  // above themselves, and tables without cells.
  void Check(Cursor& cursor);

 private:
  struct Name {
    bool is_defined = false;
    WordPlace first_use;
    // Of a group.
    std::uint32_t parent = 0;
    WordPlace parent_place;
  };
  using Names = std::vector<Name>;  // by ordinal

  Names& NamesOf(std::uint32_t base);
  void DefineTables();
  void CheckUses(Cursor& cursor, std::uint32_t base);
  void CheckParents(Cursor& cursor);
  void CheckCells(Cursor& cursor) const;

  const MetaTables& tables_;
  Names groups_;
  Names actions_;
  Names globals_;
  Names table_names_;
  std::vector<std::uint32_t> table_sections_;  // the strings that TABLE sections have for names
  std::vector<std::uint32_t> named_in_;        // by ordinal of the string: the kind so named last
};

}  // namespace rux::compiled

#endif  // COMPILED_META_REFERENCES_H_
