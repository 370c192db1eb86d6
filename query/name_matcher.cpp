#include "query/name_matcher.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "backend/symbol_tables.h"
#include "ruxcomp/data.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/record_rules.h"

namespace ruxcomp::core {

namespace {

// The index of a key in the table of a class; 0, which is no index, when the table lacks it.
template <class Table, class Key>
std::uint32_t IndexOf(const Table& table, const Key& key) {
  const auto found = table.find(key);
  return found == table.end() ? 0 : found->second;
}

// The same for a text that is not yet a std::string. There may be no memory to make it one.
std::uint32_t IndexOf(const StringTable& table, std::string_view name) {
  try {
    return IndexOf(table, std::string(name));
  } catch (const std::bad_alloc&) {
    const auto is_sought = [&](const auto& row) { return row.first == name; };
    const auto found = std::find_if(table.begin(), table.end(), is_sought);
    return found == table.end() ? 0 : found->second;
  }
}

}  // namespace

bool NameMatcher::operator()(std::uint32_t index) {
  const SymbolTable* row = FindSymbolTable(ClassOf(index));
  if (!row) return false;
  const auto* table = std::get_if<StringTable*>(&row->table);
  if (!table) return false;
  std::optional<std::uint32_t>& own = indices_[static_cast<std::size_t>(row - kSymbolTables)];
  if (!own) own = IndexOf(**table, name_);
  return *own == index;
}

bool NumberMatcher::operator()(std::uint32_t index) {
  if (IsImmediate(index)) return OrdinalOf(index) == number_;
  if (ClassOf(index) != CLASS_Dword) return false;
  // The number 0xFFFFFFFF cannot be looked up: it reads as none.
  if (!index_) index_ = number_ == kNoNumber ? 0 : IndexOf(g_tblDword, number_);
  return *index_ == index;
}

}  // namespace ruxcomp::core
