#include "support/sha256.h"

#include <sha2.h>
#include <sys/types.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string>

#include "support/descriptor.h"
#include "support/failure.h"
#include "support/input_file.h"

namespace rux::support {

FileDigest DigestOf(const std::string& path) {
  const Descriptor file = OpenInput(path);
  FileDigest digest{0, {}};
  SHA2_CTX context;
  SHA256Init(&context);
  std::array<std::uint8_t, std::size_t{1} << 16> piece;
  while (true) {
    const ssize_t count = read(file.number(), piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) throw SystemFailure("cannot load", path);
    if (count == 0) break;
    SHA256Update(&context, piece.data(), static_cast<std::size_t>(count));
    digest.bytes += static_cast<std::uint64_t>(count);
  }
  std::array<char, SHA256_DIGEST_STRING_LENGTH> text;
  digest.sha256 = SHA256End(&context, text.data());
  return digest;
}

}  // namespace rux::support
