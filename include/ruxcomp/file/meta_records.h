// The records of a meta file where they are in its bytes.
#ifndef RUXCOMP_FILE_META_RECORDS_H_
#define RUXCOMP_FILE_META_RECORDS_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/file/views.h"
#include "ruxcomp/language/file_format.h"
#include "ruxcomp/language/symbols.h"

namespace ruxcomp::file {

// What the records point to is in the bytes of the file; lists of pieces are empty unless they are
// asked for.

struct MetaTableView {
  std::size_t ordinal = 0;
  std::uint32_t base = 0;         // the class
  std::uint32_t length = 0;       // as the block states it
  std::size_t length_offset = 0;  // of that word
  Extent extent;                  // without the padding after it
  std::vector<Piece> pieces;

  // As many bytes as the length says: what the library reads, also where the items take more or
  // less.
  std::string_view stated;

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
  // Where that item is in the file.
  std::size_t OffsetOf(std::size_t item) const {
    const std::size_t first = length_offset + kWordSize;
    if (base == language::CLASS_TableData) return first + item * language::kTableCells;
    return first + (base == language::CLASS_Dword ? item * kWordSize : BeginOf(item));
  }
};

struct MetaSectionView {
  std::size_t ordinal = 0;  // among all sections
  std::size_t offset = 0;
  std::uint32_t identifier = 0;
  std::uint32_t entry_count = 0;
  std::vector<Piece> pieces;
};

// All of its words are in the file.
struct MetaEntryView {
  std::size_t ordinal = 0;
  std::size_t offset = 0;
  const char* at = nullptr;  // the bytes at the offset
  std::vector<Piece> pieces;

  std::uint32_t identifier() const { return LoadWord(at); }
  std::uint32_t value_count() const { return LoadWord(at + kWordSize); }
  std::uint32_t value(std::size_t i) const { return LoadWord(at + (2 + i) * kWordSize); }
  Words values() const { return Words({at + 2 * kWordSize, value_count() * kWordSize}); }

  std::size_t count_offset() const { return offset + kWordSize; }
  std::size_t value_offset(std::size_t i) const { return offset + (2 + i) * kWordSize; }
};

// What a walk does with the records: visitors hide the functions that they need. Faults that are
// reported to the cursor get the path of the record that it is in.
struct MetaVisitor {
  // First all tables, so that what sections say can be looked up at once.
  void OnTable(Cursor&, MetaTableView) {}
  void OnSectionBegin(Cursor&, const MetaSectionView&) {}
  void OnEntry(Cursor&, MetaEntryView&) {}
  void OnSectionEnd(Cursor&, MetaSectionView&) {}
  // Unless there is a fault that keeps the walk from reading all of the file.
  void OnEnd(Cursor&) {}
};

// What is around the records.
struct MetaFrame {
  FileHeader header;
  std::vector<Piece> directory;
  std::vector<Piece> sections;  // their count, the padding after them
};

// How many bytes of a block are texts. `block` is what is between the length of the block,
// `stated`, and the next block: texts, each with a terminating zero, and padding. Zeros at the end
// are padding, unless the stated length makes the first of them an empty text. None when there is
// no padding.
inline std::optional<std::size_t> SizeOfTexts(std::string_view block, std::size_t stated) {
  constexpr std::size_t kMostPadding = language::meta_format::kBlockAlignment;
  const std::size_t last = block.find_last_not_of('\0');
  const std::size_t terminated = last == std::string_view::npos ? 0 : last + 2;
  const std::size_t least =
      std::max(terminated, block.size() - std::min(block.size(), kMostPadding));
  if (least >= block.size()) return std::nullopt;
  return stated == least + 1 && stated < block.size() ? stated : least;
}

// Why the stated length of a table of properties may differ from the size of the texts.
inline std::string LengthNote(std::size_t stated, std::size_t size) {
  if (stated > size) {
    return ReasonText(
        "the stated length {} is {} more than the texts take: it counts names without an index",
        {stated, stated - size});
  }
  return ReasonText(
      "the stated length {} is {} less than the texts take: it does not count indices without a "
      "name",
      {stated, size - stated});
}

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_META_RECORDS_H_
