// Checks, compiles and loads a model of many devices and asks for each by its ID: a program for
// callgrind, which counts the instructions that this takes.
//
//   colliding_ids colliding|different
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "ruxcomp/ruxcomp.h"
#include "tests/support/colliding.h"
#include "tests/support/host.h"
#include "tests/support/temp_folder.h"

namespace {

constexpr std::size_t kDevices = 16384;

std::vector<std::uint32_t> Ids(const std::string& which) {
  if (which == "colliding") return CollidingNumbers(kDevices);
  std::vector<std::uint32_t> ids;
  for (std::uint32_t i = 0; i < kDevices; ++i) ids.push_back(100000000 + i);
  return ids;
}

std::string Script(const std::vector<std::uint32_t>& ids) {
  std::string script;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    script += "[DEVICE]\nNAME = D" + std::to_string(i) + "\nID = " + std::to_string(ids[i]) +
              "\nINITFLAG = 0\nCONTROLMASK = 0\n";
  }
  return script;
}

bool Compile(const TempFolder& folder, const std::string& script) {
  const std::string path = folder.Write("board.rux", script);
  const bool compiled = gccCompStart(path) && gccParse() && gccCheck() && gccOutput(path + ".meta");
  gccCompEnd();
  host::TakeMessages();
  return compiled;
}

}  // namespace

int main(int, char** arguments) {
  const TempFolder folder;
  const std::vector<std::uint32_t> ids = Ids(arguments[1]);
  if (!Compile(folder, Script(ids)) || !gcInit(folder / "board.rux.meta")) return 1;
  for (const std::uint32_t id : ids) {
    if (!gcGetSectByID(RUX_SECT_DEVICE, id)) return 1;
  }
  gcUnInit();
  return 0;
}
