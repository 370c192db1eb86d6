// What the read model is made of; see model.h.
#ifndef RUXCOMP_MODEL_RECORDS_H_
#define RUXCOMP_MODEL_RECORDS_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "ruxcomp/identifiers.h"
#include "ruxcomp/model/hash_index.h"
#include "ruxcomp/model/tables.h"
#include "ruxcomp/model/value.h"

namespace ruxcomp {

// The cells of a TABLE section.
using TableCells = std::array<std::uint8_t, RUX_TABLE_CELLS>;

namespace detail {

struct Records;

// What belongs to an entry ends where the next one's begins. There is one more behind the last.
struct EntryRecord {
  std::uint32_t identifier;
  std::uint32_t first_value;
};

struct SectionRecord {
  const Records* model;
  std::uint32_t first_entry;
  std::uint32_t entry_count;
  std::uint32_t kind;
  std::uint32_t ordinal;  // among the sections of the kind
  // Table indices.
  std::uint32_t name;
  std::uint32_t id;
};

// A model. Once it is made, nothing in it changes or moves.
struct Records {
  static constexpr std::size_t kKinds = 0
#define SECTION(keyword, kind, notation) +1
#include "ruxcomp/sections.def"
      ;
  // In sections with more entries, these are looked up by hash.
  static constexpr std::uint32_t kFewEntries = 64;

  Tables tables;
  std::vector<std::uint32_t> values;  // table indices
  std::vector<EntryRecord> entries;
  std::vector<SectionRecord> sections;                 // kind by kind
  std::array<std::uint32_t, kKinds + 1> kind_begin{};  // where each begins; the end of the last
  std::vector<TableCells> cells;

  // In the scope of a kind: sections.
  HashIndex<NumberKey> sections_by_id;
  HashIndex<TextKey> sections_by_name;
  // In the scope of the first entry of a large section: its entries.
  HashIndex<NumberKey> entries_by_identifier;
  HashIndex<TextKey> entries_by_name;

  const SectionRecord* SectionWithId(std::uint32_t kind, std::uint32_t id) const noexcept {
    return At(sections, sections_by_id.Find(kind, id));
  }
  const SectionRecord* SectionNamed(std::uint32_t kind, std::string_view name) const noexcept {
    return At(sections, sections_by_name.Find(kind, name));
  }

  const EntryRecord* EntryOf(const SectionRecord& section,
                             std::uint32_t identifier) const noexcept {
    if (section.entry_count > kFewEntries) {
      return At(entries, entries_by_identifier.Find(section.first_entry, identifier));
    }
    return First(section, [&](const EntryRecord& e) { return e.identifier == identifier; });
  }
  const EntryRecord* EntryNamed(const SectionRecord& section,
                                std::string_view name) const noexcept {
    if (section.entry_count > kFewEntries) {
      return At(entries, entries_by_name.Find(section.first_entry, name));
    }
    return First(section, [&](const EntryRecord& entry) {
      const Value own = tables.Resolve(entry.identifier);
      return own.kind() == RUX_DATA_STRING && own.text() == name;
    });
  }

 private:
  template <class Record>
  static const Record* At(const std::vector<Record>& records, std::uint32_t place) noexcept {
    return place == kNoItem ? nullptr : &records[place];
  }

  template <class Test>
  const EntryRecord* First(const SectionRecord& section, Test test) const noexcept {
    const EntryRecord* const begin = entries.data() + section.first_entry;
    const EntryRecord* const end = begin + section.entry_count;
    const EntryRecord* const found = std::find_if(begin, end, test);
    return found == end ? nullptr : found;
  }
};

}  // namespace detail
}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_RECORDS_H_
