#include "tests/tool/faults/board_folder.h"

#include <cstdlib>
#include <fstream>
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

TemporaryFolder::TemporaryFolder() {
  std::string name = (fs::temp_directory_path() / "rux-faults-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() { fs::remove_all(path_); }

void TemporaryFolder::Fill(const Contents& files) const {
  for (const fs::directory_entry& entry : fs::directory_iterator(path_)) fs::remove_all(entry);
  for (const auto& [name, bytes] : files) std::ofstream(path_ / name, std::ios::binary) << bytes;
}

Contents TemporaryFolder::Read() const {
  Contents files;
  for (const fs::directory_entry& entry : fs::directory_iterator(path_)) {
    std::ifstream stream(entry.path(), std::ios::binary);
    files[entry.path().filename().string()] =
        WithoutTime(std::string(std::istreambuf_iterator<char>(stream), {}));
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
  const TemporaryFolder folder;
  folder.Fill(before);
  const Ended ended = RuxProcess(folder.path(), arguments).Wait();
  if (ended.exit_status != 0) throw std::runtime_error("rux cannot do it at all: " + ended.errors);
  return folder.Read();
}
