// The sections of the loaded meta file by kind, ID and name.
#ifndef QUERY_SECTION_INDEX_H_
#define QUERY_SECTION_INDEX_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "backend/symbol_tables.h"
#include "ruxcomp/records.h"

// Remembers where the queries by kind, ID and name end, so that they need not walk over all of
// g_GCHead. Hosts can reach the records: what is remembered is held against the record before it is
// answered, and what is not found is for the caller to look for.
class SectionIndex {
 public:
  // The index of g_GCHead as it is, made anew when other records were loaded.
  static SectionIndex& Current();

  // The sections of a kind in the order of the file.
  const std::vector<tagGCSECT*>& OfKind(std::uint32_t kind) const;

  // The first section of a kind that has that ID or carries that name; null when none is
  // remembered.
  tagGCSECT* WithId(std::uint32_t kind, std::uint32_t id);
  tagGCSECT* WithName(std::uint32_t kind, const std::string& name);

 private:
  struct Place {
    tagGCSECT* section;
    std::size_t entry;    // the entry that has the ID or the name
    std::uint32_t index;  // the table index that stands for it
  };
  template <class Key>
  using Places = std::unordered_map<Key, Place>;
  struct Kind {
    std::vector<tagGCSECT*> sections;
    // Made when they are first asked for: not every host asks for both, of every kind.
    std::optional<Places<std::uint32_t>> ids;
    std::optional<Places<std::string>> names;
  };

  template <class Offered, class Use>
  static void ForEachOffer(const std::vector<tagGCSECT*>& sections, Offered offered, Use use);
  // The section of the place with that key, if the place still offers what it did.
  template <class Known, class Key, class Offered>
  static tagGCSECT* Cached(const Known& places, const Key& key, Offered offered);

  bool IsOf(const std::vector<tagGCSECT*>& sections) const;
  Kind* Find(std::uint32_t kind);
  Places<std::uint32_t> IndexIds(const Kind& kind);
  Places<std::string> IndexNames(const Kind& kind);
  tagTBLDATA Look(std::uint32_t index);

  std::unordered_map<std::uint32_t, Kind> kinds_;
  std::optional<TableSnapshot> tables_;  // made when the first of them is
  tagGCSECT* const* first_ = nullptr;    // of the records that were indexed
  std::size_t count_ = 0;
  std::uint32_t generation_ = 0;
};

#endif  // QUERY_SECTION_INDEX_H_
