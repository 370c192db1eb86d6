#include <cstdint>
#include <cstdio>
#include <string>

#include "ruxcomp/debug.h"
#include "ruxcomp/identifiers.h"
#include "tests/cross/transcript.h"

namespace {

const char* TextOf(const char* text) { return text != nullptr ? text : "none"; }

}  // namespace

void PrintDebugAnswers(const std::string& metad) {
  tagMETAFILEINFO info = {};
  std::printf("gdInit %u", gdInit(metad, &info));
  std::printf(", version %08X, time %u\n", info.version, info.creationTime);
  for (std::uint32_t kind = RUX_SECT_MORVRUX; kind <= RUX_SECT_INCLUDE; ++kind) {
    for (std::uint32_t i = 0; const GDSECTION section = gdGetSectByIndex(kind, i); ++i) {
      std::printf(" section %08X %u: %s", kind, i, TextOf(gdGetSectName(section)));
      std::printf(", %s", TextOf(gdGetSectPName(section)));
      std::printf(", %u", gdGetSectID(section));
      std::printf("/%u\n", gdGetLastError());
      for (std::uint32_t j = 0; const GDENTRY entry = gdGetEntryByIndex(section, j); ++j) {
        std::printf("  %s = %s\n", gdGetEntryName(entry), gdGetValue(entry).c_str());
      }
    }
    std::printf(" the last of %08X: %u\n", kind, gdGetLastError());
  }
  gdUnInit();
}
