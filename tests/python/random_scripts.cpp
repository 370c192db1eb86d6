// Writes random scripts that the check accepts: FOLDER/0/main.rux, FOLDER/1/main.rux, ... with what
// they include.
//
//   random_scripts COUNT FOLDER
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/generators/random_layout.h"
#include "tests/generators/random_script.h"
#include "tests/generators/source_files.h"

namespace {

namespace fs = std::filesystem;

void Write(std::uint32_t seed, const fs::path& folder) {
  Random random(seed);
  std::vector<RandomSection> sections = RandomScript(random);
  const SourceFiles files = RandomLayout(random, sections);
  for (const auto& [path, text] : files) {
    const fs::path file = folder / (path == files.front().first ? "main.rux" : path);
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::fputs("usage: random_scripts COUNT FOLDER\n", stderr);
    return 2;
  }
  const auto scripts = static_cast<std::uint32_t>(std::strtoul(arguments[1], nullptr, 10));
  for (std::uint32_t i = 0; i < scripts; ++i) Write(i, fs::path(arguments[2]) / std::to_string(i));
  return 0;
}
