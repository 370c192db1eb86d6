#include "fuzz/scratch_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz/target.h"

namespace fs = std::filesystem;

namespace fuzz {

ScratchFolder::ScratchFolder() : folder_(fs::temp_directory_path() / "rux-fuzz-XXXXXX") {
  Expect(mkdtemp(folder_.data()) != nullptr, "the folder of temporary files can be written");
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

void ScratchFolder::Write(const std::string& name, std::string_view bytes) const {
  std::ofstream file(Path(name), std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  Expect(file.flush().good(), "the input can be written");
}

std::string ScratchFolder::Read(const std::string& name) const {
  std::ifstream file(Path(name), std::ios::binary);
  Expect(file.good(), "what was written can be read");
  return {std::istreambuf_iterator<char>(file), {}};
}

void ScratchFolder::Remove(const std::string& name) const { fs::remove(Path(name)); }

}  // namespace fuzz
