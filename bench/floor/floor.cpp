// What compiling cannot be faster than: reads a script and writes a file of as many bytes as its
// compiled form has, with plain calls and nothing in between.
//
//   bench_floor SCRIPT FILE BYTES
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const int script = open(argv[1], O_RDONLY);
  struct stat status {};
  if (script < 0 || fstat(script, &status) != 0) return 1;
  const auto bytes = std::strtoull(argv[3], nullptr, 10);
  std::vector<char> content(std::max<std::size_t>(bytes, static_cast<std::size_t>(status.st_size)));
  if (read(script, content.data(), content.size()) != status.st_size) return 1;
  const int file = open(argv[2], O_WRONLY | O_CREAT | O_TRUNC, 0666);
  if (file < 0 || write(file, content.data(), bytes) != static_cast<ssize_t>(bytes)) return 1;
  return close(file) == 0 ? 0 : 1;
}
