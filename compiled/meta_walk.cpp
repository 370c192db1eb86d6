#include "compiled/meta_walk.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "compiled/index_class.h"
#include "compiled/keywords.h"
#include "compiled/limits.h"
#include "compiled/text_block.h"

namespace rux::compiled {
namespace {

constexpr std::size_t kAlignment = 16;  // of the blocks; also the most padding before one

// The least that the things take that are counted.
constexpr std::size_t kLeastSection = 2 * kWordSize;
constexpr std::size_t kLeastEntry = 2 * kWordSize;

class Walk {
 public:
  Walk(std::string_view bytes, Faults& faults, MetaVisitor& visitor, bool keeps_pieces)
      : bytes_(bytes),
        cursor_(bytes, faults),
        faults_(faults),
        visitor_(visitor),
        keeps_pieces_(keeps_pieces) {}

  MetaFrame Go() {
    try {
      frame_.header = ReadFileHeader(cursor_, Form::kMeta, keeps_pieces_);
      ReadDirectory();
      // Sections and tables are found by their offsets, whatever is wrong in another one.
      bool is_whole = true;
      for (std::size_t i = 0; i < kTableClasses.size(); ++i) {
        is_whole &= Try([this, i] { ReadTable(i); });
      }
      is_whole &= Try([this] { ReadSections(); });
      if (is_whole) visitor_.OnEnd(cursor_);
    } catch (const Fault& fault) {
      faults_.Add(fault);
    }
    return std::move(frame_);
  }

 private:
  template <class Action>
  bool Try(Action action) {
    try {
      action();
      return true;
    } catch (const Fault& fault) {
      faults_.Add(fault);
      return false;
    }
  }

  std::vector<Piece>* PiecesIn(std::vector<Piece>& list) const {
    return keeps_pieces_ ? &list : nullptr;
  }

  void ReadDirectory() {
    const Record record(cursor_, "directory", Record::kNoOrdinal, PiecesIn(frame_.directory));
    std::size_t least = kSectionsOffset;
    for (std::size_t i = 0; i < offsets_.size(); ++i) {
      const std::size_t at = cursor_.offset();
      const char* name = IndexClassName(kTableClasses[i]);
      const std::uint32_t offset = cursor_.Word(name);
      if (offset % kAlignment != 0 || offset <= least || offset >= bytes_.size()) {
        cursor_.Fail(name, at,
                     "it is 0x{:X}; it must be a multiple of {} above 0x{:X} and below the file's "
                     "end 0x{:X}",
                     offset, kAlignment, least, bytes_.size());
      }
      offsets_[i] = offset;
      least = offset;
    }
    cursor_.Zeros("end of directory", kWordSize);
    cursor_.Zeros("gap", kSectionsOffset - cursor_.offset());
  }

  // From one block's offset to that of the next one or to the end of the file.
  Extent RangeOf(std::size_t table) const {
    const std::size_t end = table + 1 < offsets_.size() ? offsets_[table + 1] : bytes_.size();
    return {offsets_[table], end - offsets_[table]};
  }

  void ReadTable(std::size_t ordinal) {
    MetaTableView table;
    table.ordinal = ordinal;
    Record record(cursor_, "table", ordinal, PiecesIn(table.pieces));
    record.MoveTo(RangeOf(ordinal));
    const std::size_t at = cursor_.offset();
    table.base = cursor_.Word("class");
    if (table.base != kTableClasses[ordinal]) {
      cursor_.Fail("class", at, "it is 0x{:08X}, needed is 0x{:08X}", table.base,
                   kTableClasses[ordinal]);
    }
    table.length_offset = cursor_.offset();
    table.length = cursor_.Word("length");
    CheckLength(table);
    if (table.base == RUX_CLASS_TableData) {
      ReadCells(table);
    } else if (table.base == RUX_CLASS_Dword) {
      ReadNumbers(table);
    } else {
      ReadTexts(table);
    }
    table.extent = record.extent();
    if (ordinal + 1 < kTableClasses.size()) ExpectPadding();
    visitor_.OnTable(cursor_, std::move(table));
  }

  // What the length says is read without regard to the next block.
  void CheckLength(const MetaTableView& table) const {
    const std::size_t left = bytes_.size() - cursor_.offset();
    if (table.length <= left) return;
    cursor_.Fail("length", table.length_offset,
                 "the length {0} (0x{0:X}) is too large, bytes left: {1}", table.length, left);
  }

  void ReadCells(MetaTableView& table) {
    if (table.length != cursor_.left() || table.length % RUX_TABLE_CELLS != 0) {
      cursor_.Fail("length", table.length_offset, "it is {}, bytes left: {}, for each table: {}",
                   table.length, cursor_.left(), RUX_TABLE_CELLS);
    }
    table.cells = bytes_.substr(cursor_.offset(), table.length);
    while (cursor_.left() > 0) cursor_.Bytes("cells", RUX_TABLE_CELLS);
  }

