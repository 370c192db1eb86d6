#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "backend/file_reader.h"
#include "debugmeta/bytes.h"
#include "debugmeta/meta_d_file.h"
#include "debugmeta/model_bytes.h"
#include "frontend/predefine.h"
#include "frontend/report.h"
#include "frontend/section.h"
#include "frontend/section_kinds.h"
#include "ruxcomp/language/debug_meta_format.h"
#include "ruxcomp/language/sections.h"
#include "ruxcomp/language/words.h"
#include "ruxcomp/records.h"

namespace {

using namespace debug_meta_format;

std::uint32_t PaddedWord(FileReader& file) {
  unsigned char bytes[kWordSize] = {};
  file.PaddedBytes(bytes, sizeof bytes);
  return LoadWord(bytes);
}

// A length, limited by the file: after its end there are zeros, but no more than the file has
// bytes. A damaged length can ask for gigabytes of them.
std::size_t Length(FileReader& file) {
  const std::size_t length = PaddedWord(file);
  return std::min(length, file.Remaining() + file.size());
}

// A word that is defined already keeps its value. After the end of the file all rows are alike:
// one of them stands for all.
void ReadDefinedWords(FileReader& file) {
  for (std::uint32_t count = PaddedWord(file); count > 0; --count) {
    const bool at_end = file.Remaining() == 0;
    std::string name(Length(file), '\0');
    file.PaddedBytes(name.data(), name.size());
    g_tblPreDefine.emplace(name, PaddedWord(file));
    if (at_end) return;
  }
}

// A new section of that identifier, registered and with its templates; null for one that is not
// restored.
CRUXSection* MakeSection(std::uint32_t id) {
  const SectionKind* kind = FindSourceKind(id);
  if (!kind || kind->form == Form::kNotRestored) return nullptr;
  return kSectionMakers[kind - kSectionKinds].make_empty();
}

void ReadSections(FileReader& file) {
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

std::uint32_t ReadMetaD(const std::string& path, tagMETAFILEINFO* info) {
  FileReader file(path);
  if (!file.opened()) {
    Report<MessageId::kDebugMetaNotOpened>({}, path);
    return 0;
  }
  char magic[sizeof(kMagic)] = {};
  file.PaddedBytes(magic, sizeof magic);
  if (std::memcmp(magic, kMagic, sizeof magic) != 0) {
    Report<MessageId::kDebugMetaInvalid>({}, path);
    return 0;
  }
  tagMETAFILEINFO header{PaddedWord(file), 0};
  if (header.version != kVersion) {
    Report<MessageId::kDebugMetaVersion>({}, path);
    return 0;
  }
  header.creationTime = PaddedWord(file);
  if (info) *info = header;
  file.Seek(kDataOffset);
  ReadDefinedWords(file);
  ReadSections(file);
  return 1;
}
