// Going through a debug meta file from end to end, record by record, without keeping any.
#ifndef RUXCOMP_FILE_DEBUG_META_WALK_H_
#define RUXCOMP_FILE_DEBUG_META_WALK_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "ruxcomp/file/cursor.h"
#include "ruxcomp/file/debug_meta_records.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::file {

// See WalkDebugMeta.
template <class Visitor>
class DebugMetaWalk {
 public:
  DebugMetaWalk(std::string_view bytes, Faults& faults, Visitor& visitor, bool keeps_pieces)
      : bytes_(bytes), cursor_(bytes, faults), visitor_(visitor), keeps_pieces_(keeps_pieces) {}

  FileHeader Go() {
    FileHeader header = ReadFileHeader(cursor_, Form::kDebugMeta, keeps_pieces_);
    ReadWords();
    ReadKinds();
    {
      const Record file(cursor_, "file");
      cursor_.ExpectEnd();
    }
    if (is_whole_ && cursor_.ok()) visitor_.OnEnd(cursor_);
    return header;
  }

 private:
  // The least that the things take that are counted.
  static constexpr std::size_t kLeastDefinedWord = 2 * kWordSize;
  static constexpr std::size_t kLeastKind = kWordSize;
  static constexpr std::size_t kLeastObject = 6 * kWordSize;
  static constexpr std::size_t kLeastSection = kWordSize + kLeastObject + kWordSize;
  static constexpr std::size_t kLeastEntry = kWordSize + kLeastObject + 2 * kWordSize;

  std::vector<Piece>* PiecesIn(std::vector<Piece>& list) const {
    return keeps_pieces_ ? &list : nullptr;
  }

  // What follows a section or an entry can be read whatever is wrong in it, but for its length.
  void Recover() { is_whole_ &= !cursor_.Recover(); }

  // A count of records, which is one itself.
  std::uint32_t ReadCount(const char* record_name, std::size_t least_size) {
    const Record record(cursor_, record_name);
    return cursor_.Count("count", least_size);
  }

  void ReadWords() {
    const std::size_t begin = cursor_.offset();
    const std::uint32_t count = ReadCount("defined words", kLeastDefinedWord);
    if (cursor_.ok()) visitor_.OnWordCount({begin, cursor_.offset() - begin});
    for (std::uint32_t i = 0; i < count && cursor_.ok(); ++i) ReadWord(i);
  }

  void ReadWord(std::size_t ordinal) {
    DebugWordView word;
    const Record record(cursor_, "defined word", ordinal, PiecesIn(word.pieces));
    word.name = cursor_.Text("name");
    word.value = cursor_.Word("value");
    if (!cursor_.ok()) return;
    word.extent = record.extent();
    if (ordinal > 0 && word.name <= last_word_) {
      cursor_.Report("name", word.extent.offset,
                     "it must sort after the name of the word before it");
    }
    last_word_ = word.name;
    visitor_.OnWord(cursor_, word);
  }

  void ReadKinds() {
    const std::size_t begin = cursor_.offset();
    const std::uint32_t count = ReadCount("kinds", kLeastKind);
    if (count > language::kSectionKindCount) {
      const Record record(cursor_, "kinds");
      cursor_.Fail("count", begin, "it is {}, but there are {} kinds", count,
                   language::kSectionKindCount);
    }
    if (cursor_.ok()) visitor_.OnKindCount({begin, cursor_.offset() - begin});
    for (std::uint32_t i = 0; i < count && cursor_.ok(); ++i) ReadKind(i);
  }

  void ReadKind(std::size_t ordinal) {
    const Record record(cursor_, "kind block", ordinal);
    const std::uint32_t count = cursor_.Count("section count", kLeastSection);
    if (cursor_.ok()) visitor_.OnKindBegin(cursor_, record.extent());
    kind_ = 0;
    for (std::uint32_t i = 0; i < count && cursor_.ok(); ++i) ReadSection(i);
  }

  void ReadSection(std::size_t ordinal) {
    DebugSectionView section;
    section.ordinal = ordinal;
    LimitedRecord record(cursor_, "section", ordinal, PiecesIn(section.pieces));
    if (!record.Limit("record length")) return;
    ReadObject(section, [](std::uint32_t identifier) {
      return language::FindSourceKind(identifier) != nullptr;
    });
    if (cursor_.ok()) CheckKind(section);
    section.entry_count_offset = cursor_.offset();
    section.entry_count = cursor_.Count("entry count", kLeastEntry);
    if (cursor_.ok()) visitor_.OnSectionBegin(cursor_, section);
    for (std::uint32_t i = 0; i < section.entry_count && cursor_.ok(); ++i) ReadEntry(i);
    cursor_.ExpectEnd();
    section.extent = record.extent();
    if (cursor_.ok()) visitor_.OnSectionEnd(cursor_, section);
    Recover();
  }

  // The sections of a kind are neighbours, and each kind has one block.
  void CheckKind(const DebugSectionView& section) {
    const Record object(cursor_, "object");
    const bool is_first = kind_ == 0;
    if (!is_first && section.identifier != kind_) {
      cursor_.Report("identifier", section.offset, "it is 0x{:08X} in a block of kind 0x{:08X}",
                     section.identifier, kind_);
    }
    if (!is_first) return;
    kind_ = section.identifier;
    const std::uint32_t bit = std::uint32_t{1} << (kind_ & language::kKindMask);
    if ((std::exchange(kinds_, kinds_ | bit) & bit) == 0) return;
    cursor_.Report("identifier", section.offset, "an earlier block has the kind 0x{:08X}", kind_);
  }