  void ReadNumbers(MetaTableView& table) {
    if (table.length % kWordSize != 0 || table.length > cursor_.left()) {
      cursor_.Fail("length", table.length_offset, "it is {}, bytes left: {}, for each number: {}",
                   table.length, cursor_.left(), kWordSize);
    }
    CheckItemCount(table, table.length / kWordSize);
    table.numbers = cursor_.WordList("number", table.length / kWordSize);
  }

  void ReadTexts(MetaTableView& table) {
    const std::string_view block = bytes_.substr(cursor_.offset(), cursor_.left());
    const std::optional<std::size_t> size = SizeOfTexts(block, table.length);
    if (!size) cursor_.Fail("texts", cursor_.offset(), "they are not ended by padding");
    table.block = block.substr(0, *size);
    std::size_t empty_texts = 0;
    for (std::size_t begin = 0; begin < *size;) {
      CheckItemCount(table, table.ends.size() + 1);
      const std::size_t end = block.find('\0', begin);
      cursor_.Bytes("text", end + 1 - begin);
      empty_texts += end == begin ? 1 : 0;
      table.ends.push_back(static_cast<std::uint32_t>(end));
      begin = end + 1;
    }
    table.most_texts = table.ends.size();
    if (table.length == *size) return;
    // The length is that of the names that the compiler knew. Only among properties there are any
    // without an index, and, after the load of such a file, indices without a name.
    if (table.base != RUX_CLASS_Property || table.length + empty_texts < *size) {
      cursor_.Fail("length", table.length_offset, "it is {}, bytes of the texts: {}", table.length,
                   *size);
    }
    table.note = LengthNote(table.length, *size);
    table.most_texts += cursor_.left() - 1;
  }

  void CheckItemCount(const MetaTableView& table, std::size_t count) const {
    if (count <= kMostTableItems) return;
    cursor_.Fail("length", table.length_offset, "there are more than {} items", kMostTableItems);
  }

  // Between two blocks there is always padding, also behind one that ends on a boundary.
  void ExpectPadding() {
    const std::size_t size = cursor_.left();
    if (size == 0 || size > kAlignment) {
      cursor_.Fail("padding", cursor_.offset(), "bytes: {}, right are 1 to {}", size, kAlignment);
    }
    cursor_.Zeros("padding", size);
  }

  void ReadSections() {
    Record record(cursor_, "sections", Record::kNoOrdinal, PiecesIn(frame_.sections));
    record.MoveTo({kSectionsOffset, offsets_.front() - kSectionsOffset});
    const std::uint32_t count = cursor_.Count("section count", kLeastSection);
    for (std::uint32_t i = 0; i < count; ++i) ReadSection(i);
    ExpectPadding();
  }

  void ReadSection(std::size_t ordinal) {
    MetaSectionView section;
    const Record record(cursor_, "section", ordinal, PiecesIn(section.pieces));
    section.ordinal = ordinal;
    section.offset = cursor_.offset();
    section.identifier = cursor_.Word("identifier");
    if (CompiledSectionKeyword(section.identifier) == nullptr) {
      cursor_.Fail("identifier", section.offset, "no kind has 0x{:08X}", section.identifier);
    }
    section.entry_count = cursor_.Count("entry count", kLeastEntry);
    visitor_.OnSectionBegin(cursor_, section);
    for (std::uint32_t i = 0; i < section.entry_count; ++i) ReadEntry(i);
    visitor_.OnSectionEnd(cursor_, section);
  }

  void ReadEntry(std::size_t ordinal) {
    entry_.pieces.clear();
    const Record record(cursor_, "entry", ordinal, PiecesIn(entry_.pieces));
    entry_.ordinal = ordinal;
    entry_.offset = cursor_.offset();
    entry_.identifier = cursor_.Word("identifier");
    const std::uint32_t count = cursor_.Count("value count", kWordSize);
    entry_.values = cursor_.WordList("value", count);
    visitor_.OnEntry(cursor_, entry_);
  }

  const std::string_view bytes_;
  Cursor cursor_;
  Faults& faults_;
  MetaVisitor& visitor_;
  const bool keeps_pieces_;
  MetaFrame frame_;
  MetaEntryView entry_;  // the one that is shown: there are too many to make each anew
  std::array<std::size_t, kTableClasses.size()> offsets_ = {};
};

}  // namespace

std::size_t MetaTableView::OffsetOf(std::size_t item) const {
  const std::size_t first = length_offset + kWordSize;
  if (base == RUX_CLASS_TableData) return first + item * RUX_TABLE_CELLS;
  return first + (base == RUX_CLASS_Dword ? item * kWordSize : BeginOf(item));
}

MetaFrame WalkMeta(std::string_view bytes, Faults& faults, MetaVisitor& visitor,
                   bool keeps_pieces) {
  return Walk(bytes, faults, visitor, keeps_pieces).Go();
}

}  // namespace rux::compiled
