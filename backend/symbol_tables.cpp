#include "backend/symbol_tables.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "frontend/lifetime.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/records.h"

extern "C" {
#define SYMBOL_TABLE(name, class_byte, title, prefix, key)          \
  RUX_FROM_LOAD_TO_UNLOAD std::map<key, std::uint32_t> g_tbl##name; \
  std::uint32_t g_idx##name = RUX_CLASS_##name;
#include "ruxcomp/language/symbol_tables.def"

RUX_FROM_LOAD_TO_UNLOAD std::vector<std::uint8_t> g_tblTableData;
}

namespace ruxcomp::core {

const SymbolTable kSymbolTables[kSymbolTableCount] = {
#define SYMBOL_TABLE(name, class_byte, title, prefix, key) \
  {RUX_CLASS_##name, &g_tbl##name, &g_idx##name},
#include "ruxcomp/language/symbol_tables.def"
};

namespace {

template <class Table, class Key>
std::uint32_t Intern(Table& table, std::uint32_t& counter, const Key& key, std::uint32_t step) {
  // Generated models count their numbers and names up: a key after all others needs no search.
  const bool is_last = table.empty() || table.rbegin()->first < key;
  std::uint32_t& index = is_last ? table.emplace_hint(table.end(), key, 0)->second : table[key];
  if (index == 0) {
    index = counter;
    counter += step;
  }
  return index;
}

tagTBLDATA Nothing(std::uint32_t index) { return {RUX_DATA_NONE, index, {nullptr}}; }

tagTBLDATA Number(std::uint32_t index, std::uint32_t number) {
  tagTBLDATA result = Nothing(index);
  result.kind = RUX_DATA_NUMBER;
  result.data.number = number;
  return result;
}

tagTBLDATA Data(std::uint32_t index, const char* text) {
  if (!text) return Nothing(index);
  return {RUX_DATA_STRING, index, {text}};
}

// The number 0xFFFFFFFF is indistinguishable from one that was not found.
tagTBLDATA Data(std::uint32_t index, std::uint32_t number) {
  return number == kNoNumber ? Nothing(index) : Number(index, number);
}

// The key of a snapshot as the walk over its table answers it.
tagTBLDATA Data(std::uint32_t index, const std::string* key) {
  return Data(index, key ? key->c_str() : nullptr);
}
tagTBLDATA Data(std::uint32_t index, const std::uint32_t* key) {
  return Data(index, key ? *key : kNoNumber);
}

}  // namespace

const SymbolTable* FindSymbolTable(std::uint32_t base) {
  for (const SymbolTable& table : kSymbolTables) {
    if (table.base == base) return &table;
  }
  return nullptr;
}

std::uint32_t InsertTbl(StringTable& table, std::uint32_t& counter, const std::string& key,
                        std::uint32_t step) {
  return Intern(table, counter, key, step);
}

std::uint32_t InsertTbl(NumberTable& table, std::uint32_t& counter, std::uint32_t key,
                        std::uint32_t step) {
  return Intern(table, counter, key, step);
}

const char* GetTblData(const StringTable& table, std::uint32_t index) {
  for (const auto& [key, keyIndex] : table) {
    if (keyIndex == index) return key.c_str();
  }
  return nullptr;
}

std::uint32_t GetTblData(const NumberTable& table, std::uint32_t index) {
  for (const auto& [key, keyIndex] : table) {
    if (keyIndex == index) return key;
  }
  return kNoNumber;
}

tagTBLDATA GetTblData(std::uint32_t index) {
  if (IsImmediate(index)) return Number(index, OrdinalOf(index));
  const SymbolTable* found = FindSymbolTable(ClassOf(index));
  if (!found) return Nothing(index);
  return std::visit([index](const auto* table) { return Data(index, GetTblData(*table, index)); },
                    found->table);
}

TableSizes SizesOfTables() {
  return {
#define SYMBOL_TABLE(name, class_byte, title, prefix, key) g_tbl##name.size(),
#include "ruxcomp/language/symbol_tables.def"
  };
}

tagTBLDATA TableSnapshot::Get(std::uint32_t index) {
  if (IsImmediate(index)) return Number(index, OrdinalOf(index));
  const SymbolTable* found = FindSymbolTable(ClassOf(index));
  if (!found) return Nothing(index);
  std::optional<Keys>& turned = tables_[static_cast<std::size_t>(found - kSymbolTables)];
  if (!turned) {
    const auto ignore = [](const auto&, bool) {};
    turned = std::visit(
        [&](const auto* table) -> Keys {
          return KeysByIndex(*table, found->base, *found->counter, ignore);
        },
        found->table);
  }
  return std::visit(
      [index](const auto& keys) {
        const std::uint32_t ordinal = OrdinalOf(index);
        return ordinal < keys.size() ? Data(index, keys[ordinal]) : Nothing(index);
      },
      *turned);
}

}  // namespace ruxcomp::core
