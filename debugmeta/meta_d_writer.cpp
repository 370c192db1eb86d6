#include <ctime>
#include <fstream>

#include "backend/words.h"
#include "debugmeta/bytes.h"
#include "debugmeta/messages.h"
#include "debugmeta/meta_d_file.h"
#include "debugmeta/meta_d_format.h"
#include "frontend/predefine.h"
#include "frontend/report.h"
#include "frontend/section.h"
#include "ruxcomp/compile.h"
#include "ruxcomp/data.h"

extern "C" {
const std::uint32_t RUXD_VERSION = 0x01000000;
const std::uint32_t RUXD_DATA_OFFSET = 0x80;
}

namespace {

using namespace meta_d_format;

Bytes Header() {
  Bytes header(kMagic, kMagic + sizeof(kMagic));
  header.resize(RUXD_DATA_OFFSET);
  StoreWord(header, kVersionOffset, RUXD_VERSION);
  StoreWord(header, kTimeOffset, static_cast<std::uint32_t>(std::time(nullptr)));
  return header;
}

void WriteDefinedWords(ByteWriter& out) {
  out.Word(static_cast<std::uint32_t>(g_tblPreDefine.size()));
  for (const auto& [name, value] : g_tblPreDefine) {
    out(name);
    out.Word(value);
  }
}

void WriteSections(ByteWriter& out) {
  out.Word(static_cast<std::uint32_t>(CRUXSection::m_svpHSection.size()));
  Bytes record;
  for (const std::vector<CRUXSection*>* head : CRUXSection::m_svpHSection) {
    out.Word(static_cast<std::uint32_t>(head->size()));
    for (const CRUXSection* section : *head) {
      section->GetBuffer(record);
      out.Nested(record);
    }
  }
}

}  // namespace

std::uint32_t WriteMetaD(const std::string& path) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  if (!file) {
    Report<msg::kCreateDebugFailed>(path);
    return 0;
  }
  Bytes image = Header();
  ByteWriter out(image);
  WriteDefinedWords(out);
  WriteSections(out);
  file.write(reinterpret_cast<const char*>(image.data()),
             static_cast<std::streamsize>(image.size()));
  return 1;
}

std::uint32_t gccOutputD(const std::string& path) { return WriteMetaD(path); }
