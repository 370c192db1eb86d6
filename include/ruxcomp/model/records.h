// A read model: where its sections are, and what finds them; see model.h.
#ifndef RUXCOMP_MODEL_RECORDS_H_
#define RUXCOMP_MODEL_RECORDS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/file/kept_bytes.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/model/hash_index.h"
#include "ruxcomp/model/lazy.h"
#include "ruxcomp/model/section_list.h"
#include "ruxcomp/model/tables.h"
#include "ruxcomp/model/value.h"
#include "ruxcomp/model/words.h"
#include "ruxcomp/record_rules.h"
#include "ruxcomp/records.h"

namespace ruxcomp {

// The cells of a TABLE section.
using TableCells = std::array<std::uint8_t, RUX_TABLE_CELLS>;

namespace detail {

// The bytes of a meta file, or bytes that are laid out like its sections, and what it takes to read
// them where they are. Once it is made, nothing in it changes except the indices that queries
// build.
class Records {
 public:
  // In sections with more entries, these are looked up by hash.
  static constexpr std::uint32_t kFewEntries = 64;

  // Whoever makes a model fills these and calls Settle at the end.
  file::KeptBytes bytes;  // what all places count from
  Tables tables;
  SectionList sections;
  std::string_view cells;  // of all TABLE sections
  tagMETAFILEINFO info{};

  // The places of texts count from that offset.
  void Settle(std::size_t texts = 0) {
    const char* const begin = bytes.view().data();
    words_ = reinterpret_cast<const Word*>(begin);
    tables.Settle(begin + texts);
    sections.Settle();
  }

  const Word* At(std::uint32_t place) const noexcept { return words_ + place; }
  std::uint32_t PlaceOf(const Word* record) const noexcept {
    return static_cast<std::uint32_t>(record - words_);
  }

  const TableCells* CellsOf(std::size_t table) const noexcept {
    if (table >= cells.size() / sizeof(TableCells)) return nullptr;
    return reinterpret_cast<const TableCells*>(cells.data()) + table;
  }

  // What the first value of an entry stands for, and the value of the first entry with that
  // identifier that has any.
  Value FirstValue(const Word* entry) const noexcept {
    return CountOf(entry) > 0 ? tables.Resolve(entry[kHeadWords].Load()) : Value();
  }
  Value FirstValue(const Word* section, std::uint32_t identifier) const noexcept {
    const Word* const found = FirstEntry(section, [&](const Word* entry, std::uint32_t) {
      return IdentifierOf(entry) == identifier && CountOf(entry) > 0;
    });
    return found != nullptr ? FirstValue(found) : Value();
  }

  // These answer null when there is none.

  const Word* SectionWithId(std::uint32_t kind, std::uint32_t id) const noexcept {
    return FindSection(sections_by_id_, kind, id,
                       [this](const Word* section, auto test) { return OffersId(section, test); });
  }
  const Word* SectionNamed(std::uint32_t kind, std::string_view name) const noexcept {
    return FindSection(sections_by_name_, kind, name, [this](const Word* section, auto test) {
      return OffersName(section, test);
    });
  }
  const Word* EntryWith(const Word* section, std::uint32_t identifier) const noexcept {
    return FindEntry(
        entries_by_identifier_, section, identifier,
        [](const Word* entry, std::uint32_t, auto test) { return test(IdentifierOf(entry)); });
  }
  const Word* EntryNamed(const Word* section, std::string_view name) const noexcept {
    return FindEntry(entries_by_name_, section, name,
                     [this](const Word* entry, std::uint32_t, auto test) {
                       return IsText(IdentifierOf(entry), test);
                     });
  }
  const Word* EntryAt(const Word* section, std::uint32_t ordinal) const noexcept {
    return FindEntry(entries_by_ordinal_, section, ordinal,
                     [](const Word*, std::uint32_t own, auto test) { return test(own); });
  }

 private:
  // Whether the section offers an ID, or a name, that passes the test.
  template <class Test>
  bool OffersId(const Word* section, Test test) const {
    return OffersIndex(section, [&](const std::uint32_t& identifier, const std::uint32_t* value) {
      const std::uint32_t* const index = OfferedId(identifier, value);
      if (index == nullptr) return false;
      const Value id = tables.Resolve(*index);
      return id.kind() == RUX_DATA_NUMBER && test(id.number());
    });
  }
  template <class Test>
  bool OffersName(const Word* section, Test test) const {
    const std::uint32_t kind = IdentifierOf(section);
    return OffersIndex(section, [&](const std::uint32_t& identifier, const std::uint32_t* value) {
      const std::uint32_t* const index = OfferedName(kind, identifier, value);
      return index != nullptr && IsText(*index, test);
    });
  }
  // The test gets the identifier of each entry, and the first value unless there is none.
  template <class Test>
  static bool OffersIndex(const Word* section, Test test) {
    return FirstEntry(section, [&](const Word* entry, std::uint32_t) {
             const std::uint32_t identifier = IdentifierOf(entry);
             if (CountOf(entry) == 0) return test(identifier, nullptr);
             const std::uint32_t value = entry[kHeadWords].Load();
             return test(identifier, &value);
           }) != nullptr;
  }
  template <class Test>
  bool IsText(std::uint32_t index, Test test) const {
    const Value text = tables.Resolve(index);
    return text.kind() == RUX_DATA_STRING && test(text.text());
  }

