// Going through a meta file from end to end, record by record, without keeping any.
#ifndef COMPILED_META_WALK_H_
#define COMPILED_META_WALK_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "compiled/cursor.h"
#include "compiled/extent.h"
#include "compiled/file_header.h"
#include "compiled/words.h"
#include "ruxcomp/identifiers.h"

namespace rux::compiled {

// The classes of the table blocks, in file order.
inline constexpr std::array<std::uint32_t, 10> kTableClasses = {
#define SYMBOL_TABLE(name, class_byte, key) RUX_CLASS_##name,
#include "ruxcomp/language/symbol_tables.def"
    RUX_CLASS_TableData};

// Where the table blocks' offsets stand, each a word, and the block of the sections.
inline constexpr std::size_t kDirectoryOffset = 128;
inline constexpr std::size_t kSectionsOffset = 256;

// Records as they stand in the file. What they point to is in its bytes; lists of pieces are empty
// unless they are asked for.

struct MetaTableView {
  std::size_t ordinal = 0;
  std::uint32_t base = 0;         // the class
  std::uint32_t length = 0;       // as the block states it
  std::size_t length_offset = 0;  // of that word
  Extent extent;                  // without the padding behind it
  std::vector<Piece> pieces;

  // A table of texts: where each ends in `block`, its terminating zero not included. There may be
  // more empty ones than that at the end, up to `most_texts` in all, which look like padding.
  std::string_view block;
  std::vector<std::uint32_t> ends;
  std::size_t most_texts = 0;
  std::string note;  // why the length is not that of the texts although the file is sound

  Words numbers;           // a table of numbers
  std::string_view cells;  // the cells of all tables

  std::size_t BeginOf(std::size_t text) const { return text == 0 ? 0 : ends[text - 1] + 1; }
  std::string_view TextAt(std::size_t text) const {
    return block.substr(BeginOf(text), ends[text] - BeginOf(text));
  }
  // Where that item stands in the file.
  std::size_t OffsetOf(std::size_t item) const;
};

struct MetaSectionView {
  std::size_t ordinal = 0;  // among all sections
  std::size_t offset = 0;
  std::uint32_t identifier = 0;
  std::uint32_t entry_count = 0;
  std::vector<Piece> pieces;
};

struct MetaEntryView {
  std::size_t ordinal = 0;
  std::size_t offset = 0;
  std::uint32_t identifier = 0;
  Words values;
  std::vector<Piece> pieces;

  std::size_t count_offset() const { return offset + kWordSize; }
  std::size_t value_offset(std::size_t i) const { return offset + (2 + i) * kWordSize; }
};

// What is done with the records. Faults that are reported to the cursor get the path of the record
// that one is in.
class MetaVisitor {
 public:
  virtual ~MetaVisitor() = default;

  // First all tables, so that what sections say can be looked up at once.
  virtual void OnTable(Cursor& cursor, MetaTableView table) = 0;
  virtual void OnSectionBegin(Cursor& cursor, const MetaSectionView& section) = 0;
  virtual void OnEntry(Cursor& cursor, MetaEntryView& entry) = 0;
  virtual void OnSectionEnd(Cursor& cursor, MetaSectionView& section) = 0;
  // Unless there is a fault that keeps one from reading all of it.
  virtual void OnEnd(Cursor& cursor) = 0;
};

// What stands around the records.
struct MetaFrame {
  FileHeader header;
  std::vector<Piece> directory;
  std::vector<Piece> sections;  // their count, the padding behind them
};

// What is wrong with the layout goes to `faults`, and the visitor does not get to see it.
MetaFrame WalkMeta(std::string_view bytes, Faults& faults, MetaVisitor& visitor,
                   bool keeps_pieces = false);

}  // namespace rux::compiled

#endif  // COMPILED_META_WALK_H_
