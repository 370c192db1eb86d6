#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <variant>

#include "backend/compile_pass.h"
#include "backend/file_io.h"
#include "backend/symbol_tables.h"
#include "ruxcomp/data.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/language/file_format.h"
#include "ruxcomp/language/symbols.h"
#include "ruxcomp/language/words.h"
#include "ruxcomp/records.h"

namespace ruxcomp::core {

namespace {

// Reads a count of things of at least `size` bytes each; false when the file cannot hold as many.
bool ReadCount(FileReader& file, std::size_t size, std::uint32_t& count) {
  return file.Word(count) && count <= file.Remaining() / size;
}

bool ReadEntry(FileReader& file, tagGCENTRY& entry) {
  std::uint32_t count = 0;
  if (!file.Word(entry.identifier) || !ReadCount(file, kWordSize, count)) return false;
  return file.Words(entry.values, count);
}

bool ReadSection(FileReader& file, tagGCSECT& section) {
  std::uint32_t count = 0;
  if (!file.Word(section.identifier) || !ReadCount(file, meta_format::kRecordHeadSize, count))
    return false;
  section.entries.resize(count);
  for (tagGCENTRY& entry : section.entries) {
    if (!ReadEntry(file, entry)) return false;
  }
  return true;
}

bool ReadSections(FileReader& file) {
  std::uint32_t count = 0;
  if (!ReadCount(file, meta_format::kRecordHeadSize, count)) return false;
  for (; count > 0; --count) {
    auto section = std::make_unique<tagGCSECT>();
    if (!ReadSection(file, *section)) return false;
    g_GCHead.push_back(nullptr);
    g_GCHead.back() = section.release();
  }
  return true;
}

// Fills a table with the items of its block, in index order. Every item takes an index; a repeated
// item keeps its first.
bool ReadTbl(FileReader& file, StringTable& table, std::uint32_t& counter, std::uint32_t step) {
  std::uint32_t length = 0;
  if (!ReadCount(file, 1, length)) return false;
  for (std::size_t left = length; left > 0;) {
    std::string key;
    if (!file.Text(key, left)) return false;
    table.emplace(std::move(key), counter);
    counter += step;
  }
  return true;
}

bool ReadTbl(FileReader& file, NumberTable& table, std::uint32_t& counter, std::uint32_t step) {
  std::uint32_t length = 0;
  if (!ReadCount(file, 1, length)) return false;
  for (std::size_t read = 0; read + kWordSize <= length; read += kWordSize) {
    std::uint32_t number = 0;
    if (!file.Word(number)) return false;
    table.emplace_hint(table.end(), number, counter);  // numbers often come in order
    counter += step;
  }
  return true;
}

// Cells of an earlier file do not outlive a block that is cut off.
bool ReadTableData(FileReader& file) {
  g_tblTableData.clear();
  std::uint32_t length = 0;
  if (!ReadCount(file, 1, length)) return false;
  g_tblTableData.resize(length);
  return file.Bytes(g_tblTableData.data(), length);
}

// Reads one block, whose class says what it is; skips a block of an unknown class.
bool ReadTbl(FileReader& file) {
  std::uint32_t base = 0;
  if (!file.Word(base)) return false;
  if (base == CLASS_TableData) return ReadTableData(file);
  const SymbolTable* found = FindSymbolTable(base);
  if (!found) return true;
  *found->counter = base;
  return std::visit(
      [&](auto* table) {
        table->clear();
        return ReadTbl(file, *table, *found->counter, 1);
      },
      found->table);
}

// Reads the blocks that the directory lists, up to its ending zero. A directory that runs into the
// sections is damaged: each of its slots could name the whole file once more.
bool ReadTables(FileReader& file) {
  for (std::size_t slot = meta_format::kDirectoryOffset; slot < meta_format::kSectionsOffset;
       slot += kWordSize) {
    std::uint32_t offset = 0;
    file.Seek(slot);
    if (!file.Word(offset)) return false;
    if (offset == 0) return true;
    file.Seek(offset);
    if (!ReadTbl(file)) return false;
  }
  return false;
}

bool ReadHeader(FileReader& file, tagMETAFILEINFO& info) {
  char magic[meta_format::kMagicSize] = {};
  if (!file.Bytes(magic, sizeof magic) ||
      std::strncmp(magic, meta_format::kMagic, sizeof magic) != 0)
    return false;
  if (!file.Word(info.version) || info.version != RUX_VERSION) return false;
  file.Word(info.creationTime);
  return true;
}

}  // namespace

std::uint32_t ReadMeta(const std::string& path, tagMETAFILEINFO* info) {
  FileReader file(path);
  if (!file.opened()) {
    g_dwLastError = RUX_ERROR_CANNOT_OPEN;
    return 0;
  }
  tagMETAFILEINFO header{};
  if (!ReadHeader(file, header)) {
    g_dwLastError = RUX_ERROR_WRONG_FORMAT;
    return 0;
  }
  if (info) *info = header;
  file.Seek(meta_format::kSectionsOffset);
  InvalidateRecords();
  g_GCHead.clear();
  return ReadSections(file) && ReadTables(file) ? 1 : 0;
}

}  // namespace ruxcomp::core
