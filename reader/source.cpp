#include "reader/source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <string>

#include "reader/texts.h"
#include "ruxcomp/language/paths.h"
#include "support/descriptor.h"

namespace reader {
namespace {

// How much is asked of a file that does not tell its size, at first.
constexpr std::size_t kFirstRead = std::size_t{1} << 16;

// Repeats a system call that a signal interrupted.
template <typename Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result == -1 && errno == EINTR) result = call();
  return result;
}

std::optional<Source> FindFile(const std::string& path) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  return Source{path, {status.st_dev, status.st_ino, 0}, static_cast<std::size_t>(status.st_size)};
}

}  // namespace

std::optional<Source> FindSource(const std::string& path) {
  if (const Texts::Text* text = Texts::Find(path)) {
    return Source{text->path, {0, 0, text->id}, text->bytes.size()};
  }
  return ruxcomp::language::FindByPath(path, FindFile);
}

std::optional<std::string> ReadSource(const Source& source, std::size_t largest) {
  if (source.identity.text != 0) return Texts::Find(source.path)->bytes;
  const rux::support::Descriptor file(
      Uninterrupted([&] { return open(source.path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY); }));
  if (!file.is_open()) return std::nullopt;
  // One byte more than expected shows the end of the file without growing the text.
  std::string text(std::min(source.size > 0 ? source.size : kFirstRead, largest) + 1, '\0');
  std::size_t used = 0;
  while (used <= largest) {
    if (used == text.size()) text.resize(std::min(2 * used, largest + 1));
    const ssize_t count =
        Uninterrupted([&] { return read(file.number(), text.data() + used, text.size() - used); });
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    used += static_cast<std::size_t>(count);
  }
  text.resize(used);
  return text;
}

}  // namespace reader
