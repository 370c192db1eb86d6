// Where scripts said what a machine is: what only a debug meta file knows.
#ifndef MACHINE_ORIGINS_H_
#define MACHINE_ORIGINS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "machine/place.h"
#include "ruxcomp/language/sections.h"

namespace rux::machine {

class Origins {
 public:
  // Of the bytes of a sound debug meta file, whose scripts are in the revision.
  explicit Origins(const std::string& bytes, std::string revision = {});

  // Of the ordinal-th section of a kind, which is the same in the compiled file. None when the file
  // does not say.
  std::optional<Place> OfSection(const ruxcomp::language::SectionKind& kind,
                                 std::size_t ordinal) const;
  // The same of the entry with that key in it; of the section when it does not have the key.
  std::optional<Place> OfEntry(const ruxcomp::language::SectionKind& kind, std::size_t ordinal,
                               std::string_view key) const;

  // All files of the script, those without a section too.
  const std::vector<std::string>& files() const { return files_; }

  // The defined words with their numbers, by name.
  using Word = std::pair<std::string_view, std::uint32_t>;
  const std::vector<Word>& words() const { return words_; }

 private:
  class Reader;

  struct Spot {
    std::uint32_t file;
    std::uint32_t line;
  };
  struct EntrySpot {
    std::string_view key;
    Spot at;
  };
  struct SectionSpot {
    Spot at;
    std::size_t first_entry;
    std::size_t entry_count;
  };
  const SectionSpot* Find(const ruxcomp::language::SectionKind& kind, std::size_t ordinal) const;
  const EntrySpot* FindEntry(const SectionSpot& section, std::string_view key) const;
  std::optional<Place> PlaceOf(Spot spot) const;

  std::vector<char> bytes_;  // what the views below look at
  const std::string revision_;
  std::vector<std::string> files_;
  std::vector<Word> words_;
  std::array<std::vector<SectionSpot>, ruxcomp::language::kSectionKindCount> sections_;
  std::vector<EntrySpot> entries_;
  // The entries of large sections by their keys, when first needed; by the first entry.
  mutable std::map<std::size_t, std::unordered_map<std::string_view, const EntrySpot*>> by_key_;
};

}  // namespace rux::machine

#endif  // MACHINE_ORIGINS_H_
