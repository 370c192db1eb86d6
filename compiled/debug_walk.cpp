#include "compiled/debug_walk.h"

#include <optional>
#include <utility>

#include "compiled/keywords.h"
#include "compiled/limits.h"
#include "compiled/value_shape.h"

namespace rux::compiled {
namespace {

// The least that the things take that are counted.
constexpr std::size_t kLeastDefinedWord = 2 * kWordSize;
constexpr std::size_t kLeastKind = kWordSize;
constexpr std::size_t kLeastObject = 6 * kWordSize;
constexpr std::size_t kLeastSection = kWordSize + kLeastObject + kWordSize;
constexpr std::size_t kLeastEntry = kWordSize + kLeastObject + 2 * kWordSize;

class Walk {
 public:
  Walk(std::string_view bytes, Faults& faults, DebugVisitor& visitor, bool keeps_pieces)
      : bytes_(bytes),
        cursor_(bytes, faults),
        faults_(faults),
        visitor_(visitor),
        keeps_pieces_(keeps_pieces) {}

  FileHeader Go() {
    FileHeader header;
    // A fault that reaches this place leaves no way to tell where the next record begins.
    try {
      header = ReadFileHeader(cursor_, Form::kDebugMeta, keeps_pieces_);
      ReadWords();
      ReadKinds();
      ExpectEndOfFile();
      if (is_whole_) visitor_.OnEnd(cursor_);
    } catch (const Fault& fault) {
      faults_.Add(fault);
    }
    return header;
  }

 private:
  // What follows a section or an entry can be read whatever is wrong in it, but for its length.
  template <class Action>
  void Try(Action action) {
    try {
      action();
    } catch (const Fault& fault) {
      faults_.Add(fault);
      is_whole_ = false;
    }
  }

  void ExpectEndOfFile() {
    const Record file(cursor_, "file");
    cursor_.ExpectEnd();
  }

  std::vector<Piece>* PiecesIn(std::vector<Piece>& list) const {
    return keeps_pieces_ ? &list : nullptr;
  }

  void ReadWords() {
    const std::size_t begin = cursor_.offset();
    const std::uint32_t count = ReadCount("defined words", kLeastDefinedWord);
    visitor_.OnWordCount({begin, cursor_.offset() - begin});
    for (std::uint32_t i = 0; i < count; ++i) ReadWord(i);
  }

  std::uint32_t ReadCount(const char* record_name, std::size_t least_size) {
    const Record record(cursor_, record_name);
    return cursor_.Count("count", least_size);
  }

  void ReadWord(std::size_t ordinal) {
    DebugWordView word;
    const Record record(cursor_, "defined word", ordinal, PiecesIn(word.pieces));
    word.name = cursor_.Text("name");
    word.value = cursor_.Word("value");
    word.extent = record.extent();
    if (ordinal > 0 && word.name <= last_word_) {
      cursor_.Report("name", word.extent.offset,
                     "it does not come after the name of the word before it");
    }
    last_word_ = word.name;
    visitor_.OnWord(cursor_, word);
  }

  void ReadKinds() {
    const std::size_t begin = cursor_.offset();
    const std::uint32_t count = ReadCount("kinds", kLeastKind);
    if (count > kMostKinds) {
      const Record record(cursor_, "kinds");
      cursor_.Fail("count", begin, "it is {}, there are {} kinds", count, kMostKinds);
    }
    visitor_.OnKindCount({begin, cursor_.offset() - begin});
    for (std::uint32_t i = 0; i < count; ++i) ReadKind(i);
  }

  void ReadKind(std::size_t ordinal) {
    const Record record(cursor_, "kind block", ordinal);
    const std::uint32_t count = cursor_.Count("section count", kLeastSection);
    visitor_.OnKindBegin(cursor_, ordinal, record.extent());
    kind_ = 0;
    for (std::uint32_t i = 0; i < count; ++i) ReadSection(i);
  }

  void ReadSection(std::size_t ordinal) {
    DebugSectionView section;
    section.ordinal = ordinal;
    Record record(cursor_, "section", ordinal, PiecesIn(section.pieces));
    record.Limit("record length");
    Try([&] {
      ReadObject(section, SourceSectionKeyword);
      CheckKind(section);
      section.entry_count_offset = cursor_.offset();
      section.entry_count = cursor_.Count("entry count", kLeastEntry);
      visitor_.OnSectionBegin(cursor_, section);
      for (std::uint32_t i = 0; i < section.entry_count; ++i) ReadEntry(i);
      cursor_.ExpectEnd();
      section.extent = record.extent();
      visitor_.OnSectionEnd(cursor_, section);
    });
  }

