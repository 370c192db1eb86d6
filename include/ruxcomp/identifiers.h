// The numbers of the compiled form, by name.
#ifndef RUXCOMP_IDENTIFIERS_H_
#define RUXCOMP_IDENTIFIERS_H_

#include <cstdint>

#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"

// Compiled section identifiers: RUX_SECT_SENSOR and so on, one per keyword of
// language/sections.def. DEFINE, IFDEF and INCLUDE are never in a meta file; the debug queries take
// them.
enum RuxSectionId : std::uint32_t {
#define SECTION(keyword, number, notation, form, naming, uniqueness) \
  RUX_SECT_##keyword = ruxcomp::language::kCompiledSectionMark + (number),
#include "ruxcomp/language/sections.def"
};

// Compiled identifiers of the entries with a fixed keyword: RUX_ENTRY_ID, RUX_ENTRY_THRESHOLD_FH
// and so on, one per FIXED_ENTRY of language/entries.def. Every other entry carries the table index
// of its name.
enum RuxEntryId : std::uint32_t {
#define FIXED_ENTRY(name, keyword, payload, number, compiled) \
  RUX_ENTRY_##name = ruxcomp::language::kCompiledEntryMark + (compiled),
#include "ruxcomp/language/entries.def"
};

// The class of a table index: its top byte, with the low 24 bits clear. RUX_CLASS_String and so on,
// one per table of language/symbol_tables.def, and those without a table: RUX_CLASS_TableData (the
// table cells: no indices, only a block in the file), and those whose low 24 bits are the value
// itself: RUX_CLASS_Small (a number), RUX_CLASS_ValueType, RUX_CLASS_Operator (an operator code).
enum RuxIndexClass : std::uint32_t {
#define SYMBOL_TABLE(name, class_byte, title, prefix, key) \
  RUX_CLASS_##name = ruxcomp::language::CLASS_##name,
#define CELLS_CLASS(name, class_byte, title) RUX_CLASS_##name = ruxcomp::language::CLASS_##name,
#define IMMEDIATE_CLASS(name, class_byte, title, prefix) \
  RUX_CLASS_##name = ruxcomp::language::CLASS_##name,
#include "ruxcomp/language/symbol_tables.def"
};

// How many cells a TABLE section has.
inline constexpr std::uint32_t RUX_TABLE_CELLS = ruxcomp::language::kTableCells;

// Last-error codes: RUX_ERROR_NO_SECTION and so on, see language/last_errors.def.
enum RuxLastError : std::uint32_t {
#define LAST_ERROR(name, code, sentence) RUX_ERROR_##name = (code),
#include "ruxcomp/language/last_errors.def"
};

// Selectors of gcGetValueByID: RUX_SELECT_TEXT and so on. What each picks of which value types is
// in language/selectors.def; add 1, 2, ... to a selector of a group for the first, second, ...
// item.
enum RuxSelector : std::uint32_t {
#define SELECTOR_CODE(name, code) RUX_SELECT_##name = (code),
#include "ruxcomp/language/selectors.def"
};

#endif  // RUXCOMP_IDENTIFIERS_H_
