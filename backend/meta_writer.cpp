#include <ctime>
#include <fstream>
#include <vector>

#include "backend/compile_pass.h"
#include "backend/meta_file.h"
#include "backend/meta_format.h"
#include "backend/symbol_tables.h"
#include "backend/words.h"

extern "C" {
const std::uint32_t RUX_VERSION = 0x01000000;
}

namespace {

using namespace meta_format;

// The whole file before it is written; growing it fills with zeros.
using Image = std::string;

std::size_t SectionsSize() {
  std::size_t words = 1;
  for (const tagGCSECT* section : g_GCHead) {
    words += 2;
    for (const tagGCENTRY& entry : section->entries) words += 2 + entry.values.size();
  }
  return words * kWordSize;
}

// No less than what the blocks take, so that the image need not grow.
std::size_t BlocksSize() {
  constexpr std::size_t kHead = 2 * kWordSize + kBlockAlignment;
  std::size_t size = kHead + g_tblTableData.size();
  for (const SymbolTable& row : kSymbolTables) {
    size += kHead + kWordSize * (*row.counter - row.base);
    if (const auto* table = std::get_if<StringTable*>(&row.table)) {
      for (const auto& [key, index] : **table) size += key.size();
    }
  }
  return size;
}

void WriteSections(Image& image) {
  std::size_t at = image.size();
  const std::size_t size = SectionsSize();
  image.reserve(at + size + BlocksSize());
  image.resize(at + size);
  const auto write = [&](std::size_t word) {
    StoreWord(image, at, static_cast<std::uint32_t>(word));
    at += kWordSize;
  };
  write(g_GCHead.size());
  for (const tagGCSECT* section : g_GCHead) {
    write(section->identifier);
    write(section->entries.size());
    for (const tagGCENTRY& entry : section->entries) {
      write(entry.identifier);
      write(entry.values.size());
      for (const std::uint32_t value : entry.values) write(value);
    }
  }
}

// Writes class, length and payload of one table.
void WriteTbl(Image& image, const StringTable& table, std::uint32_t base, std::uint32_t counter) {
  // The length counts the table's keys, the payload has a string for every index: they differ where
  // a key has no index or an index no key.
  std::size_t length = 0;
  for (const auto& [key, index] : table) length += key.size() + 1;
  AppendWord(image, base);
  AppendWord(image, static_cast<std::uint32_t>(length));
  for (const std::string* key : KeysByIndex(table, base, counter)) {
    if (key) image += *key;
    image += '\0';
  }
}

void WriteTbl(Image& image, const NumberTable& table, std::uint32_t base, std::uint32_t counter) {
  AppendWord(image, base);
  AppendWord(image, static_cast<std::uint32_t>(table.size() * kWordSize));
  for (const std::uint32_t* key : KeysByIndex(table, base, counter)) {
    AppendWord(image, key ? *key : 0xFFFFFFFF);
  }
}

void WriteTableData(Image& image) {
  AppendWord(image, RUX_CLASS_TableData);
  AppendWord(image, static_cast<std::uint32_t>(g_tblTableData.size()));
  image.append(g_tblTableData.begin(), g_tblTableData.end());
}

// Starts the next block and notes its offset in the next slot of the directory.
void StartBlock(Image& image, std::size_t& slot) {
  image.resize(NextBlock(image.size()));
  StoreWord(image, slot, static_cast<std::uint32_t>(image.size()));
  slot += kWordSize;
}

Image BuildImage() {
  Image image(kSectionsOffset, '\0');
  image.replace(0, sizeof(kMagic), kMagic, sizeof(kMagic));
  StoreWord(image, kVersionOffset, RUX_VERSION);
  StoreWord(image, kTimeOffset, static_cast<std::uint32_t>(std::time(nullptr)));
  WriteSections(image);
  std::size_t slot = kDirectoryOffset;
  for (const SymbolTable& row : kSymbolTables) {
    StartBlock(image, slot);
    std::visit([&](const auto* table) { WriteTbl(image, *table, row.base, *row.counter); },
               row.table);
  }
  StartBlock(image, slot);
  WriteTableData(image);
  return image;
}

}  // namespace

std::uint32_t WriteMeta(const std::string& path) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file) return 0;
  const Image image = BuildImage();
  file.write(image.data(), static_cast<std::streamsize>(image.size()));
  file.close();
  return file ? 1 : 0;
}
