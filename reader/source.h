// Where the text of a script comes from: a file, or the table of texts in memory.
#ifndef READER_SOURCE_H_
#define READER_SOURCE_H_

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>

namespace ruxcomp::reader {

// What two names of the same source have in common.
struct SourceIdentity {
  dev_t device;
  ino_t inode;
  std::uint64_t text;  // the id of a text in memory; 0: a file

  bool operator==(const SourceIdentity& other) const { return Fields() == other.Fields(); }
  bool operator<(const SourceIdentity& other) const { return Fields() < other.Fields(); }

 private:
  std::tuple<dev_t, ino_t, std::uint64_t> Fields() const { return {device, inode, text}; }
};

enum class SourceKind {
  kFile,        // or a folder, which cannot be read, or a text in memory
  kOpenStream,  // a pipe or a device that the process has open: standard input, a shell's <(...)
  kStream,      // any other pipe or device: opening it may wait for another process
};

struct Source {
  std::string path;  // the one under which it was found
  SourceIdentity identity;
  std::size_t size;  // as the file says: pipes and system files say 0
  SourceKind kind;
};

// Finds the source of a script at `path` or, when there is none, at `path` with its backslashes
// read as slashes: first among the texts in memory, then in the file system. Does not open the
// file: opening a named pipe that is already being read would wait for another writer. None: the
// reason is in errno.
std::optional<Source> FindSource(const std::string& path);

// The bytes of a source, at most one more than `largest`. None: the reason is in errno, EISDIR for
// a folder.
std::optional<std::string> ReadSource(const Source& source, std::size_t largest);

}  // namespace ruxcomp::reader

#endif  // READER_SOURCE_H_
