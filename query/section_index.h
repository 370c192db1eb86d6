// The sections of the loaded meta file by kind, ID and name.
#ifndef QUERY_SECTION_INDEX_H_
#define QUERY_SECTION_INDEX_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "ruxcomp/records.h"

// Remembers where the queries by kind, ID and name end, so that they need not walk over all of
// g_GCHead. Hosts can reach the records: what is remembered is held against the record before it is
// answered, and what is not found is for the caller to look for.
class SectionIndex {
 public:
  // The index of g_GCHead as it is, made anew when other records were loaded.
  static const SectionIndex& Current();

  // The sections of a kind in the order of the file.
  const std::vector<tagGCSECT*>& OfKind(std::uint32_t kind) const;

  // The first section of a kind that has that ID or carries that name; null when none is
  // remembered.
  tagGCSECT* WithId(std::uint32_t kind, std::uint32_t id) const;
  tagGCSECT* WithName(std::uint32_t kind, const std::string& name) const;

 private:
  struct Place {
    tagGCSECT* section;
    std::size_t entry;    // the entry that has the ID or the name
    std::uint32_t index;  // the table index that stands for it
  };
  struct Kind {
    std::vector<tagGCSECT*> sections;
    std::unordered_map<std::uint32_t, Place> ids;
    std::unordered_map<std::string, Place> names;
  };
  class Builder;

  bool IsOf(const std::vector<tagGCSECT*>& sections) const;
  const Kind* Find(std::uint32_t kind) const;

  std::unordered_map<std::uint32_t, Kind> kinds_;
  tagGCSECT* const* first_ = nullptr;  // of the records that were indexed
  std::size_t count_ = 0;
  std::uint32_t generation_ = 0;
};

#endif  // QUERY_SECTION_INDEX_H_