  void ReadEntry(std::size_t ordinal) {
    DebugEntryView entry;
    entry.ordinal = ordinal;
    LimitedRecord record(cursor_, "entry", ordinal, PiecesIn(entry.pieces));
    if (!record.Limit("record length")) return;
    ReadObject(entry, [](std::uint32_t identifier) {
      return language::FindEntryRow(identifier) != nullptr;
    });
    ReadPayload(entry);
    cursor_.ExpectEnd();
    entry.extent = record.extent();
    if (cursor_.ok()) visitor_.OnEntry(cursor_, entry);
    Recover();
  }

  template <class IsKnown>
  void ReadObject(DebugObjectView& object, IsKnown is_known) {
    LimitedRecord record(cursor_, "object");
    if (!record.Limit("object length")) return;
    const bool may_have_files = std::exchange(may_have_files_, false);
    object.offset = cursor_.offset();
    object.identifier = cursor_.Word("identifier");
    if (!is_known(object.identifier)) {
      return cursor_.Fail("identifier", object.offset, "no such identifier: 0x{:08X}",
                          object.identifier);
    }
    object.notation = cursor_.Word("notation");
    object.line = cursor_.Word("line");
    object.file_index = cursor_.Word("file index");
    object.name = cursor_.Text("name");
    // The list travels in the first object record that a process writes; a later file has none.
    if (may_have_files && cursor_.left() > 0) ReadFiles();
    if (files_ && object.file_index >= *files_) {
      cursor_.Report("file index", object.file_index_offset(), "it is {}, source files: {}",
                     object.file_index, *files_);
    }
    cursor_.ExpectEnd();
  }

  void ReadFiles() {
    const Record record(cursor_, "source files");
    const std::uint32_t count = cursor_.Count("source file count", kWordSize);
    const std::size_t first = cursor_.offset();
    if (cursor_.ok()) files_ = count;
    for (std::uint32_t i = 0; i < count && cursor_.ok(); ++i) cursor_.Text("source file");
    if (!cursor_.ok()) return;
    visitor_.OnFiles(Texts(bytes_.substr(first, cursor_.offset() - first)), record.extent());
  }

  void ReadPayload(DebugEntryView& entry) {
    LimitedRecord record(cursor_, "payload");
    if (!record.Limit("payload length")) return;
    const std::size_t begin = cursor_.offset();
    entry.payload_type = cursor_.Word("payload type");
    if (entry.is_given() && entry.payload_type != entry.identifier) {
      cursor_.Fail("payload type", begin, "it is 0x{:08X} in an entry 0x{:08X}", entry.payload_type,
                   entry.identifier);
    }
    if (cursor_.ok() && entry.is_given()) ReadBody(entry);
    cursor_.ExpectEnd();
    entry.payload_extent = record.extent();
  }

  void ReadBody(DebugEntryView& entry) {
    switch (language::PayloadOf(entry.identifier)) {
      case language::PAYLOAD_DWORD:
        entry.number = cursor_.Word("Number");
        break;
      case language::PAYLOAD_STRING:
        AddText(entry, "Text");
        break;
      case language::PAYLOAD_STRINGLIST:
        AddList(entry, "Items");
        break;
      case language::PAYLOAD_VALUE:
        ReadValue(entry);
        break;
      case language::PAYLOAD_REPEATER:
        AddFields(entry, language::FieldsOfShape(language::Shape::kRepeater));
        break;
      default:
        break;
    }
  }

  void ReadValue(DebugEntryView& entry) {
    LimitedRecord record(cursor_, "value");
    if (!record.Limit("value length")) return;
    entry.value_type_offset = cursor_.offset();
    entry.value_type = cursor_.Word("type code");
    AddText(entry, "Type");
    AddFields(entry, language::FindValueType(entry.value_type).fields);
    cursor_.ExpectEnd();
  }

  void AddFields(DebugEntryView& entry, language::Rows<language::Field> fields) {
    for (const language::Field& field : fields) {
      if (field.kind == language::FieldKind::kList) {
        AddList(entry, field.name);
      } else {
        AddText(entry, field.name);
      }
    }
  }

  void AddText(DebugEntryView& entry, const char* name) {
    const std::size_t begin = cursor_.offset();
    cursor_.Text(name);
    const Extent extent{begin, cursor_.offset() - begin};
    const Texts texts(bytes_.substr(extent.offset, extent.size));
    entry.fields[entry.field_count++] = {name, false, texts, extent};
  }

  void AddList(DebugEntryView& entry, const char* name) {
    const std::size_t begin = cursor_.offset();
    const Texts texts = cursor_.TextList(name);
    entry.fields[entry.field_count++] = {name, true, texts, {begin, cursor_.offset() - begin}};
  }

  const std::string_view bytes_;
  Cursor cursor_;
  Visitor& visitor_;
  const bool keeps_pieces_;
  bool may_have_files_ = true;  // only before the first object
  bool is_whole_ = true;
  std::string_view last_word_;
  std::optional<std::uint32_t> files_;
  std::uint32_t kinds_ = 0;  // a bit for each that there was
  std::uint32_t kind_ = 0;   // of the block that the cursor is in; 0: not yet known
};

// Shows the records to a DebugMetaVisitor (debug_meta_records.h). What is wrong with the layout
// goes to `faults`, and the visitor does not get to see it.
template <class Visitor>
FileHeader WalkDebugMeta(std::string_view bytes, Faults& faults, Visitor& visitor,
                         bool keeps_pieces = false) {
  return DebugMetaWalk<Visitor>(bytes, faults, visitor, keeps_pieces).Go();
}

}  // namespace ruxcomp::file

#endif  // RUXCOMP_FILE_DEBUG_META_WALK_H_
