#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "backend/compile_pass.h"
#include "backend/file_io.h"
#include "backend/symbol_tables.h"
#include "ruxcomp/data.h"
#include "ruxcomp/language/file_format.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/words.h"
#include "ruxcomp/records.h"

extern "C" {
const std::uint32_t RUX_VERSION = ruxcomp::language::meta_format::kVersion;
}

namespace ruxcomp::core {

namespace {

constexpr std::size_t kWordsAtOnce = std::size_t{16} << 10;
using Keys =
    std::variant<std::vector<const std::string*>, std::vector<const std::uint32_t*>>;  // or null

// The block of one symbol table: its class, the length that it announces, its payload.
struct TableBlock {
  std::uint32_t base;
  std::uint32_t length = 0;
  std::size_t payload = 0;  // in bytes
  Keys keys;

  std::size_t size() const { return meta_format::kRecordHeadSize + payload; }
};

// The length counts the keys of the table, the payload has a place for every index: they differ
// when a key has no index or an index has no key.
TableBlock BlockOf(const StringTable& table, std::uint32_t base, std::uint32_t counter) {
  TableBlock block{base, 0, 0, {}};
  auto keys = KeysByIndex(table, base, counter, [&](const std::string& key, bool counts) {
    block.length += static_cast<std::uint32_t>(key.size() + 1);
    if (counts) block.payload += key.size();
  });
  block.payload += keys.size();  // a zero after each
  block.keys = std::move(keys);
  return block;
}

TableBlock BlockOf(const NumberTable& table, std::uint32_t base, std::uint32_t counter) {
  auto keys = KeysByIndex(table, base, counter, [](std::uint32_t, bool) {});
  const std::size_t payload = keys.size() * kWordSize;
  return {base, static_cast<std::uint32_t>(table.size() * kWordSize), payload, std::move(keys)};
}

// In the order of the directory.
std::vector<TableBlock> SymbolBlocks() {
  std::vector<TableBlock> blocks;
  for (const SymbolTable& row : kSymbolTables) {
    std::visit(
        [&](const auto* table) { blocks.push_back(BlockOf(*table, row.base, *row.counter)); },
        row.table);
  }
  return blocks;
}

std::size_t SizeOf(const tagGCSECT& section) {
  std::size_t size = meta_format::kRecordHeadSize;
  for (const tagGCENTRY& entry : section.entries) {
    size += meta_format::kRecordHeadSize + entry.values.size() * kWordSize;
  }
  return size;
}

std::size_t SectionsSize(const CompiledSections& compiled) {
  std::size_t size = kWordSize;
  for (const tagGCSECT* section : g_GCHead) size += SizeOf(*section);
  return size + compiled.words.size() * kWordSize;
}

// The head of the file: all that comes before the sections. `end` is where they end.
std::vector<std::uint8_t> Head(const std::vector<TableBlock>& blocks, std::size_t end) {
  std::vector<std::uint8_t> head(meta_format::kMagic,
                                 meta_format::kMagic + sizeof(meta_format::kMagic));
  head.resize(meta_format::kSectionsOffset);
  StoreWord(head, meta_format::kVersionOffset, RUX_VERSION);
  StoreWord(head, meta_format::kTimeOffset, static_cast<std::uint32_t>(std::time(nullptr)));
  std::size_t slot = meta_format::kDirectoryOffset;
  const auto add = [&](std::size_t size) {
    const std::size_t start = meta_format::NextBlock(end);
    StoreWord(head, slot, static_cast<std::uint32_t>(start));
    slot += kWordSize;
    end = start + size;
  };
  for (const TableBlock& block : blocks) add(block.size());
  add(meta_format::kRecordHeadSize + g_tblTableData.size());
  return head;
}

void AppendSection(std::vector<std::uint8_t>& bytes, const tagGCSECT& section) {
  std::size_t at = bytes.size();
  bytes.resize(at + SizeOf(section));
  const auto write = [&](std::size_t word) {
    StoreWord(bytes, at, static_cast<std::uint32_t>(word));
    at += kWordSize;
  };
  write(section.identifier);
  write(section.entries.size());
  for (const tagGCENTRY& entry : section.entries) {
    write(entry.identifier);
    write(entry.values.size());
    for (const std::uint32_t value : entry.values) write(value);
  }
}

void WriteWords(FileWriter& file, const std::vector<std::uint32_t>& words) {
  for (std::size_t at = 0; at < words.size();) {
    const std::size_t count = std::min(words.size() - at, kWordsAtOnce);
    AppendWords(file.bytes(), words.data() + at, count);
    file.WriteWhenLarge();
    at += count;
  }
}

void WriteSections(FileWriter& file, const CompiledSections& compiled) {
  AppendWord(file.bytes(), static_cast<std::uint32_t>(g_GCHead.size() + compiled.count));
  for (const tagGCSECT* section : g_GCHead) {
    AppendSection(file.bytes(), *section);
    file.WriteWhenLarge();
  }
  WriteWords(file, compiled.words);
}

void WriteKeys(FileWriter& file, const std::vector<const std::string*>& keys) {
  for (const std::string* key : keys) {
    std::vector<std::uint8_t>& bytes = file.bytes();
    if (key) bytes.insert(bytes.end(), key->begin(), key->end());
    bytes.push_back(0);
    file.WriteWhenLarge();
  }
}

void WriteKeys(FileWriter& file, const std::vector<const std::uint32_t*>& keys) {
  std::vector<std::uint32_t> words(keys.size());
  std::transform(keys.begin(), keys.end(), words.begin(),
                 [](const std::uint32_t* key) { return key ? *key : kNoNumber; });
  WriteWords(file, words);
}

// Starts a block with its class and length.
void StartBlock(FileWriter& file, std::uint32_t base, std::uint32_t length) {
  std::vector<std::uint8_t>& bytes = file.bytes();
  bytes.resize(bytes.size() + meta_format::NextBlock(file.position()) - file.position());
  AppendWords(bytes, {base, length});
}

void WriteTbl(FileWriter& file, const TableBlock& block) {
  StartBlock(file, block.base, block.length);
  std::visit([&](const auto& keys) { WriteKeys(file, keys); }, block.keys);
}

void WriteTableData(FileWriter& file) {
  StartBlock(file, CLASS_TableData, static_cast<std::uint32_t>(g_tblTableData.size()));
  file.bytes().insert(file.bytes().end(), g_tblTableData.begin(), g_tblTableData.end());
}

}  // namespace

std::uint32_t WriteMeta(const std::string& path, const CompiledSections& compiled) {
  FileWriter file(path);
  if (!file.is_open()) return 0;
  const std::vector<TableBlock> blocks = SymbolBlocks();
  file.bytes() = Head(blocks, meta_format::kSectionsOffset + SectionsSize(compiled));
  WriteSections(file, compiled);
  for (const TableBlock& block : blocks) WriteTbl(file, block);
  WriteTableData(file);
  return file.Close() ? 1 : 0;
}

}  // namespace ruxcomp::core
