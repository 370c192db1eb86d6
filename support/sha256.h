// SHA-256, also of what comes in pieces.
#ifndef SUPPORT_SHA256_H_
#define SUPPORT_SHA256_H_

#include <sha2.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace rux::support {

struct Digest {
  std::uint64_t bytes = 0;  // how many there are
  std::string sha256;       // 64 hexadecimal digits, in lower case
};

// Whether a text is what a digest has.
bool IsSha256(std::string_view text);

class Sha256 {
 public:
  Sha256();
  void Add(std::string_view bytes);
  // Of all that was added. To be called once.
  Digest End();

 private:
  SHA2_CTX context_;
  std::uint64_t size_ = 0;
};

// Of bytes in memory, as content security policies name it: in Base64.
std::string Sha256Base64(std::string_view bytes);

}  // namespace rux::support

#endif  // SUPPORT_SHA256_H_
