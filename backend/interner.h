// From numbers, texts and names to the indices of the symbol tables, while a model is compiled.
#ifndef BACKEND_INTERNER_H_
#define BACKEND_INTERNER_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "backend/symbol_tables.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/hash_index.h"

namespace ruxcomp::core {

// Enters keys into a table. New ones wait in a hash table until Finish enters them in their order,
// so that most take no search.
template <class Table, class Key>
class TableFiller {
 public:
  TableFiller(Table& table, std::uint32_t& counter)
      : table_(table), counter_(counter), had_keys_(!table.empty()) {}

  // The index of a key; a new key gets the next index. A text must outlive Finish.
  std::uint32_t IndexOf(typename Key::Of key) {
    const std::uint32_t known = indices_.Find(0, key);
    if (known != ruxcomp::detail::kNoItem) return known;
    std::uint32_t index = 0;
    if (had_keys_) {
      const auto found = table_.find(typename Table::key_type(key));
      if (found != table_.end()) index = found->second;
    }
    if (index == 0) {
      added_.emplace_back(key, counter_);
      index = counter_++;
    }
    indices_.Add(0, key, index);
    return index;
  }

  void Finish() {
    std::sort(added_.begin(), added_.end(),
              [](const auto& one, const auto& other) { return one.first < other.first; });
    auto next = table_.begin();
    for (const auto& [key, index] : added_) {
      const auto place = table_.try_emplace(next, typename Table::key_type(key), index);
      place->second = index;
      next = had_keys_ ? std::next(place) : table_.end();
    }
    added_.clear();
  }

 private:
  Table& table_;
  std::uint32_t& counter_;
  const bool had_keys_;
  ruxcomp::detail::HashIndex<Key> indices_;
  std::vector<std::pair<typename Key::Of, std::uint32_t>> added_;
};

// Looks up names in a table that is already filled. A name that it lacks is added without an index.
class NameTable {
 public:
  // 0 for a name without an index. The text must outlive the object.
  std::uint32_t IndexOf(StringTable& table, std::string_view name) {
    std::uint32_t index = known_.Find(0, name);
    if (index == ruxcomp::detail::kNoItem) {
      index = table[std::string(name)];
      known_.Add(0, name, index);
    }
    return index;
  }

 private:
  ruxcomp::detail::HashIndex<ruxcomp::detail::TextKey> known_;
};

// All tables of a model. While an Interner lives, nothing else changes them.
class Interner {
 public:
  std::uint32_t Number(std::uint32_t number) { return numbers_.IndexOf(number); }
  std::uint32_t Text(std::string_view text) { return texts_.IndexOf(text); }

  // The index of a name in the table of that class; 0 when the name has none.
  template <std::uint32_t kClass>
  std::uint32_t Name(std::string_view name) {
    constexpr std::size_t kPlace =
        PlaceOfRow(kBlocks, [](const Block& block) { return block.base == kClass; });
    return names_[kPlace].IndexOf(*std::get<StringTable*>(kSymbolTables[kPlace].table), name);
  }

  // Enters what is new. Call it at the end, also after a raised error.
  void Finish() {
    numbers_.Finish();
    texts_.Finish();
  }

 private:
  TableFiller<NumberTable, ruxcomp::detail::NumberKey> numbers_{g_tblDword, g_idxDword};
  TableFiller<StringTable, ruxcomp::detail::TextKey> texts_{g_tblString, g_idxString};
  std::array<NameTable, kSymbolTableCount> names_;
};

}  // namespace ruxcomp::core

#endif  // BACKEND_INTERNER_H_
