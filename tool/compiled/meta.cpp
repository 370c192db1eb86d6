#include "tool/compiled/meta.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "ruxcomp/identifiers.h"
#include "tool/compiled/cursor.h"
#include "tool/compiled/file_header.h"
#include "tool/compiled/keywords.h"
#include "tool/compiled/meta_index.h"
#include "tool/compiled/text_block.h"

namespace rux {
namespace {

constexpr std::string_view kMagic("MORV RUX meta.\0", 15);
constexpr std::size_t kSectionsOffset = 256;
constexpr std::size_t kAlignment = 16;  // of the blocks; also the most padding before one
constexpr std::size_t kWordSize = 4;

// The least that the things take that are counted.
constexpr std::size_t kLeastSection = 8;
constexpr std::size_t kLeastEntry = 8;

// The classes of the blocks, in file order.
constexpr std::array<std::uint32_t, 10> kBlocks = {
#define SYMBOL_TABLE(name, class_byte, key) RUX_CLASS_##name,
#include "ruxcomp/symbol_tables.def"
    RUX_CLASS_TableData};

class Decoder {
 public:
  Decoder(std::string_view bytes, Faults& faults)
      : bytes_(bytes), cursor_(bytes, faults), faults_(faults) {}

  CompiledMeta Decode() {
    try {
      DecodeHeader(cursor_, kMagic, "meta file", meta_.version, meta_.creation_time, meta_.header);
      DecodeDirectory();
      Try([this] { DecodeSections(); });
      for (std::size_t i = 0; i < kBlocks.size(); ++i) Try([this, i] { DecodeBlock(i); });
    } catch (const Fault& fault) {
      faults_.Add(fault);
    }
    return std::move(meta_);
  }

 private:
  // Sections and blocks are found by their offsets, whatever is wrong in another one.
  template <class Action>
  void Try(Action action) {
    try {
      action();
    } catch (const Fault& fault) {
      faults_.Add(fault);
    }
  }

  void DecodeDirectory() {
    const Record record(cursor_, "directory", Record::kNoOrdinal, &meta_.directory);
    for (std::size_t least = kSectionsOffset; offsets_.size() < kBlocks.size();) {
      const std::size_t at = cursor_.offset();
      const char* name = IndexClassName(kBlocks[offsets_.size()]);
      const std::uint32_t offset = cursor_.Word(name);
      if (offset % kAlignment != 0 || offset <= least || offset >= bytes_.size()) {
        cursor_.Fail(
            name, at,
            fmt::format(
                "it is 0x{:X}; it must be a multiple of {} above 0x{:X} and below the file's "
                "end 0x{:X}",
                offset, kAlignment, least, bytes_.size()));
      }
      offsets_.push_back(offset);
      least = offset;
    }
    cursor_.Zeros("end of directory", kWordSize);
    cursor_.Zeros("gap", kSectionsOffset - cursor_.offset());
  }

  void DecodeSections() {
    Record record(cursor_, "sections", Record::kNoOrdinal, &meta_.frame);
    record.MoveTo({kSectionsOffset, offsets_.front() - kSectionsOffset});
    const std::uint32_t count = cursor_.Count("section count", kLeastSection);
    for (std::uint32_t i = 0; i < count; ++i) DecodeSection(i);
    ExpectPadding();
  }

  void DecodeSection(std::size_t ordinal) {
    CompiledSection section;
    const Record record(cursor_, "section", ordinal, &section.pieces);
    const std::size_t at = cursor_.offset();
    section.identifier = cursor_.Word("identifier");
    if (CompiledSectionKeyword(section.identifier) == nullptr) {
      cursor_.Fail("identifier", at, fmt::format("no kind has 0x{:08X}", section.identifier));
    }
    const std::uint32_t count = cursor_.Count("entry count", kLeastEntry);
    for (std::uint32_t i = 0; i < count; ++i) DecodeEntry(i, section.entries);
    section.extent = record.extent();
    meta_.sections.push_back(std::move(section));
  }

  void DecodeEntry(std::size_t ordinal, std::vector<CompiledEntry>& entries) {
    CompiledEntry entry;
    const Record record(cursor_, "entry", ordinal, &entry.pieces);
    entry.identifier = cursor_.Word("identifier");
    const std::uint32_t count = cursor_.Count("value count", kWordSize);
    for (std::uint32_t i = 0; i < count; ++i) entry.values.push_back(cursor_.Word("value"));
    entry.extent = record.extent();
    entries.push_back(std::move(entry));
  }

