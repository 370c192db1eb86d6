#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

#include "backend/file_writer.h"
#include "debugmeta/bytes.h"
#include "debugmeta/meta_d_file.h"
#include "frontend/predefine.h"
#include "frontend/report.h"
#include "frontend/section.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/data.h"
#include "ruxcomp/language/debug_meta_format.h"
#include "ruxcomp/language/words.h"

extern "C" {
const std::uint32_t RUXD_VERSION = ruxcomp::language::debug_meta_format::kVersion;
const std::uint32_t RUXD_DATA_OFFSET = ruxcomp::language::debug_meta_format::kDataOffset;
}

namespace {

using namespace debug_meta_format;

void WriteHeader(Bytes& bytes) {
  bytes.assign(kMagic, kMagic + sizeof(kMagic));
  bytes.resize(RUXD_DATA_OFFSET);
  StoreWord(bytes, kVersionOffset, RUXD_VERSION);
  StoreWord(bytes, kTimeOffset, static_cast<std::uint32_t>(std::time(nullptr)));
}

void WriteDefinedWords(Bytes& bytes) {
  ByteWriter out(bytes);
  out.Word(static_cast<std::uint32_t>(g_tblPreDefine.size()));
  for (const auto& [name, value] : g_tblPreDefine) {
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

std::uint32_t gccOutputD(const std::string& path) { return WriteMetaD(path); }
