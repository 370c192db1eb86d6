#include "tool/compiled/debug_meta.h"

#include <fmt/format.h>

#include <fstream>
#include <set>
#include <utility>

#include "tool/compiled/cursor.h"
#include "tool/compiled/file_header.h"
#include "tool/compiled/keywords.h"
#include "tool/compiled/value_shape.h"
#include "tool/compiled/whole_file.h"

namespace rux {
namespace {

constexpr std::string_view kMagic("MORV RUX metaD.\0", 16);

// The least that the things take that are counted.
constexpr std::size_t kLeastDefinedWord = 8;
constexpr std::size_t kLeastText = 4;
constexpr std::size_t kLeastKind = 4;
constexpr std::size_t kLeastObject = 4 + 20;
constexpr std::size_t kLeastSection = 4 + kLeastObject + 4;
constexpr std::size_t kLeastEntry = 4 + kLeastObject + 4 + 4;

constexpr std::size_t kMostKinds = 0
#define SECTION(keyword, kind, notation) +1
#include "ruxcomp/sections.def"
    ;

class Decoder {
 public:
  Decoder(std::string_view bytes, Faults& faults) : cursor_(bytes, faults), faults_(faults) {}

  DebugMeta Decode() {
    // A fault that reaches this place leaves no way to tell where the next record begins.
    try {
      DecodeHeader(cursor_, kMagic, "debug meta file", meta_.version, meta_.creation_time,
                   meta_.header);
      DecodeWords();
      DecodeKinds();
      const Record file(cursor_, "file");
      cursor_.ExpectEnd();
    } catch (const Fault& fault) {
      faults_.Add(fault);
    }
    return std::move(meta_);
  }

 private:
  void DecodeWords() {
    const std::uint32_t count = DecodeCount("defined words", kLeastDefinedWord, meta_.word_count);
    for (std::uint32_t i = 0; i < count; ++i) DecodeWord(i);
  }

  std::uint32_t DecodeCount(const char* record_name, std::size_t least_size, Extent& extent) {
    const Record record(cursor_, record_name);
    const std::uint32_t count = cursor_.Count("count", least_size);
    extent = record.extent();
    return count;
  }

  void DecodeWord(std::size_t ordinal) {
    DebugWord word;
    const Record record(cursor_, "defined word", ordinal, &word.pieces);
    const std::size_t begin = cursor_.offset();
    word.name = cursor_.Text("name");
    word.value = cursor_.Word("value");
    word.extent = record.extent();
    if (!meta_.words.empty() && word.name <= meta_.words.back().name) {
      cursor_.Report("name", begin, "it does not come after the name of the word before it");
    }
    meta_.words.push_back(std::move(word));
  }

  void DecodeKinds() {
    const std::uint32_t count = DecodeCount("kinds", kLeastKind, meta_.kind_count);
    if (count > kMostKinds) {
      const Record record(cursor_, "kinds");
      cursor_.Fail("count", meta_.kind_count.offset,
                   fmt::format("it is {}, there are {} kinds", count, kMostKinds));
    }
    for (std::uint32_t i = 0; i < count; ++i) DecodeKind(i);
  }

  void DecodeKind(std::size_t ordinal) {
    const Record record(cursor_, "kind block", ordinal);
    const std::uint32_t count = cursor_.Count("section count", kLeastSection);
    meta_.section_counts.push_back(record.extent());
    meta_.kinds.emplace_back();
    for (std::uint32_t i = 0; i < count && !faults_.enough(); ++i) {
      // Sections have a length: what follows one can be read whatever is wrong in it.
      try {
        DecodeSection(i);
      } catch (const Fault& fault) {
        faults_.Add(fault);
      }
    }
  }

  void DecodeSection(std::size_t ordinal) {
    DebugSection section;
    Record record(cursor_, "section", ordinal, &section.pieces);
    record.Limit("record length");
    DecodeObject(section, SourceSectionKeyword);
    CheckKind(section.identifier);
    const std::uint32_t count = cursor_.Count("entry count", kLeastEntry);
    for (std::uint32_t i = 0; i < count && !faults_.enough(); ++i) {
      try {
        DecodeEntry(i, section.entries);
      } catch (const Fault& fault) {
        faults_.Add(fault);
      }
    }
    cursor_.ExpectEnd();
    section.extent = record.extent();
    meta_.kinds.back().push_back(std::move(section));
  }

  // The sections of a kind stand together, and each kind stands once.
  void CheckKind(std::uint32_t identifier) {
    const bool is_first = meta_.kinds.back().empty();
    if (is_first && !kinds_.insert(identifier).second) {
      cursor_.Report("identifier", identifier_offset_,
                     fmt::format("an earlier block has the kind 0x{:08X}", identifier));
    }
    if (is_first) return;
    const std::uint32_t expected = meta_.kinds.back().front().identifier;
    if (identifier == expected) return;
    cursor_.Report("identifier", identifier_offset_,
                   fmt::format("it is 0x{:08X} in a block of kind 0x{:08X}", identifier, expected));
  }

