// SHA-256 of files.
#ifndef SUPPORT_SHA256_H_
#define SUPPORT_SHA256_H_

#include <cstdint>
#include <string>

namespace rux::support {

struct FileDigest {
  std::uint64_t bytes;  // how many the file has
  std::string sha256;   // 64 hexadecimal digits, in lower case
};

// Reads the file piece by piece, whatever size it has. Throws a Failure.
FileDigest DigestOf(const std::string& path);

}  // namespace rux::support

#endif  // SUPPORT_SHA256_H_
