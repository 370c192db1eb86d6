#include "tests/tool/decompile/round_trip.h"

#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

class Folder {
 public:
  Folder() {
    std::string name = (fs::temp_directory_path() / "rux-round-trip-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
    path_ = name;
  }
  ~Folder() { fs::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  const fs::path& path() const { return path_; }

  void Write(const std::string& name, const std::string& contents) const {
    fs::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << contents;
  }

  std::string Read(const std::string& name) const {
    std::ifstream stream(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

 private:
  fs::path path_;
};

std::string WithoutTime(std::string meta) {
  constexpr std::size_t kTimeOffset = 20;
  if (meta.size() >= kTimeOffset + 4) meta.replace(kTimeOffset, 4, 4, '\0');
  return meta;
}

RoundTrip Take(const Folder& folder, const std::string& script_path) {
  std::ostringstream line;
  line << "cd " << folder.path() << " && rux=" << RUX_PROGRAM << " && {"
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
  trip.debug_meta = rux::compiled::ReadDebugMeta(folder.path() / "1.metad");
  trip.debug_meta_again = rux::compiled::ReadDebugMeta(folder.path() / "2.metad");
  trip.script = folder.Read("again.rux");
  trip.script_again = folder.Read("again2.rux");
  return trip;
}

}  // namespace

RoundTrip TakeRoundTrip(const std::string& script_path) { return Take(Folder(), script_path); }

RoundTrip TakeRoundTrip(const SourceFiles& files) {
  const Folder folder;
  for (const auto& [path, contents] : files) folder.Write(path, contents);
  return Take(folder, files.front().first);
}
