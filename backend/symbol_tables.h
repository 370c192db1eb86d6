// The symbol tables: they hand out the 32-bit indices that compiled records are made of.
#ifndef BACKEND_SYMBOL_TABLES_H_
#define BACKEND_SYMBOL_TABLES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "frontend/identifiers.h"
#include "ruxcomp/data.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

using StringTable = std::map<std::string, std::uint32_t>;
using NumberTable = std::map<std::uint32_t, std::uint32_t>;

// A table, the class of its indices (also its first index) and the next index that it hands out.
struct SymbolTable {
  std::uint32_t base;
  std::variant<StringTable*, NumberTable*> table;
  std::uint32_t* counter;
};

// All tables, in the order of the meta file's directory.
extern const SymbolTable kSymbolTables[kSymbolTableCount];

// The table of that class; null when there is none.
const SymbolTable* FindSymbolTable(std::uint32_t base);

// Fills the name tables from the source model, before it is compiled. Returns 1.
std::uint32_t InitTblD();

// The index of a key; a new key gets the counter's, which goes up by `step`.
std::uint32_t InsertTbl(StringTable& table, std::uint32_t& counter, const std::string& key,
                        std::uint32_t step);
std::uint32_t InsertTbl(NumberTable& table, std::uint32_t& counter, std::uint32_t key,
                        std::uint32_t step);

// What an index stands for; kind RUX_DATA_NONE for an index that is in no table. Walks the table:
// use a TableSnapshot to look up many indices.
tagTBLDATA GetTblData(std::uint32_t index);

// The key with that index; null, or 0xFFFFFFFF, when there is none.
const char* GetTblData(const StringTable& table, std::uint32_t index);
std::uint32_t GetTblData(const NumberTable& table, std::uint32_t index);

// The keys of a table in index order, one for every index that was handed out; null for an index
// that no key has. Of several keys with one index the first counts. Calls use(key, counts) for
// every key in the order of the table.
template <class Table, class Use>
auto KeysByIndex(const Table& table, std::uint32_t base, std::uint32_t counter, Use use) {
  std::vector<const typename Table::key_type*> keys(counter > base ? counter - base : 0);
  for (const auto& [key, index] : table) {
    const bool counts = index >= base && index < counter && !keys[index - base];
    if (counts) keys[index - base] = &key;
    use(key, counts);
  }
  return keys;
}

// How many keys each table has, in the order of kSymbolTables.
using TableSizes = std::array<std::size_t, kSymbolTableCount>;
TableSizes SizesOfTables();

// What GetTblData answers, for those who ask for many indices: each table, inverted when it is
// first asked. Refers to the keys of the tables: drop it before they change.
class TableSnapshot {
 public:
  tagTBLDATA Get(std::uint32_t index);

 private:
  using Keys = std::variant<std::vector<const std::string*>, std::vector<const std::uint32_t*>>;

  std::array<std::optional<Keys>, kSymbolTableCount> tables_;  // in the order of kSymbolTables
};

}  // namespace ruxcomp::core

#endif  // BACKEND_SYMBOL_TABLES_H_