  // From one block's offset to that of the next one or to the end of the file.
  Extent RangeOf(std::size_t block) const {
    const std::size_t end = block + 1 < offsets_.size() ? offsets_[block + 1] : bytes_.size();
    return {offsets_[block], end - offsets_[block]};
  }

  void DecodeBlock(std::size_t ordinal) {
    CompiledTable table;
    Record record(cursor_, "table", ordinal, &table.pieces);
    record.MoveTo(RangeOf(ordinal));
    const std::size_t at = cursor_.offset();
    table.base = cursor_.Word("class");
    if (table.base != kBlocks[ordinal]) {
      cursor_.Fail("class", at,
                   fmt::format("it is 0x{:08X}, needed is 0x{:08X}", table.base, kBlocks[ordinal]));
    }
    table.length = cursor_.Word("length");
    CheckLength(table.length);
    if (table.base == RUX_CLASS_TableData) {
      DecodeCells(table);
    } else if (table.base == RUX_CLASS_Dword) {
      DecodeNumbers(table);
    } else {
      DecodeTexts(table);
    }
    table.extent = record.extent();
    if (ordinal + 1 < kBlocks.size()) ExpectPadding();
    meta_.tables.push_back(std::move(table));
  }

  // What the length says is read without regard to the next block.
  void CheckLength(std::uint32_t length) const {
    const std::size_t left = bytes_.size() - cursor_.offset();
    if (length > left)
      FailLength(
          fmt::format("the length {0} (0x{0:X}) is too large, bytes left: {1}", length, left));
  }

  [[noreturn]] void FailLength(const std::string& reason) const {
    cursor_.Fail("length", cursor_.offset() - kWordSize, reason);
  }

  void DecodeCells(CompiledTable& table) {
    if (table.length != cursor_.left() || table.length % TableCells().size() != 0) {
      FailLength(fmt::format("it is {}, bytes left: {}, for each table: {}", table.length,
                             cursor_.left(), TableCells().size()));
    }
    while (cursor_.left() > 0) {
      TableCells& cells = table.cells.emplace_back();
      const std::string_view bytes = cursor_.Bytes("cells", cells.size());
      std::copy(bytes.begin(), bytes.end(), cells.begin());
    }
  }

  void DecodeNumbers(CompiledTable& table) {
    if (table.length % kWordSize != 0 || table.length > cursor_.left()) {
      FailLength(fmt::format("it is {}, bytes left: {}, for each number: {}", table.length,
                             cursor_.left(), kWordSize));
    }
    for (std::size_t i = 0; i < table.length / kWordSize; ++i) {
      table.numbers.push_back(cursor_.Word("number"));
    }
  }

  void DecodeTexts(CompiledTable& table) {
    const std::string_view block = bytes_.substr(cursor_.offset(), cursor_.left());
    const std::optional<std::size_t> size = SizeOfTexts(block, table.length);
    if (!size) cursor_.Fail("texts", cursor_.offset(), "they are not ended by padding");
    if (table.length < *size && !CouldEndAt(block, table.length)) {
      FailLength(fmt::format("it is {}, bytes of the texts: {}", table.length, *size));
    }
    table.note = LengthNote(table.length, *size);
    for (std::size_t begin = 0; begin < *size;) {
      const std::size_t end = block.find('\0', begin) + 1;
      cursor_.Bytes("text", end - begin);
      table.texts.emplace_back(block.substr(begin, end - begin - 1));
      begin = end;
    }
  }

  // Between two blocks there is always padding, also behind one that ends on a boundary.
  void ExpectPadding() {
    const std::size_t size = cursor_.left();
    if (size == 0 || size > kAlignment) {
      cursor_.Fail("padding", cursor_.offset(),
                   fmt::format("bytes: {}, right are 1 to {}", size, kAlignment));
    }
    cursor_.Zeros("padding", size);
  }

  const std::string_view bytes_;
  Cursor cursor_;
  Faults& faults_;
  CompiledMeta meta_;
  std::vector<std::size_t> offsets_;  // of the blocks
};

}  // namespace

bool IsMetaBytes(std::string_view bytes) { return bytes.substr(0, kMagic.size()) == kMagic; }

CompiledMeta DecodeMeta(std::string_view bytes, Faults& faults) {
  return Decoder(bytes, faults).Decode();
}

}  // namespace rux
