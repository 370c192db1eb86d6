// Going through a meta file from end to end, record by record, without keeping any.
#ifndef RUXCOMP_FILE_META_WALK_H_
#define RUXCOMP_FILE_META_WALK_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/meta_records.h"
#include "ruxcomp/language/file_format.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/symbols.h"

namespace ruxcomp::file {

// See WalkMeta.
template <class Visitor>
class MetaWalk {
 public:
  MetaWalk(std::string_view bytes, Faults& faults, Visitor& visitor, bool keeps_pieces)
      : bytes_(bytes), cursor_(bytes, faults), visitor_(visitor), keeps_pieces_(keeps_pieces) {}

  MetaFrame Go() {
    frame_.header = ReadFileHeader(cursor_, Form::kMeta, keeps_pieces_);
    ReadDirectory();
    if (!cursor_.ok()) return std::move(frame_);
    // Sections and tables are found by their offsets, whatever is wrong in another one.
    for (std::size_t i = 0; i < language::kBlockCount; ++i) ReadTable(i);
    ReadSections();
    if (is_whole_) visitor_.OnEnd(cursor_);
    return std::move(frame_);
  }

 private:
  static constexpr std::size_t kAlignment = language::meta_format::kBlockAlignment;
  static constexpr std::size_t kSectionsOffset = language::meta_format::kSectionsOffset;
  static constexpr std::size_t kLeastRecord = language::meta_format::kRecordHeadSize;

  std::vector<Piece>* PiecesIn(std::vector<Piece>& list) const {
    return keeps_pieces_ ? &list : nullptr;
  }

  void Recover() { is_whole_ &= !cursor_.Recover(); }

  void ReadDirectory() {
    const Record record(cursor_, "directory", Record::kNoOrdinal, PiecesIn(frame_.directory));
    std::size_t least = kSectionsOffset;
    for (std::size_t i = 0; i < offsets_.size(); ++i) {
      const std::size_t at = cursor_.offset();
      const char* name = language::FindClass(language::kBlocks[i].base)->title;
      const std::uint32_t offset = cursor_.Word(name);
      if (offset % kAlignment != 0 || offset <= least || offset >= bytes_.size()) {
        if (offset % kAlignment == 0 && offset > least) cursor_.NoteCut();
        cursor_.Fail(name, at,
                     "it is 0x{:X}; it must be a multiple of {} above 0x{:X} and below the file's "
                     "end 0x{:X}",
                     offset, kAlignment, least, bytes_.size());
      }
      least = offsets_[i] = offset;
    }
    cursor_.Zeros("end of directory", kWordSize);
    if (cursor_.ok()) cursor_.Zeros("gap", kSectionsOffset - cursor_.offset());
  }

  // From one block's offset to that of the next one or to the end of the file.
  Extent RangeOf(std::size_t table) const {
    const std::size_t end = table + 1 < offsets_.size() ? offsets_[table + 1] : bytes_.size();
    return {offsets_[table], end - offsets_[table]};
  }

  void ReadTable(std::size_t ordinal) {
    MetaTableView table;
    table.ordinal = ordinal;
    const LimitedRecord record(cursor_, "table", ordinal, PiecesIn(table.pieces), RangeOf(ordinal));
    ReadHead(table);
    if (cursor_.ok()) ReadItems(table);
    table.extent = record.extent();
    if (ordinal + 1 < language::kBlockCount) ExpectPadding();
    if (cursor_.ok()) visitor_.OnTable(cursor_, std::move(table));
    Recover();
  }

