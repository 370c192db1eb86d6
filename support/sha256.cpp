#include "support/sha256.h"

#include <sha2.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
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

std::string Sha256Base64(std::string_view bytes) {
  SHA2_CTX context;
  SHA256Init(&context);
  SHA256Update(&context, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  std::array<std::uint8_t, SHA256_DIGEST_LENGTH + 1> digest{};  // a multiple of three bytes
  SHA256Final(digest.data(), &context);
  constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < digest.size(); i += 3) {
    const auto byte = [&](std::size_t n) { return static_cast<unsigned>(digest[i + n]); };
    const unsigned group = byte(0) << 16U | byte(1) << 8U | byte(2);
    for (const unsigned shift : {18U, 12U, 6U, 0U}) text += kDigits[group >> shift & 63U];
  }
  return text.substr(0, text.size() - 1) + '=';  // for the byte that was added
}

}  // namespace rux::support
