#include "support/sha256.h"

#include <sha2.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace rux::support {

bool IsSha256(std::string_view text) {
  return text.size() == SHA256_DIGEST_STRING_LENGTH - 1 &&
         text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

Sha256::Sha256() { SHA256Init(&context_); }

void Sha256::Add(std::string_view bytes) {
  SHA256Update(&context_, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  size_ += bytes.size();
}

Digest Sha256::End() {
  std::array<char, SHA256_DIGEST_STRING_LENGTH> text;
  return {size_, SHA256End(&context_, text.data())};
}

}  // namespace rux::support
