#include "backend/symbol_tables.h"

extern "C" {
#define SYMBOL_TABLE(name, class_byte, key) \
  std::map<key, std::uint32_t> g_tbl##name; \
  std::uint32_t g_idx##name = RUX_CLASS_##name;
#include "ruxcomp/symbol_tables.def"

std::vector<std::uint8_t> g_tblTableData;
}

const SymbolTable kSymbolTables[kSymbolTableCount] = {
#define SYMBOL_TABLE(name, class_byte, key) {RUX_CLASS_##name, &g_tbl##name, &g_idx##name},
#include "ruxcomp/symbol_tables.def"
};

namespace {

template <class Table, class Key>
std::uint32_t Intern(Table& table, std::uint32_t& counter, const Key& key, std::uint32_t step) {
  std::uint32_t& index = table[key];
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

tagTBLDATA LookUp(const StringTable& table, std::uint32_t index) {
  const char* text = GetTblData(table, index);
  if (!text) return Nothing(index);
  return {RUX_DATA_STRING, index, {text}};
}

// The number 0xFFFFFFFF cannot be told from one that was not found.
tagTBLDATA LookUp(const NumberTable& table, std::uint32_t index) {
  const std::uint32_t number = GetTblData(table, index);
  return number == 0xFFFFFFFF ? Nothing(index) : Number(index, number);
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
  return 0xFFFFFFFF;
}

tagTBLDATA GetTblData(std::uint32_t index) {
  switch (ClassOf(index)) {
    case RUX_CLASS_Small:
    case RUX_CLASS_ValueType:
    case RUX_CLASS_Operator:
      return Number(index, OrdinalOf(index));
    default:
      break;
  }
  const SymbolTable* found = FindSymbolTable(ClassOf(index));
  if (!found) return Nothing(index);
  return std::visit([index](const auto* table) { return LookUp(*table, index); }, found->table);
}
