// What the values of the entries of a meta file must be.
#ifndef COMPILED_VALUE_RULES_H_
#define COMPILED_VALUE_RULES_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "compiled/meta_references.h"
#include "compiled/meta_tables.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/language/compiled_entries.h"
#include "ruxcomp/language/values.h"

namespace rux::compiled {

// Judges one entry after the other. Where the compiler passes on what no check of the script looks
// at, anything goes: the arguments of a repeater, and operands of an action that has so many
// arguments that the number of one can run over into the class of its word.
class ValueRules {
 public:
  ValueRules(const MetaTables& tables, MetaReferences& references)
      : tables_(tables), references_(references) {}

  void BeginSection(const MetaSectionView& section);
  void CheckEntry(Cursor& cursor, const MetaEntryView& entry, language::Content content);
  // The section has an entry of that name, for its other values to mention.
  void AddLocalValue(std::uint32_t identifier) { local_values_.push_back(identifier); }
  void EndSection(Cursor& cursor);

  // How many values an entry may have.
  struct Range {
    std::size_t least;
    std::size_t most;
  };

 private:
  // Words of one entry.
  struct Values {
    Cursor& cursor;
    const MetaEntryView& entry;

    std::uint32_t operator[](std::size_t i) const { return entry.values[i]; }
  };

  static bool ExpectCount(Values values, Range right) {
    const std::size_t count = values.entry.values.size();
    if (count >= right.least && count <= right.most) return true;
    ReportCount(values, right);
    return false;
  }
  static void ReportCount(Values values, Range right);
  bool Check(Values values, std::size_t i, std::uint32_t base);
  void CheckText(Values values, language::Content content);
  void CheckNumber(Values values);
  void CheckParent(Values values);
  void CheckTypedValue(Values values);
  void CheckRepetition(Values values);
  void CheckPart(Values values, std::size_t i, language::Role role, std::size_t last_argument);
  void CheckOperand(Values values, std::size_t i, std::size_t last_argument);
  void Define(Values values, std::uint32_t base);
  void Use(Values values, std::size_t i, std::uint32_t base);
  void UseLocalValue(Values values, std::size_t i);
  static void ReportNoOperand(Values values, std::size_t i);
  WordPlace PlaceOf(Values values, std::size_t i) const;

  const MetaTables& tables_;
  MetaReferences& references_;

  // Of the section that one is in.
  std::uint32_t section_ = 0;  // its ordinal
  std::uint32_t identifier_ = 0;
  bool has_argument_number_ = false;
  bool operands_are_any_ = false;
  std::uint32_t parent_ = 0;  // of a GROUP or SENSOR: the group that it is in
  WordPlace parent_place_;
  struct LocalUse {
    std::uint32_t identifier;
    WordPlace place;
  };
  std::vector<LocalUse> local_uses_;
  std::vector<std::uint32_t> local_values_;
};

}  // namespace rux::compiled

#endif  // COMPILED_VALUE_RULES_H_