  void DecodeEntry(std::size_t ordinal, std::vector<DebugEntry>& entries) {
    DebugEntry entry;
    Record record(cursor_, "entry", ordinal, &entry.pieces);
    record.Limit("record length");
    DecodeObject(entry, SourceEntryKeyword);
    DecodePayload(entry);
    cursor_.ExpectEnd();
    entry.extent = record.extent();
    entries.push_back(std::move(entry));
  }

  void DecodeObject(DebugObject& object, const char* (*keyword_of)(std::uint32_t)) {
    Record record(cursor_, "object");
    record.Limit("object length");
    const bool may_have_files = std::exchange(may_have_files_, false);
    identifier_offset_ = cursor_.offset();
    object.identifier = cursor_.Word("identifier");
    if (keyword_of(object.identifier) == nullptr) {
      cursor_.Fail("identifier", identifier_offset_,
                   fmt::format("there is no identifier 0x{:08X}", object.identifier));
    }
    object.notation = cursor_.Word("notation");
    object.line = cursor_.Word("line");
    const std::size_t file_offset = cursor_.offset();
    object.file_index = cursor_.Word("file index");
    object.name = cursor_.Text("name");
    if (may_have_files && cursor_.left() > 0) DecodeFiles();
    if (meta_.files_extent.size > 0 && object.file_index >= meta_.files.size()) {
      cursor_.Report(
          "file index", file_offset,
          fmt::format("it is {}, source files: {}", object.file_index, meta_.files.size()));
    }
    cursor_.ExpectEnd();
  }

  // The list travels in the first object record that a process writes; a later file has none.
  void DecodeFiles() {
    const Record record(cursor_, "source files");
    const std::uint32_t count = cursor_.Count("source file count", kLeastText);
    for (std::uint32_t i = 0; i < count; ++i) {
      meta_.files.emplace_back(cursor_.Text("source file"));
    }
    meta_.files_extent = record.extent();
  }

  void DecodePayload(DebugEntry& entry) {
    Record record(cursor_, "payload");
    record.Limit("payload length");
    const std::size_t begin = cursor_.offset();
    entry.payload_type = cursor_.Word("payload type");
    if (entry.payload_type != 0 && entry.payload_type != entry.identifier) {
      cursor_.Fail(
          "payload type", begin,
          fmt::format("it is 0x{:08X} in an entry 0x{:08X}", entry.payload_type, entry.identifier));
    }
    if (entry.payload_type != 0) DecodeBody(entry);
    cursor_.ExpectEnd();
    entry.payload_extent = record.extent();
  }

  void DecodeBody(DebugEntry& entry) {
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
        DecodeValue(entry);
        break;
      case PayloadClass::kRepeater:
        AddText(entry, "Count");
        AddText(entry, "Action");
        AddList(entry, "Args");
        break;
    }
  }

  void DecodeValue(DebugEntry& entry) {
    Record record(cursor_, "value");
    record.Limit("value length");
    entry.value_type = cursor_.Word("type code");
    AddText(entry, "Type");
    const ValueShape& shape = ShapeOf(entry.value_type);
    for (const char* name : shape.texts) AddText(entry, name);
    if (shape.list != nullptr) AddList(entry, shape.list);
    cursor_.ExpectEnd();
  }

  void AddText(DebugEntry& entry, const char* name) {
    const std::size_t begin = cursor_.offset();
    const std::string text(cursor_.Text(name));
    entry.fields.push_back({false, {text}, {begin, cursor_.offset() - begin}, name});
  }

  void AddList(DebugEntry& entry, const char* name) {
    const std::size_t begin = cursor_.offset();
    std::vector<std::string> texts = cursor_.Texts(name);
    entry.fields.push_back({true, std::move(texts), {begin, cursor_.offset() - begin}, name});
  }

  Cursor cursor_;
  Faults& faults_;
  DebugMeta meta_;
  std::set<std::uint32_t> kinds_;      // the kinds of the blocks
  bool may_have_files_ = true;         // only before the first object
  std::size_t identifier_offset_ = 0;  // of the last object
};

}  // namespace

bool IsDebugMetaBytes(std::string_view bytes) { return bytes.substr(0, kMagic.size()) == kMagic; }

bool IsDebugMeta(const std::string& path) {
  char bytes[kMagic.size()] = {};
  std::ifstream stream(path, std::ios::binary);
  stream.read(bytes, sizeof bytes);
  return IsDebugMetaBytes({bytes, sizeof bytes});
}

DebugMeta DecodeDebugMeta(std::string_view bytes, Faults& faults) {
  return Decoder(bytes, faults).Decode();
}

DebugMeta ReadDebugMeta(const std::string& path) {
  Faults faults;
  const std::string bytes = ReadWholeFile(path);
  DebugMeta meta = DecodeDebugMeta(bytes, faults);
  if (!faults.empty()) throw DamageFailure(path, faults);
  return meta;
}

}  // namespace rux
