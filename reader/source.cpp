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
#include <string_view>

#include "reader/texts.h"
#include "ruxcomp/file/uninterrupted.h"
#include "ruxcomp/language/paths.h"
#include "support/descriptor.h"

namespace ruxcomp::reader {
namespace {

// The first read of a file of unknown size.
constexpr std::size_t kFirstRead = std::size_t{1} << 16;

// Whether the path names a descriptor of this process.
bool NamesDescriptor(std::string_view path) {
  return path == "/dev/stdin" || path.rfind("/dev/fd/", 0) == 0 ||
         path.rfind("/proc/self/fd/", 0) == 0;
}

SourceKind KindOf(const std::string& path, mode_t mode) {
  if (S_ISREG(mode) || S_ISDIR(mode)) return SourceKind::kFile;
  return NamesDescriptor(path) ? SourceKind::kOpenStream : SourceKind::kStream;
}

std::optional<Source> FindFile(const std::string& path) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  return Source{path,
                {status.st_dev, status.st_ino, 0},
                static_cast<std::size_t>(status.st_size),
                KindOf(path, status.st_mode)};
}

// Never waits, except for the writer of a pipe when the caller wants that. Reading may wait.
int OpenForReading(const Source& source) {
  const bool may_wait = source.kind == SourceKind::kStream;
  const int flags = O_RDONLY | O_CLOEXEC | O_NOCTTY;
  const int file = ruxcomp::file::Uninterrupted(
      [&] { return open(source.path.c_str(), may_wait ? flags : flags | O_NONBLOCK); });
  if (file >= 0 && source.kind == SourceKind::kOpenStream) fcntl(file, F_SETFL, flags);
  return file;
}

}  // namespace

std::optional<Source> FindSource(const std::string& path) {
  if (const Texts::Text* text = Texts::Find(path)) {
    return Source{text->path, {0, 0, text->id}, text->bytes.size(), SourceKind::kFile};
  }
  if (Texts::AreFilesReplaced()) {
    errno = ENOENT;
    return std::nullopt;
  }
  return ruxcomp::language::FindByPath(path, FindFile);
}

std::optional<std::string> ReadSource(const Source& source, std::size_t largest) {
  if (source.identity.text != 0) return Texts::Find(source.path)->bytes;
  const rux::support::Descriptor file(OpenForReading(source));
  if (!file.is_open()) return std::nullopt;
  // Asking for one byte more than expected shows the end of the file without growing the text.
  std::string text(std::min(source.size > 0 ? source.size : kFirstRead, largest) + 1, '\0');
  std::size_t used = 0;
  while (used <= largest) {
    if (used == text.size()) text.resize(std::min(2 * used, largest + 1));
    const ssize_t count = ruxcomp::file::Uninterrupted(
        [&] { return read(file.number(), text.data() + used, text.size() - used); });
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    used += static_cast<std::size_t>(count);
  }
  text.resize(used);
  return text;
}

}  // namespace ruxcomp::reader
