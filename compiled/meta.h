// A meta file as it is on disk: every section, entry, value and table with its place.
//
// Decoded from the layout alone, without the library: its queries do not answer where something is
// in the file.
#ifndef COMPILED_META_H_
#define COMPILED_META_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/file.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/language/symbols.h"

namespace rux::compiled {

struct CompiledEntry {
  std::uint32_t identifier = 0;       // a RUX_ENTRY_... or the table index of its name
  std::vector<std::uint32_t> values;  // table indices and immediate codes
  Extent extent;
  std::vector<Piece> pieces;  // identifier, value count, the values
};

struct CompiledSection {
  std::uint32_t identifier = 0;  // a RUX_SECT_...
  std::vector<CompiledEntry> entries;
  Extent extent;
  std::vector<Piece> pieces;  // identifier, entry count
};

using TableCells = std::array<std::uint8_t, language::kTableCells>;

// A table block. Which of the three lists is filled depends on the class.
struct CompiledTable {
  std::uint32_t base = 0;          // the class: a RUX_CLASS_...
  std::uint32_t length = 0;        // as the block states it
  std::vector<std::string> texts;  // by ordinal
  std::vector<std::uint32_t> numbers;
  std::vector<TableCells> cells;
  Extent extent;              // without the padding after it
  std::vector<Piece> pieces;  // class, length, the items
  // Not empty when the stated length is not that of the texts, although the file is sound: it is
  // that of the names that the compiler knew, which need not be those of the block.
  std::string note;
};

struct CompiledMeta {
  std::uint32_t version = 0;
  std::uint32_t creation_time = 0;
  std::vector<CompiledSection> sections;  // in file order
  std::vector<CompiledTable> tables;      // in file order

  // What is between the records.
  std::vector<Piece> header;
  std::vector<Piece> directory;
  std::vector<Piece> frame;  // of the sections: their count, the padding after them
};

// For the bytes of a file. What is wrong with their layout goes to `faults`, and nothing is decoded
// then; what else must hold is for Verify() to check.
bool IsMetaBytes(std::string_view bytes);
CompiledMeta DecodeMeta(std::string_view bytes, Faults& faults, Keep keep = Keep::kRecords);

}  // namespace rux::compiled

#endif  // COMPILED_META_H_
