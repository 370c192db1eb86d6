#include "tests/tool/faults/board_folder.h"

#include <filesystem>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

std::string WithoutTime(std::string bytes) {
  constexpr std::size_t kTimeOffset = 20;
  if (bytes.rfind("MORV RUX meta", 0) == 0) bytes.replace(kTimeOffset, 4, 4, '\0');
  return bytes;
}

}  // namespace

void DropTemporaryNames(Contents& files) {
  for (auto file = files.begin(); file != files.end();) {
    file = file->first.rfind(".rux-", 0) == 0 ? files.erase(file) : std::next(file);
  }
}

void Fill(const TempFolder& folder, const Contents& files) {
  for (const fs::directory_entry& entry : fs::directory_iterator(folder.path())) {
    fs::remove_all(entry);
  }
  for (const auto& [name, bytes] : files) folder.Write(name, bytes);
}

Contents ContentsOf(const TempFolder& folder) {
  Contents files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder.path())) {
    const std::string name = entry.path().filename().string();
    files[name] = WithoutTime(folder.Read(name));
  }
  return files;
}

Contents Scripts() {
  return {{"board.rux",
           "[DEFINE]\nONE = 1\n[INCLUDE]\nFILE = words.rux\n[MORVRUX]\nVERSION = 1\n"
           "[PELMGROUP]\nNAME = ALL\nID = GROUP_ID\nPID = 0\nSENSORS =\n"},
          {"words.rux", "[DEFINE]\nGROUP_ID = 7\n"}};
}

Contents Done(const Contents& before, const Arguments& arguments) {
  const TempFolder folder;
  Fill(folder, before);
  const Ended ended = RuxProcess(folder.path(), arguments).Wait();
  if (ended.exit_status != 0) throw std::runtime_error("rux cannot do it at all: " + ended.errors);
  return ContentsOf(folder);
}
