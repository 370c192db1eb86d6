#include "tests/tool/decompile/round_trip.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "tests/support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

std::string WithoutTime(std::string meta) {
  constexpr std::size_t kTimeOffset = 20;
  if (meta.size() >= kTimeOffset + 4) meta.replace(kTimeOffset, 4, 4, '\0');
  return meta;
}

RoundTrip Take(const TempFolder& folder, const std::string& script_path) {
  std::ostringstream line;
  line << "cd " << fs::path(folder.path()) << " && rux=" << RUX_PROGRAM << " && {"
       << " \"$rux\" compile " << fs::path(script_path) << " -o 1.meta -g 1.metad &&"
       << " \"$rux\" decompile 1.metad -o again.rux &&"
       << " \"$rux\" compile again.rux -o 2.meta -g 2.metad &&"
       << " \"$rux\" decompile 2.metad -o again2.rux; } > messages 2>&1 < /dev/null";
  const int status = std::system(line.str().c_str());
  RoundTrip trip;
  trip.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  trip.messages = folder.Read("messages");
  if (trip.status != 0) return trip;
  trip.meta = WithoutTime(folder.Read("1.meta"));
  trip.meta_again = WithoutTime(folder.Read("2.meta"));
  trip.debug_meta = rux::compiled::ReadDebugMeta(folder / "1.metad");
  trip.debug_meta_again = rux::compiled::ReadDebugMeta(folder / "2.metad");
  trip.script = folder.Read("again.rux");
  trip.script_again = folder.Read("again2.rux");
  return trip;
}

}  // namespace

RoundTrip TakeRoundTrip(const std::string& script_path) { return Take(TempFolder(), script_path); }

RoundTrip TakeRoundTrip(const SourceFiles& files) {
  const TempFolder folder;
  for (const auto& [path, contents] : files) folder.Write(path, contents);
  return Take(folder, files.front().first);
}
