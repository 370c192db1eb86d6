#include "tests/damage/loads.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "ruxcomp/debug.h"
#include "ruxcomp/query.h"

namespace {

// Reads every character, so that a text which is none shows.
std::size_t Touch(const char* text) { return text ? std::strlen(text) : 0; }
void Touch(const tagTBLDATA& data) {
  if (data.kind == RUX_DATA_STRING) Touch(data.data.string);
}

void AskValues(GCENTRY entry) {
  const std::uint32_t count = gcGetValueCount(entry);
  for (std::uint32_t i = 0; i <= count; ++i) Touch(gcGetValueByIndex(entry, i));
  for (std::uint32_t base = 0; base <= RUX_SELECT_TEXT_104; base += 0x10000) {
    for (std::uint32_t i = 0; i <= 8; ++i) Touch(gcGetValueByID(entry, base + i));
  }
}

void AskSection(GCSECTION section) {
  const std::uint32_t count = gcGetEntryCount(section);
  for (std::uint32_t i = 0; i < count; ++i) {
    std::uint32_t identifier = 0;
    AskValues(gcGetEntryByIndex(section, i, &identifier));
    gcGetEntryByType(section, identifier);
  }
  gcGetEntryByIndex(section, count, nullptr);
  gcGetEntryByName(section, "RAW", nullptr);
}

void AskMeta() {
  for (std::uint32_t kind = 0x01000000; kind <= 0x0100000F; ++kind) {
    const std::uint32_t count = gcGetSectCount(kind);
    for (std::uint32_t i = 0; i < count; ++i) AskSection(gcGetSectByIndex(kind, i));
    gcGetSectByIndex(kind, count);
    gcGetSectByID(kind, 16);
    gcGetSectByName(kind, "FAN");
  }
  gcGetGroupIndex("BOARD");
  gcGetGroupIndex("0");
  std::uint8_t cells[RUX_TABLE_CELLS];
  for (std::uint32_t i = 0; gcGetTableData(i, cells); ++i) {
  }
  gcGetTableData(0xFFFFFFFF, cells);
}

// An ID that has no character to look at raises its own error.
void AskId(GDSECTION section) {
  try {
    gdGetSectID(section);
  } catch (const std::out_of_range&) {
  }
}

void AskDebugMeta() {
  for (std::uint32_t kind = 0; kind <= 0xF; ++kind) {
    std::uint32_t i = 0;
    for (; const GDSECTION section = gdGetSectByIndex(kind, i); ++i) {
      Touch(gdGetSectName(section));
      Touch(gdGetSectPName(section));
      AskId(section);
      for (std::uint32_t j = 0; const GDENTRY entry = gdGetEntryByIndex(section, j); ++j) {
        Touch(gdGetEntryName(entry));
        gdGetValue(entry);
      }
    }
  }
}

// Also when a load raises an error.
struct ReleaseAtEnd {
  ~ReleaseAtEnd() {
    gcUnInit();
    gdUnInit();
  }
};

Load LoadDebugMeta(const std::string& path) {
  try {
    return gdInit(path) ? Load::kAccepted : Load::kRefused;
  } catch (const std::out_of_range& raised) {
    if (std::strcmp(raised.what(), "vector") != 0) throw;
    return Load::kRaised;
  }
}

}  // namespace

Load LoadFile(Form form, const std::string& path) {
  const ReleaseAtEnd release;
  if (form == Form::kMeta) {
    const bool loaded = gcInit(path) != 0;
    AskMeta();
    return loaded ? Load::kAccepted : Load::kRefused;
  }
  const Load outcome = LoadDebugMeta(path);
  AskDebugMeta();
  return outcome;
}
