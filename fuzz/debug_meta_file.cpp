// gdInit on arbitrary bytes, then every debug query. A file that the decoder, who knows nothing of
// the library, finds sound must load, and hold what it says.
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

#include "compiled/debug_meta.h"
#include "fuzz/loaded.h"
#include "fuzz/target.h"
#include "query/process_state.h"
#include "ruxcomp/debug.h"
#include "ruxcomp/file/fault.h"
#include "ruxcomp/identifiers.h"
#include "ruxcomp/records.h"
#include "tests/support/temp_folder.h"

namespace {

using fuzz::Expect;

void AskForEntries(GDSECTION section) {
  std::uint32_t ordinal = 0;
  while (GDENTRY entry = gdGetEntryByIndex(section, ordinal++)) {
    Expect(gdGetEntryName(entry) != nullptr, "every entry has a name");
    gdGetValue(entry);
  }
  gdGetEntryByIndex(section, 0xFFFFFFFF);
}

void AskForTexts(GDSECTION section) {
  if (const char* name = gdGetSectName(section)) static_cast<void>(std::strlen(name));
  if (const char* parent = gdGetSectPName(section)) static_cast<void>(std::strlen(parent));
  try {
    gdGetSectID(section);
  } catch (const std::out_of_range&) {
    // A number without a digit.
  }
}

void AskForSections(std::uint32_t kind) {
  std::uint32_t ordinal = 0;
  while (GDSECTION section = gdGetSectByIndex(kind, ordinal++)) {
    AskForTexts(section);
    AskForEntries(section);
  }
  gdGetSectByIndex(kind, 0xFFFFFFFF);
}

void AskEverything() {
  for (std::uint32_t kind = RUX_SECT_MORVRUX - 1; kind <= RUX_SECT_INCLUDE; ++kind) {
    AskForSections(kind);
  }
  AskForTexts(nullptr);
  AskForEntries(nullptr);
  Expect(gdGetLastError() == RUX_ERROR_NO_SECTION, "the last error says that there is no section");
  gdGetEntryName(nullptr);
  gdGetValue(nullptr);
}

// Returns 0 also when the library threw at the end of a record.
std::uint32_t Load(const std::string& path, tagMETAFILEINFO& info) {
  try {
    return gdInit(path, &info);
  } catch (const std::out_of_range& error) {
    Expect(std::strcmp(error.what(), "vector") == 0, "a short record raises \"vector\"");
    return 0;
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TempFolder folder;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  folder.Write("metad", bytes);
  rux::compiled::Faults faults;
  const rux::compiled::DebugMeta meta = rux::compiled::DecodeDebugMeta(bytes, faults);

  tagMETAFILEINFO info{};
  const std::uint32_t loaded = Load(folder / "metad", info);
  if (faults.empty() && fuzz::CanBeLoaded(meta)) {
    Expect(loaded == 1, "a sound file can be loaded");
    Expect(info.version == meta.version && info.creationTime == meta.creation_time,
           "version and creation time are those of the file");
    fuzz::ExpectLoaded(meta);
  }
  AskEverything();  // also of what a damaged file left behind
  gdUnInit();
  ruxcomp::core::ResetProcessState();
  return 0;
}
