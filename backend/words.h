// 32-bit words as they stand in the files: four bytes, least significant first.
#ifndef BACKEND_WORDS_H_
#define BACKEND_WORDS_H_

#include <cstddef>
#include <cstdint>

// Bytes is a growable array of bytes: a string or a vector.
template <class Bytes>
void StoreWord(Bytes& bytes, std::size_t offset, std::uint32_t word) {
  for (std::size_t i = 0; i < 4; ++i) {
    bytes[offset + i] = static_cast<typename Bytes::value_type>(word >> (8 * i));
  }
}

template <class Bytes>
void AppendWord(Bytes& bytes, std::uint32_t word) {
  bytes.resize(bytes.size() + 4);
  StoreWord(bytes, bytes.size() - 4, word);
}

inline std::uint32_t LoadWord(const void* at) {
  const auto* byte = static_cast<const unsigned char*>(at);
  return byte[0] | std::uint32_t{byte[1]} << 8 | std::uint32_t{byte[2]} << 16 |
         std::uint32_t{byte[3]} << 24;
}

#endif  // BACKEND_WORDS_H_
