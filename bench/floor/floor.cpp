// What compiling cannot be faster than: reads a script with all its files and writes a file of as
// many bytes as its compiled form has, with plain calls and nothing in between.
//
//   bench_floor FILE BYTES SCRIPT...
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

namespace {

bool Read(const char* path, std::vector<char>& content) {
  const int script = open(path, O_RDONLY);
  struct stat status {};
  if (script < 0 || fstat(script, &status) != 0) return false;
  if (content.size() < static_cast<std::size_t>(status.st_size)) {
    content.resize(static_cast<std::size_t>(status.st_size));
  }
  const bool whole = read(script, content.data(), content.size()) == status.st_size;
  return close(script) == 0 && whole;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) return 2;
  const auto bytes = std::strtoull(argv[2], nullptr, 10);
  std::vector<char> content(bytes);
  for (int i = 3; i < argc; ++i) {
    if (!Read(argv[i], content)) return 1;
  }
  const int file = open(argv[1], O_WRONLY | O_CREAT | O_TRUNC, 0666);
  if (file < 0 || write(file, content.data(), bytes) != static_cast<ssize_t>(bytes)) return 1;
  return close(file) == 0 ? 0 : 1;
}
