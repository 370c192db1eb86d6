// Table indices and their classes.
#ifndef RUXCOMP_LANGUAGE_SYMBOLS_H_
#define RUXCOMP_LANGUAGE_SYMBOLS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ruxcomp/language/rows.h"
#include "ruxcomp/language/spelling.h"

namespace ruxcomp::language {

inline constexpr int kClassShift = 24;
inline constexpr std::uint32_t kOrdinalMask = 0x00FFFFFF;

// The class of a table index and the value below it.
constexpr std::uint32_t ClassOf(std::uint32_t index) { return index & ~kOrdinalMask; }
constexpr std::uint32_t OrdinalOf(std::uint32_t index) { return index & kOrdinalMask; }

// How many indices a class has.
inline constexpr std::size_t kMostOrdinals = std::size_t{1} << kClassShift;

// The classes: the indices with their ordinal bits clear.
enum IndexClass : std::uint32_t {
#define SYMBOL_TABLE(name, class_byte, title, prefix, key) \
  CLASS_##name = std::uint32_t{class_byte} << kClassShift,
#define CELLS_CLASS(name, class_byte, title) \
  CLASS_##name = std::uint32_t{class_byte} << kClassShift,
#define IMMEDIATE_CLASS(name, class_byte, title, prefix) \
  CLASS_##name = std::uint32_t{class_byte} << kClassShift,
#include "ruxcomp/language/symbol_tables.def"
};

// Whether an index carries its own value, which no table has.
constexpr bool IsImmediate(std::uint32_t index) {
  switch (ClassOf(index)) {
#define IMMEDIATE_CLASS(name, class_byte, title, prefix) case CLASS_##name:
#include "ruxcomp/language/symbol_tables.def"
    return true;
    default:
      return false;
  }
}

struct ClassRow {
  std::uint32_t base;
  const char* title;        // of one index
  std::string_view prefix;  // in a script, before what the index stands for
};
inline constexpr ClassRow kClasses[] = {
#define SYMBOL_TABLE(name, class_byte, title, prefix, key) {CLASS_##name, title, prefix},
#define CELLS_CLASS(name, class_byte, title) {CLASS_##name, title, kNoPrefix},
#define IMMEDIATE_CLASS(name, class_byte, title, prefix) {CLASS_##name, title, prefix},
#include "ruxcomp/language/symbol_tables.def"
};

// The class of an index; null when there is none.
constexpr const ClassRow* FindClass(std::uint32_t index) {
  return FindRow(kClasses, [&](const ClassRow& row) { return row.base == ClassOf(index); });
}

// What a lookup returns for a number that no table has; the number itself cannot be found.
inline constexpr std::uint32_t kNoNumber = 0xFFFFFFFF;

// What compiled values hold for a text that means nothing.
inline constexpr std::uint32_t kNoIndex = 0xFFFFFFFF;

// A block of the meta file: a symbol table, or the cells of the TABLE sections.
struct Block {
  const char* name;
  std::uint32_t base;  // its class, also the first index
};

// In the order of the directory: the symbol tables first.
inline constexpr Block kBlocks[] = {
#define SYMBOL_TABLE(name, class_byte, title, prefix, key) {#name, CLASS_##name},
#define CELLS_CLASS(name, class_byte, title) {#name, CLASS_##name},
#include "ruxcomp/language/symbol_tables.def"
};

inline constexpr std::size_t kBlockCount = sizeof kBlocks / sizeof *kBlocks;
inline constexpr std::size_t kSymbolTableCount = kBlockCount - 1;

static_assert(AreDistinct(kBlocks, [](const Block& block) { return block.base; }));
static_assert(kBlocks[kSymbolTableCount].base == CLASS_TableData, "the cells come last");

// How many cells a TABLE section has.
inline constexpr std::uint32_t kTableCells = 256;

// The keys that every table of a class begins with.
struct FixedKey {
  std::uint32_t table;
  const char* text;
};
inline constexpr FixedKey kFixedKeys[] = {
#define FIXED_KEY(table, text) {CLASS_##table, text},
#include "ruxcomp/language/symbol_tables.def"
};
static_assert(AreNeighbours(kFixedKeys, [](const FixedKey& key) { return key.table; }));

constexpr Rows<FixedKey> FixedKeysOf(std::uint32_t table) {
  return RowsThat(kFixedKeys, [&](const FixedKey& key) { return key.table == table; });
}

// The index that a key has in every table of the class, which begins with it.
constexpr std::uint32_t FixedIndex(std::uint32_t table, std::string_view text) {
  std::uint32_t index = table;
  for (const FixedKey& key : FixedKeysOf(table)) {
    if (key.text == text) break;
    ++index;
  }
  return index;
}

// The group that every model has without a section for it: the parent of the groups at the top.
inline constexpr const char* kRootGroup = FixedKeysOf(CLASS_Group)[0].text;

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_SYMBOLS_H_