  // The sections of a kind stand together, and each kind stands once.
  void CheckKind(const DebugSectionView& section) {
    const Record object(cursor_, "object");
    const bool is_first = kind_ == 0;
    if (!is_first && section.identifier != kind_) {
      cursor_.Report("identifier", section.offset, "it is 0x{:08X} in a block of kind 0x{:08X}",
                     section.identifier, kind_);
    }
    if (!is_first) return;
    kind_ = section.identifier;
    const std::uint32_t bit = std::uint32_t{1} << (kind_ - kSourceSection);
    if ((std::exchange(kinds_, kinds_ | bit) & bit) == 0) return;
    cursor_.Report("identifier", section.offset, "an earlier block has the kind 0x{:08X}", kind_);
  }

  void ReadEntry(std::size_t ordinal) {
    DebugEntryView entry;
    entry.ordinal = ordinal;
    Record record(cursor_, "entry", ordinal, PiecesIn(entry.pieces));
    record.Limit("record length");
    Try([&] {
      ReadObject(entry, SourceEntryKeyword);
      ReadPayload(entry);
      cursor_.ExpectEnd();
      entry.extent = record.extent();
      visitor_.OnEntry(cursor_, entry);
    });
  }

  void ReadObject(DebugObjectView& object, const char* (*keyword_of)(std::uint32_t)) {
    Record record(cursor_, "object");
    record.Limit("object length");
    const bool may_have_files = std::exchange(may_have_files_, false);
    object.offset = cursor_.offset();
    object.identifier = cursor_.Word("identifier");
    if (keyword_of(object.identifier) == nullptr) {
      cursor_.Fail("identifier", object.offset, "there is no identifier 0x{:08X}",
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
    files_ = cursor_.Count("source file count", kWordSize);
    const std::size_t first = cursor_.offset();
    for (std::uint32_t i = 0; i < *files_; ++i) cursor_.Text("source file");
    const Texts files(bytes_.substr(first, cursor_.offset() - first));
    visitor_.OnFiles(cursor_, files, record.extent());
  }

  void ReadPayload(DebugEntryView& entry) {
    Record record(cursor_, "payload");
    record.Limit("payload length");
    const std::size_t begin = cursor_.offset();
    entry.payload_type = cursor_.Word("payload type");
    if (entry.is_given() && entry.payload_type != entry.identifier) {
      cursor_.Fail("payload type", begin, "it is 0x{:08X} in an entry 0x{:08X}", entry.payload_type,
                   entry.identifier);
    }
    if (entry.is_given()) ReadBody(entry);
    cursor_.ExpectEnd();
    entry.payload_extent = record.extent();
  }

  void ReadBody(DebugEntryView& entry) {
    switch (PayloadClassOf(entry.identifier)) {
      case PayloadClass::kNumber:
        entry.number = cursor_.Word("Number");
        break;
      case PayloadClass::kText:
        AddText(entry, "Text");
        break;
      case PayloadClass::kList:
        AddList(entry, "Items");
        break;
      case PayloadClass::kValue:
        ReadValue(entry);
        break;
      case PayloadClass::kRepeater:
        AddText(entry, "Count");
        AddText(entry, "Action");
        AddList(entry, "Args");
        break;
    }
  }

  void ReadValue(DebugEntryView& entry) {
    Record record(cursor_, "value");
    record.Limit("value length");
    entry.value_type_offset = cursor_.offset();
    entry.value_type = cursor_.Word("type code");
    AddText(entry, "Type");
    const ValueShape& shape = ShapeOf(entry.value_type);
    for (const ShapePart& part : shape.texts) AddText(entry, part.name);
    if (shape.list.name != nullptr) AddList(entry, shape.list.name);
    cursor_.ExpectEnd();
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
  Faults& faults_;
  DebugVisitor& visitor_;
  const bool keeps_pieces_;
  bool may_have_files_ = true;  // only before the first object
  bool is_whole_ = true;
  std::string_view last_word_;
  std::optional<std::uint32_t> files_;
  std::uint32_t kinds_ = 0;  // a bit for each that there was
  std::uint32_t kind_ = 0;   // of the block that one is in; 0: not yet known
};

}  // namespace

FileHeader WalkDebugMeta(std::string_view bytes, Faults& faults, DebugVisitor& visitor,
                         bool keeps_pieces) {
  return Walk(bytes, faults, visitor, keeps_pieces).Go();
}

}  // namespace rux::compiled
