// What is in a file of a release, read once: it may change at any time.
#ifndef RELEASE_RELEASED_FILE_H_
#define RELEASE_RELEASED_FILE_H_

#include <cstdint>
#include <optional>
#include <string>

#include "support/sha256.h"

namespace rux::release {

class ReleasedFile {
 public:
  // Throws a Failure when the file cannot be read. Keeps the bytes of a compiled file, and of one
  // that is called like one; others may have any size.
  explicit ReleasedFile(const std::string& path);

  const support::Digest& digest() const { return digest_; }
  // What manifests call the form of a compiled file; empty for any other file.
  const char* form() const;
  // When a compiled file was made; none for any other file. Throws a Failure when it is not sound,
  // or only called like one.
  std::optional<std::uint32_t> CreationTime() const;

 private:
  const std::string path_;
  std::string bytes_;
  bool is_compiled_;  // or called so
  support::Digest digest_;
};

}  // namespace rux::release

#endif  // RELEASE_RELEASED_FILE_H_
