// The differences between two sections that are the same one.
#ifndef DIFF_SECTION_COMPARER_H_
#define DIFF_SECTION_COMPARER_H_

#include <vector>

#include "diff/change.h"
#include "diff/classes.h"
#include "diff/matching.h"
#include "diff/placed.h"

namespace rux::diff {

class SectionComparer {
 public:
  SectionComparer(const Matching& matching, std::vector<Change>& changes)
      : matching_(matching), changes_(changes) {}

  // All but NAME and ID.
  void CompareEntries(const PlacedSection& before, const PlacedSection& after);
  // Of the sections of a kind whose keys are found in any of them.
  void CompareKeys(const std::vector<PlacedEntry>& before, const std::vector<PlacedEntry>& after);

 private:
  bool AreAlike(const PlacedSection& before, const PlacedSection& after) const;
  void CompareEntry(const PlacedEntry& before, const PlacedEntry& after);
  void CompareLimit(const PlacedEntry& before, const PlacedEntry& after);
  void CompareMembers(const PlacedEntry& before, const PlacedEntry& after);
  void CompareParts(const PlacedEntry& before, const PlacedEntry& after);
  void AddOne(const PlacedEntry& entry, bool is_new);
  Change& Add(ClassId id, const PlacedEntry& before, const PlacedEntry& after);

  const Matching& matching_;
  std::vector<Change>& changes_;
};

}  // namespace rux::diff

#endif  // DIFF_SECTION_COMPARER_H_