  void ReadHead(MetaTableView& table) {
    const std::size_t at = cursor_.offset();
    const std::uint32_t wanted = language::kBlocks[table.ordinal].base;
    table.base = cursor_.Word("class");
    if (table.base != wanted) {
      cursor_.Fail("class", at, "expected 0x{1:08X}, found 0x{0:08X}", table.base, wanted);
    }
    table.length_offset = cursor_.offset();
    table.length = cursor_.Word("length");
    // What the length says is read without regard to the next block.
    const std::size_t left = bytes_.size() - cursor_.offset();
    if (table.length > left) {
      cursor_.NoteCut();
      cursor_.Fail("length", table.length_offset,
                   "the length {0} (0x{0:X}) is too large, bytes left: {1}", table.length, left);
    }
    table.stated = bytes_.substr(cursor_.offset(), table.length);
  }

  void ReadItems(MetaTableView& table) {
    switch (table.base) {
      case language::CLASS_TableData:
        return ReadCells(table);
      case language::CLASS_Dword:
        return ReadNumbers(table);
      default:
        return ReadTexts(table);
    }
  }

  void ReadCells(MetaTableView& table) {
    constexpr std::uint32_t kCells = language::kTableCells;
    if (table.length != cursor_.left() || table.length % kCells != 0) {
      return cursor_.Fail("length", table.length_offset,
                          "it is {}, bytes left: {}, for each table: {}", table.length,
                          cursor_.left(), kCells);
    }
    table.cells = table.stated;
    while (cursor_.left() > 0) cursor_.Bytes("cells", kCells);
  }

  void ReadNumbers(MetaTableView& table) {
    if (table.length % kWordSize != 0 || table.length > cursor_.left()) {
      return cursor_.Fail("length", table.length_offset,
                          "it is {}, bytes left: {}, for each number: {}", table.length,
                          cursor_.left(), kWordSize);
    }
    if (!CheckItemCount(table, table.length / kWordSize)) return;
    table.numbers = cursor_.WordList("number", table.length / kWordSize);
  }

  void ReadTexts(MetaTableView& table) {
    const std::string_view block = bytes_.substr(cursor_.offset(), cursor_.left());
    const std::optional<std::size_t> size = SizeOfTexts(block, table.length);
    if (!size) return cursor_.Fail("texts", cursor_.offset(), "no padding follows them");
    table.block = block.substr(0, *size);
    std::size_t empty_texts = 0;
    for (std::size_t begin = 0; begin < *size;) {
      if (!CheckItemCount(table, table.ends.size() + 1)) return;
      const std::size_t end = block.find('\0', begin);
      cursor_.Bytes("text", end + 1 - begin);
      empty_texts += end == begin ? 1 : 0;
      table.ends.push_back(static_cast<std::uint32_t>(end));
      begin = end + 1;
    }
    table.most_texts = table.ends.size();
    if (table.length != *size) TakeOddLength(table, empty_texts);
  }

  // The length is that of the names that the compiler knew. Only among properties there are any
  // without an index, and, after the load of such a file, indices without a name.
  void TakeOddLength(MetaTableView& table, std::size_t empty_texts) {
    const std::size_t size = table.block.size();
    if (table.base != language::CLASS_Property || table.length + empty_texts < size) {
      return cursor_.Fail("length", table.length_offset, "it is {}, bytes of the texts: {}",
                          table.length, size);
    }
    table.note = LengthNote(table.length, size);
    table.most_texts += cursor_.left() - 1;
  }

  bool CheckItemCount(const MetaTableView& table, std::size_t count) {
    if (count > language::kMostOrdinals) {
      cursor_.Fail("length", table.length_offset, "there are more than {} items",
                   language::kMostOrdinals);
    }
    return cursor_.ok();
  }

  // Between two blocks there is always padding, also after one that ends on a boundary.
  void ExpectPadding() {
    const std::size_t size = cursor_.left();
    if (size == 0 || size > kAlignment) {
      cursor_.Fail("padding", cursor_.offset(), "expected 1 to {1} bytes, found {0}", size,
                   kAlignment);
    }
    cursor_.Zeros("padding", cursor_.left());
  }

