// 32-bit words as they stand in the files: four bytes, least significant first.
#ifndef BACKEND_WORDS_H_
#define BACKEND_WORDS_H_

#include <cstddef>
#include <cstdint>
#include <initializer_list>

template <class Byte>
void StoreWord(Byte* at, std::uint32_t word) {
  at[0] = static_cast<Byte>(word);
  at[1] = static_cast<Byte>(word >> 8);
  at[2] = static_cast<Byte>(word >> 16);
  at[3] = static_cast<Byte>(word >> 24);
}

// Bytes is a growable array of bytes: a string or a vector.
template <class Bytes>
void StoreWord(Bytes& bytes, std::size_t offset, std::uint32_t word) {
  StoreWord(&bytes[offset], word);
}

// Several words at once cost no more than one.
template <class Bytes>
void AppendWords(Bytes& bytes, std::initializer_list<std::uint32_t> words) {
  const std::size_t start = bytes.size();
  bytes.resize(start + 4 * words.size());
  auto* at = &bytes[start];
  for (const std::uint32_t word : words) {
    StoreWord(at, word);
    at += 4;
  }
}

template <class Bytes>
void AppendWord(Bytes& bytes, std::uint32_t word) {
  AppendWords(bytes, {word});
}

inline std::uint32_t LoadWord(const void* at) {
  const auto* byte = static_cast<const unsigned char*>(at);
  return byte[0] | std::uint32_t{byte[1]} << 8 | std::uint32_t{byte[2]} << 16 |
         std::uint32_t{byte[3]} << 24;
}

#endif  // BACKEND_WORDS_H_
