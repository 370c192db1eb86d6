#include "debugmeta/meta_d_file.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include "backend/file_io.h"
#include "debugmeta/bytes.h"
#include "frontend/defined_words.h"
#include "frontend/report.h"
#include "frontend/section.h"
#include "frontend/section_kinds.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/data.h"
#include "ruxcomp/language/file_format.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/words.h"
#include "ruxcomp/records.h"

extern "C" {
const std::uint32_t RUXD_VERSION = ruxcomp::language::debug_meta_format::kVersion;
const std::uint32_t RUXD_DATA_OFFSET = ruxcomp::language::debug_meta_format::kDataOffset;
}

namespace ruxcomp::core {

namespace {

void WriteHeader(Bytes& bytes) {
  bytes.assign(debug_meta_format::kMagic,
               debug_meta_format::kMagic + sizeof(debug_meta_format::kMagic));
  bytes.resize(RUXD_DATA_OFFSET);
  StoreWord(bytes, debug_meta_format::kVersionOffset, RUXD_VERSION);
  StoreWord(bytes, debug_meta_format::kTimeOffset, static_cast<std::uint32_t>(std::time(nullptr)));
}

void WriteDefinedWords(Bytes& bytes) {
  ByteWriter out(bytes);
  out.Word(static_cast<std::uint32_t>(g_tblPreDefine.words().size()));
  for (const auto& [name, value] : g_tblPreDefine.words()) {
    out(name);
    out.Word(value);
  }
}

void WriteSections(FileWriter& file) {
  ByteWriter out(file.bytes());
  out.Word(static_cast<std::uint32_t>(CRUXSection::m_svpHSection.size()));
  for (const std::vector<CRUXSection*>* head : CRUXSection::m_svpHSection) {
    out.Word(static_cast<std::uint32_t>(head->size()));
    for (const CRUXSection* section : *head) {
      out.Nested(*section);
      file.WriteWhenLarge();
    }
  }
}

std::uint32_t PaddedWord(FileReader& file) {
  unsigned char bytes[kWordSize] = {};
  file.PaddedBytes(bytes, sizeof bytes);
  return LoadWord(bytes);
}

// A length, limited by the file: zeros follow its end, but no more of them than the file has bytes.
// A damaged length can ask for gigabytes.
std::size_t Length(FileReader& file) {
  const std::size_t length = PaddedWord(file);
  return std::min(length, file.Remaining() + file.size());
}

// A word that is already defined keeps its value. After the end of the file all rows are alike: one
// of them is enough.
void ReadDefinedWords(FileReader& file) {
  for (std::uint32_t count = PaddedWord(file); count > 0; --count) {
    const bool at_end = file.Remaining() == 0;
    std::string name(Length(file), '\0');
    file.PaddedBytes(name.data(), name.size());
    g_tblPreDefine.Add(name, PaddedWord(file));
    if (at_end) return;
  }
}

// A new section with that identifier, registered, its slots empty; null for a kind that is not
// restored.
CRUXSection* MakeSection(std::uint32_t id) {
  const SectionKind* kind = FindSourceKind(id);
  if (!kind || kind->form == Form::kNotRestored) return nullptr;
  return kSectionMakers[kind - kSectionKinds].make_empty();
}

void RestoreSections(FileReader& file) {
  for (std::uint32_t kinds = PaddedWord(file); kinds > 0; --kinds) {
    if (file.Remaining() == 0) return;  // kinds without sections
    for (std::uint32_t count = PaddedWord(file); count > 0; --count) {
      const std::size_t size = Length(file);
      Bytes bytes(std::min(size, file.Remaining()));
      file.PaddedBytes(bytes.data(), bytes.size());
      const RecordView record(bytes, size);
      if (CRUXSection* section = MakeSection(RecordId(record))) section->SetBuffer(record);
    }
  }
}

}  // namespace

std::uint32_t WriteMetaD(const std::string& path) {
  FileWriter file(path);
  if (!file.is_open()) {
    Report<MessageId::kDebugMetaNotCreated>({}, path);
    return 0;
  }
  WriteHeader(file.bytes());
  WriteDefinedWords(file.bytes());
  WriteSections(file);
  return 1;
}

std::uint32_t ReadMetaD(const std::string& path, tagMETAFILEINFO* info) {
  FileReader file(path);
  if (!file.opened()) {
    Report<MessageId::kDebugMetaNotOpened>({}, path);
    return 0;
  }
  char magic[sizeof(debug_meta_format::kMagic)] = {};
  file.PaddedBytes(magic, sizeof magic);
  if (std::memcmp(magic, debug_meta_format::kMagic, sizeof magic) != 0) {
    Report<MessageId::kDebugMetaInvalid>({}, path);
    return 0;
  }
  tagMETAFILEINFO header{PaddedWord(file), 0};
  if (header.version != debug_meta_format::kVersion) {
    Report<MessageId::kDebugMetaVersion>({}, path);
    return 0;
  }
  header.creationTime = PaddedWord(file);
  if (info) *info = header;
  file.Seek(debug_meta_format::kDataOffset);
  ReadDefinedWords(file);
  RestoreSections(file);
  return 1;
}

}  // namespace ruxcomp::core

std::uint32_t gccOutputD(const std::string& path) { return ruxcomp::core::WriteMetaD(path); }
