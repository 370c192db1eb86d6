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

void WriteHeader(Bytes& bytes) {
  bytes.assign(kMagic, kMagic + sizeof(kMagic));
  bytes.resize(RUXD_DATA_OFFSET);
  StoreWord(bytes, kVersionOffset, RUXD_VERSION);
  StoreWord(bytes, kTimeOffset, static_cast<std::uint32_t>(std::time(nullptr)));
}

// A file that is written in pieces: a model comes to many times the bytes of its largest section.
class Sink {
 public:
  explicit Sink(const std::string& path) : file_(path, std::ios::binary | std::ios::trunc) {}
  ~Sink() { Write(); }
  Sink(const Sink&) = delete;
  Sink& operator=(const Sink&) = delete;

  bool is_open() const { return file_.is_open(); }
  Bytes& bytes() { return bytes_; }  // to append to

  void WriteWhenLarge() {
    if (bytes_.size() >= kLarge) Write();
  }

 private:
  static constexpr std::size_t kLarge = std::size_t{256} << 10;

  void Write() {
    file_.write(reinterpret_cast<const char*>(bytes_.data()),
                static_cast<std::streamsize>(bytes_.size()));
    bytes_.clear();
  }

  std::ofstream file_;
  Bytes bytes_;
};

void WriteDefinedWords(Bytes& bytes) {
  ByteWriter out(bytes);
  out.Word(static_cast<std::uint32_t>(g_tblPreDefine.size()));
  for (const auto& [name, value] : g_tblPreDefine) {
    out(name);
    out.Word(value);
  }
}

void WriteSections(Sink& sink) {
  ByteWriter out(sink.bytes());
  out.Word(static_cast<std::uint32_t>(CRUXSection::m_svpHSection.size()));
  for (const std::vector<CRUXSection*>* head : CRUXSection::m_svpHSection) {
    out.Word(static_cast<std::uint32_t>(head->size()));
    for (const CRUXSection* section : *head) {
      out.Nested(*section);
      sink.WriteWhenLarge();
    }
  }
}

}  // namespace

std::uint32_t WriteMetaD(const std::string& path) {
  Sink sink(path);
  if (!sink.is_open()) {
    Report<msg::kCreateDebugFailed>(path);
    return 0;
  }
  WriteHeader(sink.bytes());
  WriteDefinedWords(sink.bytes());
  WriteSections(sink);
  return 1;
}

std::uint32_t gccOutputD(const std::string& path) { return WriteMetaD(path); }
