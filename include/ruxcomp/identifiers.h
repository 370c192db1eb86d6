// The numbers of the compiled form, by name.
#ifndef RUXCOMP_IDENTIFIERS_H_
#define RUXCOMP_IDENTIFIERS_H_

#include <cstdint>

// Compiled section identifiers: RUX_SECT_SENSOR and so on, one per keyword of sections.def. DEFINE,
// IFDEF and INCLUDE never stand in a meta file; the debug queries take them.
enum RuxSectionId : std::uint32_t {
#define SECTION(keyword, kind, notation) RUX_SECT_##keyword = 0x01000000 + (kind),
#include "ruxcomp/sections.def"
};

// Compiled identifiers of the entries with a fixed keyword: RUX_ENTRY_ID, RUX_ENTRY_THRESHOLD_FH
// and so on. Every other entry carries the table index of its name.
enum RuxEntryId : std::uint32_t {
#define FIXED_ENTRY(name, keyword, identifier, compiled) RUX_ENTRY_##name = (compiled),
#define NAMED_ENTRY(name, keyword, identifier, table, prefix)
#define PLAIN_ENTRY(name, keyword, identifier)
#include "ruxcomp/entries.def"
};

// The class of a table index: its top byte, with the low 24 bits clear. RUX_CLASS_String and so on,
// one per table of symbol_tables.def, and those without a table.
enum RuxIndexClass : std::uint32_t {
#define SYMBOL_TABLE(name, class_byte, key) RUX_CLASS_##name = (class_byte)*0x01000000u,
#include "ruxcomp/symbol_tables.def"
  RUX_CLASS_TableData = 0x1B000000,  // the table cells: no indices, only its block in the file
  RUX_CLASS_Small = 0x1D000000,      // the low 24 bits are a number
  RUX_CLASS_ValueType = 0x1E000000,  // the low 24 bits are the type of a value
  RUX_CLASS_Operator = 0x1F000000,   // the low 24 bits are an operator code of operators.def
};

// How many cells a TABLE section has.
inline constexpr std::uint32_t RUX_TABLE_CELLS = 256;

// Last-error codes: RUX_ERROR_NO_SECTION and so on, see last_errors.def.
enum RuxLastError : std::uint32_t {
#define LAST_ERROR(name, code, sentence) RUX_ERROR_##name = (code),
#include "ruxcomp/last_errors.def"
};

// Selectors of gcGetValueByID. Which value types they fit, and how many items a group has, stands
// in selectors.def; add 1, 2, ... to a selector marked "+ n" for the first, second, ... item.
enum RuxSelector : std::uint32_t {
  RUX_SELECT_TYPE = 0x10000,         // any value: its type
  RUX_SELECT_TEXT = 0x20000,         // type 1
  RUX_SELECT_OPERATOR = 0x30000,     // type 2
  RUX_SELECT_OPERANDS = 0x40000,     // type 2, + n: the first and second operand
  RUX_SELECT_RESULTS = 0x50000,      // type 2, comparisons only, + n: the third and fourth operand
  RUX_SELECT_CALL = 0x60000,         // type 3: the action
  RUX_SELECT_CALL_ARGS = 0x70000,    // type 3, + n
  RUX_SELECT_BUS_OPERAND = 0x80000,  // types 4, 5, 8, 9, 11, 12
  RUX_SELECT_BUS_NUMBER = 0x90000,   // types 4, 5, 8, 9, 11, 12
  RUX_SELECT_BUS_TYPE = 0xA0000,     // types 4, 5, 8, 9, 11, 12
  RUX_SELECT_BUS_BASE = 0xB0000,     // types 4, 5, 8, 9, 11, 12
  RUX_SELECT_BUS_ARGS = 0xC0000,     // types 5, 9, 11, + n
  RUX_SELECT_FIRST = 0xD0000,        // type 6
  RUX_SELECT_SECOND = 0xE0000,       // type 6
  RUX_SELECT_PAIR_ARGS = 0xF0000,    // type 6, + n
  RUX_SELECT_LIST = 0x100000,        // type 7, + n
  RUX_SELECT_TABLE = 0x120000,       // type 10
  RUX_SELECT_INDEX = 0x130000,       // type 10
  RUX_SELECT_TEXT_101 = 0x140000,    // type 101
  RUX_SELECT_FIRST_102 = 0x150000,   // type 102
  RUX_SELECT_COUNT = 0x160000,       // repeater entries: the repeat count
  RUX_SELECT_ACTION = 0x170000,      // type 102 and repeater entries: the action
  RUX_SELECT_ARGS = 0x180000,        // type 102 and repeater entries, + n
  RUX_SELECT_TEXT_103 = 0x190000,    // type 103
  RUX_SELECT_TEXT_104 = 0x1A0000,    // type 104
};

#endif  // RUXCOMP_IDENTIFIERS_H_