  void ReadSections() {
    const Extent place{kSectionsOffset, offsets_.front() - kSectionsOffset};
    const LimitedRecord record(cursor_, "sections", Record::kNoOrdinal, PiecesIn(frame_.sections),
                               place);
    const std::uint32_t count = cursor_.Count("section count", kLeastRecord);
    for (std::uint32_t i = 0; i < count && cursor_.ok(); ++i) ReadSection(i);
    ExpectPadding();
    Recover();
  }

  void ReadSection(std::size_t ordinal) {
    MetaSectionView section;
    const Record record(cursor_, "section", ordinal, PiecesIn(section.pieces));
    section.ordinal = ordinal;
    section.offset = cursor_.offset();
    section.identifier = cursor_.Word("identifier");
    const language::SectionKind* kind = language::FindCompiledKind(section.identifier);
    if (kind == nullptr || !kind->IsCompiled()) {
      cursor_.Fail("identifier", section.offset, "no such kind: 0x{:08X}", section.identifier);
    }
    section.entry_count = cursor_.Count("entry count", kLeastRecord);
    if (!cursor_.ok()) return;
    visitor_.OnSectionBegin(cursor_, section);
    ReadEntries(section.entry_count);
    if (cursor_.ok()) visitor_.OnSectionEnd(cursor_, section);
  }

  void ReadEntries(std::uint32_t count) {
    Record record(cursor_, "entry", 0, PiecesIn(entry_.pieces));
    std::size_t offset = cursor_.offset();
    // Where each word is a piece, none is left to be read at once.
    const std::size_t end = keeps_pieces_ ? offset : offset + cursor_.left();
    for (std::uint32_t i = 0; i < count; ++i) {
      record.GoOn(i);
      entry_.ordinal = i;
      entry_.offset = offset;
      entry_.at = bytes_.data() + offset;
      if (!PassEntry(offset, end)) {
        cursor_.MoveTo(offset);
        ReadEntry();
        if (!cursor_.ok()) return;
        offset = cursor_.offset();
      }
      visitor_.OnEntry(cursor_, entry_);
    }
    cursor_.MoveTo(offset);
  }

  // Goes on to what follows an entry. False when it is not there as a whole: then its fields have
  // to be read one by one. Nothing here waits for what was stored before, and where there is one
  // value, which is most often, the processor goes on without waiting for the count.
  bool PassEntry(std::size_t& offset, std::size_t end) const {
    if (end < offset + kLeastRecord + kWordSize) return false;
    const std::uint32_t count = LoadWord(bytes_.data() + offset + kWordSize);
    if (__builtin_expect(static_cast<long>(count == 1), 1L) != 0) {
      offset += kLeastRecord + kWordSize;
      return true;
    }
    const std::uint64_t size = std::uint64_t{count} * kWordSize;
    if (size > end - offset - kLeastRecord) return false;
    offset += kLeastRecord + static_cast<std::size_t>(size);
    return true;
  }

  [[gnu::noinline]] void ReadEntry() {
    entry_.pieces.clear();
    cursor_.Word("identifier");
    const std::uint32_t count = cursor_.Count("value count", kWordSize);
    cursor_.WordList("value", count);
  }

  const std::string_view bytes_;
  Cursor cursor_;
  Visitor& visitor_;
  const bool keeps_pieces_;
  bool is_whole_ = true;
  MetaFrame frame_;
  MetaEntryView entry_;  // the one that is shown: there are too many to make each anew
  std::array<std::size_t, language::kBlockCount> offsets_ = {};
};

// Shows the records to a MetaVisitor (meta_records.h). What is wrong with the layout goes to
// `faults`, and the visitor does not get to see it.
template <class Visitor>
MetaFrame WalkMeta(std::string_view bytes, Faults& faults, Visitor& visitor,
                   bool keeps_pieces = false) {
  return MetaWalk<Visitor>(bytes, faults, visitor, keeps_pieces).Go();
}

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_META_WALK_H_
