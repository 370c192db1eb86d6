// The sections of the loaded meta file by kind, ID and name.
#ifndef QUERY_SECTION_INDEX_H_
#define QUERY_SECTION_INDEX_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "backend/symbol_tables.h"
#include "frontend/arena.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/model/seeded_hash.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

// Remembers what the queries by kind, ID and name find, so that they need not walk over all of
// g_GCHead. Hosts can reach the records and the tables, so an answer is checked against the record
// first, and refers to no table. The caller walks when the record has changed or memory runs out.
class SectionIndex {
 public:
  // The sections of a kind in the order of the file, if they are remembered.
  using Sections = ruxcomp::language::Rows<tagGCSECT*>;
  static std::optional<Sections> OfKind(std::uint32_t kind) noexcept;

  // The result of a search by ID or name: the first section, or null and whether there was anything
  // to compare with: an ID, or a name that is a text.
  struct Answer {
    tagGCSECT* section = nullptr;
    bool has_kind = false;
    bool has_others = false;
  };

  // The first section of a kind with that ID or name; none when the caller has to walk.
  static std::optional<Answer> WithId(std::uint32_t kind, std::uint32_t id) noexcept;
  static std::optional<Answer> WithName(std::uint32_t kind, std::string_view name) noexcept;

 private:
  struct Place {
    tagGCSECT* section;
    std::size_t entry;    // the entry that has the ID or the name
    std::uint32_t index;  // the table index that stands for it
  };
  struct Ids {
    bool has_any = false;  // also one that no table has
    ruxcomp::detail::HashMap<std::uint32_t, Place> places;
  };
  struct Names {
    Arena texts;
    ruxcomp::detail::HashMap<std::string_view, Place> places;
  };
  struct Kind {
    std::vector<tagGCSECT*> sections;
    // Made when they are first asked for: few hosts ask for both, of every kind.
    std::optional<Ids> ids;
    std::optional<Names> names;
  };

  // Lives as long as the library: hosts may ask until they end.
  static SectionIndex m_current;

  // The kind in m_current, which is made anew after other records were loaded or a table changed
  // its size; null when there is no section of the kind. Raises std::bad_alloc.
  static Kind* Find(std::uint32_t kind);
  bool IsUpToDate() const;

  static Ids IndexIds(const Kind& kind);
  static Names IndexNames(const Kind& kind);

  ruxcomp::detail::HashMap<std::uint32_t, Kind> kinds_;
  tagGCSECT* const* first_ = nullptr;  // of the records that were indexed
  std::size_t count_ = 0;
  std::uint32_t generation_ = 0;
  TableSizes table_sizes_ = {};
};

}  // namespace ruxcomp::core

#endif  // QUERY_SECTION_INDEX_H_