  // The first section of the kind that has the key: offers(section, test) says whether one of its
  // keys passes the test.
  template <class Key, class Offers>
  const Word* FindSection(const Lazy<HashIndex<Key>>& lazy, std::uint32_t kind,
                          typename Key::Of key, Offers offers) const noexcept {
    const HashIndex<Key>* const index = lazy.made();
    if (index == nullptr) return FindUnindexedSection(lazy, kind, key, offers);
    return AtItem(index->Find(kind, key));
  }
  // Apart, so that what nearly every look-up runs is short enough to be inlined.
  template <class Key, class Offers>
  [[gnu::cold, gnu::noinline]] const Word* FindUnindexedSection(const Lazy<HashIndex<Key>>& lazy,
                                                                std::uint32_t kind,
                                                                typename Key::Of key,
                                                                Offers offers) const noexcept {
    const HashIndex<Key>* const index = lazy.Get([&](HashIndex<Key>& made) {
      return Fill(made, [&](auto add) {
        for (const std::uint32_t place : sections.all()) {
          offers(At(place),
                 [&](typename Key::Of own) { return add(IdentifierOf(At(place)), own, place); });
        }
      });
    });
    if (index != nullptr) return AtItem(index->Find(kind, key));
    const auto is_key = [&](typename Key::Of own) { return own == key; };
    for (const std::uint32_t place : sections.OfKind(kind)) {
      if (offers(At(place), is_key)) return At(place);
    }
    return nullptr;
  }

  // The same for the entries of a section: offers(entry, ordinal, test).
  template <class Key, class Offers>
  const Word* FindEntry(const Lazy<HashIndex<Key>>& lazy, const Word* section, typename Key::Of key,
                        Offers offers) const noexcept {
    if (CountOf(section) > kFewEntries) {
      if (const HashIndex<Key>* index = IndexOfEntries(lazy, offers)) {
        return AtItem(index->Find(PlaceOf(section), key));
      }
    }
    return FirstEntry(section, [&](const Word* entry, std::uint32_t ordinal) {
      return offers(entry, ordinal, [&](typename Key::Of own) { return own == key; });
    });
  }
  template <class Key, class Offers>
  [[gnu::noinline]] const HashIndex<Key>* IndexOfEntries(const Lazy<HashIndex<Key>>& lazy,
                                                         Offers offers) const noexcept {
    return lazy.Get([&](HashIndex<Key>& made) {
      return Fill(made, [&](auto add) {
        for (const std::uint32_t place : sections.all()) {
          if (CountOf(At(place)) <= kFewEntries) continue;
          FirstEntry(At(place), [&](const Word* entry, std::uint32_t ordinal) {
            return offers(entry, ordinal,
                          [&](typename Key::Of own) { return add(place, own, PlaceOf(entry)); });
          });
        }
      });
    });
  }

  // With all that for_each_key(add) adds by add(scope, key, item), which answers false. Answers
  // false when there is no memory.
  template <class Index, class ForEachKey>
  static bool Fill(Index& index, ForEachKey for_each_key) noexcept {
    std::size_t count = 0;
    for_each_key([&](std::uint32_t, auto, std::uint32_t) {
      ++count;
      return false;
    });
    if (!index.TryReserve(count)) return false;
    for_each_key([&](std::uint32_t scope, auto key, std::uint32_t item) {
      index.Add(scope, key, item);
      return false;
    });
    return true;
  }

  const Word* AtItem(std::uint32_t item) const noexcept {
    return item == kNoItem ? nullptr : At(item);
  }

  const Word* words_ = nullptr;
  // In the scope of a kind: sections.
  Lazy<HashIndex<NumberKey>> sections_by_id_;
  Lazy<HashIndex<TextKey>> sections_by_name_;
  // In the scope of the place of a large section: its entries.
  Lazy<HashIndex<NumberKey>> entries_by_identifier_;
  Lazy<HashIndex<TextKey>> entries_by_name_;
  Lazy<HashIndex<NumberKey>> entries_by_ordinal_;
};

}  // namespace detail
}  // namespace ruxcomp

#endif  // RUXCOMP_MODEL_RECORDS_H_
