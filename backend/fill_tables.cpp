// Filling the name tables from the source model.
#include <array>

#include "backend/symbol_tables.h"
#include "checker/number.h"
#include "frontend/lookup.h"

namespace {

// A new key gets the next index.
constexpr std::uint32_t kStep = 1;

// The entries whose keys, less their prefix, go into a table.
struct KeySource {
  SectionId section;
  EntryId entry;
};

// Calls use(entry) for every entry of that identifier in every section of that kind, in order.
template <class Use>
void ForEachEntry(SectionId sectionId, EntryId entryId, Use use) {
  for (const CRUXSection* section : SectionsOf(sectionId)) {
    for (const auto& entry : section->entries) {
      if (entry && entry->identifier == entryId) use(*entry);
    }
  }
}

template <std::size_t Count>
void InternKeys(const KeySource (&sources)[Count], StringTable& table, std::uint32_t& counter) {
  for (const KeySource& source : sources) {
    ForEachEntry(source.section, source.entry, [&](const CRUXEntry& entry) {
      InsertTbl(table, counter, entry.name.text().substr(PrefixOf(source.entry)), kStep);
    });
  }
}

void InternNames(SectionId kind, StringTable& table, std::uint32_t& counter) {
  for (const CRUXSection* section : SectionsOf(kind)) {
    if (const std::string* name = FindText(section, ENTRY_NAME)) {
      InsertTbl(table, counter, *name, kStep);
    }
  }
}

std::uint32_t InitPropertyD() {
  static constexpr KeySource kSources[] = {{SECTION_PROPERTY, ENTRY_PROPERTY},
                                           {SECTION_SENSOR, ENTRY_P},
                                           {SECTION_DEVICE, ENTRY_P},
                                           {SECTION_SYSTEM, ENTRY_P}};
  InternKeys(kSources, g_tblProperty, g_idxProperty);
  return 1;
}

std::uint32_t InitGlobalD() {
  if (!FindSectHead(SECTION_GLOBAL)) return 0;
  static constexpr KeySource kSources[] = {{SECTION_GLOBAL, ENTRY_G}};
  InternKeys(kSources, g_tblGlobal, g_idxGlobal);
  return 1;
}

std::uint32_t InitValueD() {
  for (const char* fixed : {"IPMI", "", "INIT", "DEINIT", "ENTRY", "EXIT"}) {
    InsertTbl(g_tblValue, g_idxValue, fixed, kStep);
  }
  static constexpr KeySource kSources[] = {{SECTION_SENSOR, ENTRY_VALUE_OF_SENSOR},
                                           {SECTION_DEVICE, ENTRY_VALUE_OF_SENSOR},
                                           {SECTION_ACTION, ENTRY_VALUE_OF_ACTION}};
  InternKeys(kSources, g_tblValue, g_idxValue);
  return 1;
}

std::uint32_t InitRepeaterD() {
  static constexpr KeySource kSources[] = {{SECTION_REPEATER, ENTRY_REPEATER}};
  InternKeys(kSources, g_tblRepeater, g_idxRepeater);
  return 1;
}

std::uint32_t InitGroupD() {
  InsertTbl(g_tblGroup, g_idxGroup, "0", kStep);  // the root
  InternNames(SECTION_GROUP, g_tblGroup, g_idxGroup);
  return 1;
}

std::uint32_t InitActionD() {
  InternNames(SECTION_ACTION, g_tblAction, g_idxAction);
  return 1;
}

using Cells = std::array<std::uint8_t, RUX_TABLE_CELLS>;

// Sets the cells of one table row: "low.high = value" or "cell = value".
void ApplyRow(const CRUXEntry& row, Cells& cells) {
  std::uint32_t value = 0;
  findings::ExaminePart(0);
  if (const auto* text = row.m_RuxEntryData.Get<std::string>()) StringToLong(*text, value);
  const std::string& name = row.name;
  const std::size_t dot = name.find('.');
  std::uint32_t low = 0;
  std::uint32_t high = 0;
  findings::ExaminePart(findings::Origin::kKey);
  StringToLong(name.substr(0, dot), low);
  StringToLong(dot == std::string::npos ? name : name.substr(dot + 1), high);
  for (std::size_t cell = low; cell <= high && cell < cells.size(); ++cell) {
    cells[cell] = static_cast<std::uint8_t>(value);
  }
}

std::uint32_t InitTableDataD() {
  g_tblTableData.clear();
  // Not cleared between tables: cells that no row sets keep the value of the table before.
  Cells cells{};
  for (const CRUXSection* table : SectionsOf(SECTION_TABLE)) {
    const std::string* name = FindText(table, ENTRY_NAME);
    if (!name) continue;
    InsertTbl(g_tblTableName, g_idxTableName, *name, kStep);
    for (const auto& entry : table->entries) {
      if (!entry || entry->identifier != ENTRY_TABLE_ROW) continue;
      findings::Examine(table->OriginOf(*entry));
      ApplyRow(*entry, cells);
    }
    g_tblTableData.insert(g_tblTableData.end(), cells.begin(), cells.end());
  }
  return 1;
}

}  // namespace

std::uint32_t InitTblD() {
  InitPropertyD();
  InitGlobalD();
  InitValueD();
  InitRepeaterD();
  InitGroupD();
  InitActionD();
  InitTableDataD();
  return 1;
}
