// Filling the tables of names and of cells from the source model, one after the other: a raised
// error leaves the later tables as they were.
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "backend/symbol_tables.h"
#include "findings/origin.h"
#include "frontend/defined_words.h"
#include "frontend/entry.h"
#include "frontend/section.h"
#include "frontend/text.h"
#include "frontend/text_errors.h"
#include "ruxcomp/data.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/spelling.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/model/hash_index.h"

namespace ruxcomp::core {

namespace {

// A new key gets the next index.
constexpr std::uint32_t kStep = 1;

// A name without a table would end its section in the meta file. The properties of a PELMGROUP do:
// only those with the name of a property elsewhere have an index, which is part of the language.
constexpr bool NamesHaveTables() {
  for (const FreeEntryRule& rule : kFreeEntryRules) {
    const std::uint32_t table = FindEntryRow(rule.identifier)->table;
    if (table == 0 || rule.section == SECTION_PELMGROUP) continue;
    const auto fills_it = [&](const KeySource& source) {
      return source.table == table && source.section == rule.section &&
             source.entry == rule.identifier;
    };
    if (!HasRow(kKeySources, fills_it)) return false;
  }
  return true;
}
static_assert(NamesHaveTables(), "KEYS_OF rows of symbol_tables.def name every named FREE_OF row");

// Calls use(key) for every key that a source gives, in order.
template <class Use>
void ForEachKey(const KeySource& source, Use use) {
  const EntryRow& row = *FindEntryRow(source.entry);
  for (const CRUXSection* section : SectionsOf(source.section)) {
    if (source.is_text) {
      if (const std::optional<Text> text = FindText(section, source.entry)) use(*text);
      continue;
    }
    for (const CRUXEntry* entry : section->entries) {
      if (entry && entry->identifier == source.entry) {
        use(TextAfter(entry->name, row.prefix.size()));
      }
    }
  }
}

void InsertKey(std::uint32_t base, std::string_view key) {
  const SymbolTable& symbols = *FindSymbolTable(base);
  InsertTbl(*std::get<StringTable*>(symbols.table), *symbols.counter, std::string(key), kStep);
}

void FillNames(std::uint32_t table) {
  for (const FixedKey& key : FixedKeysOf(table)) InsertKey(table, key.text);
  // Most sensors have properties of the same few names.
  ruxcomp::detail::HashIndex<ruxcomp::detail::TextKey> known;
  for (const KeySource& source : KeySourcesOf(table)) {
    ForEachKey(source, [&](std::string_view key) {
      if (known.Add(0, key, 0)) InsertKey(table, key);
    });
  }
}

using Cells = std::array<std::uint8_t, kTableCells>;

// Sets the cells of one table row: "low.high = value" or "cell = value".
void ApplyRow(const CRUXEntry& row, Cells& cells) {
  std::uint32_t value = 0;
  findings::ExaminePart(0);
  if (const auto text = row.m_RuxEntryData.text()) StringToLong(*text, value);
  const CellRange range = SplitCellRange(row.name);
  std::uint32_t low = 0;
  std::uint32_t high = 0;
  findings::ExaminePart(findings::Origin::kKey);
  StringToLong(range.low, low);
  StringToLong(range.high, high);
  for (std::size_t cell = low; cell <= high && cell < cells.size(); ++cell) {
    cells[cell] = static_cast<std::uint8_t>(value);
  }
}

// Each TABLE section enters its name, then its cells.
void FillTableNamesAndCells() {
  g_tblTableData.clear();
  // Not cleared between tables: cells that no row sets keep the value of the table before.
  Cells cells{};
  for (const CRUXSection* table : SectionsOf(SECTION_TABLE)) {
    const std::optional<Text> name = FindText(table, ENTRY_NAME);
    if (!name) continue;
    InsertKey(CLASS_TableName, *name);
    for (const CRUXEntry* entry : table->entries) {
      if (!entry || entry->identifier != ENTRY_TABLE_ROW) continue;
      findings::Examine(table->OriginOf(*entry));
      ApplyRow(*entry, cells);
    }
    g_tblTableData.insert(g_tblTableData.end(), cells.begin(), cells.end());
  }
}

}  // namespace

std::uint32_t InitTblD() {
  for (const SymbolTable& symbols : kSymbolTables) {
    if (symbols.base != CLASS_TableName) FillNames(symbols.base);
  }
  FillTableNamesAndCells();
  return 1;
}

}  // namespace ruxcomp::core
