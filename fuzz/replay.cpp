// Runs a fuzz target without libFuzzer, on the files and folders that it is called with.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <string>

#include "fuzz/target.h"

namespace fs = std::filesystem;

namespace {

void Replay(const fs::path& path) {
  std::printf("%s\n", path.c_str());
  std::fflush(stdout);  // the last line of a run that ends in a find
  std::ifstream file(path, std::ios::binary);
  fuzz::Expect(file.good(), "the input can be read");
  const std::string input(std::istreambuf_iterator<char>(file), {});
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

}  // namespace

int main(int count, char** arguments) {
  fuzz::Expect(count > 1, "there is something to replay");
  for (int i = 1; i < count; ++i) {
    if (!fs::is_directory(arguments[i])) {
      Replay(arguments[i]);
      continue;
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(arguments[i])) {
      Replay(entry.path());
    }
  }
}
