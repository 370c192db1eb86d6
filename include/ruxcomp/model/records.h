// The records and words of the read model; see model.h.
#ifndef RUXCOMP_MODEL_RECORDS_H_
#define RUXCOMP_MODEL_RECORDS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/words.h"
#include "ruxcomp/model/hash_index.h"
#include "ruxcomp/model/tables.h"
#include "ruxcomp/model/value.h"

namespace ruxcomp::detail {

// A number as it is in a meta file, the least significant byte first.
struct Word {
  unsigned char bytes[language::kWordSize];

  std::uint32_t Load() const noexcept { return language::LoadWord(bytes); }
  void Store(std::uint32_t number) noexcept { language::StoreWord(bytes, number); }
};
static_assert(sizeof(Word) == language::kWordSize && alignof(Word) == 1);

// As many as fit into the bytes.
class Words {
 public:
  Words() = default;
  explicit Words(std::string&& bytes) : bytes_(std::move(bytes)) {}

  std::size_t size() const noexcept { return bytes_.size() / sizeof(Word); }
  std::string_view bytes() const noexcept { return bytes_; }
  const Word* data() const noexcept { return reinterpret_cast<const Word*>(bytes_.data()); }

  void Reserve(std::size_t count) { bytes_.reserve(count * sizeof(Word)); }
  // Makes room for that many more; returns the first of them.
  Word* Add(std::size_t count) {
    // cppcheck-suppress shadowFunction
    const std::size_t size = bytes_.size();
    bytes_.resize(size + count * sizeof(Word));
    return reinterpret_cast<Word*>(bytes_.data() + size);
  }

 private:
  std::string bytes_;
};

}  // namespace ruxcomp::detail

namespace ruxcomp {

// The cells of a TABLE section.
using TableCells = std::array<std::uint8_t, RUX_TABLE_CELLS>;

namespace detail {

struct Records;

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

// Where an entry begins in the words, and copies of what is asked for most of all.
struct EntryRecord {
  std::uint32_t word;
  std::uint32_t identifier;
  std::uint32_t first_value;  // 0xFFFFFFFF, which stands for nothing, where there is none
};

// A model. Once it is made, nothing in it changes or moves.
struct Records {
  static constexpr std::size_t kKinds = language::kSectionKindCount;
  // In sections with more entries, these are looked up by hash.
  static constexpr std::uint32_t kFewEntries = 64;

  Tables tables;
  Words words;  // of entries: see WordsOf
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

  // An entry is what it is in a meta file: its identifier, the count of its values, the values.
  const Word* WordsOf(const EntryRecord& entry) const noexcept { return words.data() + entry.word; }

  const EntryRecord* EntryWith(const SectionRecord& section,
                               std::uint32_t identifier) const noexcept {
    if (section.entry_count > kFewEntries) {
      return At(entries, entries_by_identifier.Find(section.first_entry, identifier));
    }
    return First(section, [&](std::uint32_t own) { return own == identifier; });
  }
  const EntryRecord* EntryNamed(const SectionRecord& section,
                                std::string_view name) const noexcept {
    if (section.entry_count > kFewEntries) {
      return At(entries, entries_by_name.Find(section.first_entry, name));
    }
    return First(section, [&](std::uint32_t identifier) {
      const Value own = tables.Resolve(identifier);
      return own.kind() == RUX_DATA_STRING && own.text() == name;
    });
  }

 private:
  template <class Record>
  static const Record* At(const std::vector<Record>& records, std::uint32_t place) noexcept {
    return place == kNoItem ? nullptr : &records[place];
  }

  // The first entry whose identifier passes the test.
  template <class Test>
  const EntryRecord* First(const SectionRecord& section, Test test) const noexcept {
    const EntryRecord* at = entries.data() + section.first_entry;
    for (std::uint32_t left = section.entry_count; left > 0; --left, ++at) {
      if (test(at->identifier)) return at;
    }
    return nullptr;
  }
};

}  // namespace detail
}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_RECORDS_H_
