#include <fstream>

#include "debugmeta/meta_d_file.h"
#include "frontend/parse.h"
#include "frontend/section.h"
#include "ruxcomp/compile.h"
#include "tests/findings/cases.h"
#include "tests/support/host.h"

using namespace ruxcomp::core;

namespace {

constexpr char kNowhere[] = "/nowhere/board.metad";

void Write(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

CRUXSection& NewSection(const char* keyword) {
  CRUXSection& section = *CRUXSection::Create("board.rux", keyword, 7);
  section.script = 1;
  section.ordinal = 2;
  return section;
}

void ParseWithoutSectionNames(const std::string& folder) {
  Write(folder + "/board.rux", "[PROPERTY]\n");
  plugin::SetLookup([](void* handle) {
    plugin::Operations operations = plugin::ExportedOperations(handle);
    operations.get_sect_info = [](void*, char*, std::uint32_t*, std::uint32_t*) -> std::uint32_t {
      return 0;
    };
    return operations;
  });
  gccCompStart(folder + "/board.rux");
  gccParse();
  plugin::SetLookup(nullptr);
}

void LoadWithoutPlugin(const std::string&) {
  host::SetPlugin("");
  const CRUXParse parse;
  host::SetPlugin(RUX_BUILT_PLUGIN);
}

void FillEntryOfUnknownType(const std::string&) {
  CGESTRING(0x10990001, 1).Init("board.rux", InternedString("NAME"), "x", 3, {1, 2, 3});
}

void CheckEntryOfAnotherType(const std::string&) {
  CGESTRING entry(0x10080001, 10);
  entry.Init("board.rux", InternedString("G_A"), "x", 8, {1, 2, 3});
  entry.IsValid(NewSection("GLOBAL"), kWholeModel);
}

void ReadDebugMeta(const std::string& folder, const std::string& content) {
  Write(folder + "/board.metad", content);
  ReadMetaD(folder + "/board.metad", nullptr);
}

}  // namespace

const std::vector<ModelCase>& ModelCases() {
  static const std::vector<ModelCase> cases = {
      {"no plug-in",
       LoadWithoutPlugin,
       {"ReaderNotLoaded(/usr/pelm/lib/libruxrsparser.so.0) at -"}},
      {"no section name", ParseWithoutSectionNames, {"UnreadableSectionName(1, 0) at 0/0"}},
      {"unknown payload type", FillEntryOfUnknownType, {"EntryWithoutPayload(278462465) at 1/2/3"}},
      {"another payload type",
       CheckEntryOfAnotherType,
       {"InvalidEntryType(board.rux, 8, GLOBAL, G_A) in board.rux:8 at 1/2/3"}},
      {"unknown section type",
       [](const std::string&) {
         NewSection("PROPERTY").identifier = 0x20000099;
         gccCheck();
       },
       {"InvalidSectionType(board.rux, 7, PROPERTY) in board.rux:7 at 1/2"}},
      {"another section name",
       [](const std::string&) {
         NewSection("PROPERTY").name = "Property";
         gccCheck();
       },
       {"InvalidSectionName(board.rux, 7, Property) in board.rux:7 at 1/2"}},
      {"debug meta file not created",
       [](const std::string&) { WriteMetaD(kNowhere); },
       {"DebugMetaNotCreated(/nowhere/board.metad) at -"}},
      {"debug meta file not opened",
       [](const std::string&) { ReadMetaD(kNowhere, nullptr); },
       {"DebugMetaNotOpened(/nowhere/board.metad) at -"}},
      {"not a debug meta file",
       [](const std::string& folder) { ReadDebugMeta(folder, "x"); },
       {"DebugMetaInvalid(FOLDER/board.metad) at -"}},
      {"another version",
       [](const std::string& folder) {
         ReadDebugMeta(folder, std::string("MORV RUX metaD.\0\1\0\0\0", 20));
       },
       {"DebugMetaVersion(FOLDER/board.metad) at -"}},
  };
  return cases;
}
