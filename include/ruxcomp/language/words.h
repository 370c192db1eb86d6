// 32-bit words as both compiled files store them: four bytes, least significant first.
#ifndef RUXCOMP_LANGUAGE_WORDS_H_
#define RUXCOMP_LANGUAGE_WORDS_H_

#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace ruxcomp::language {

inline constexpr std::size_t kWordSize = sizeof(std::uint32_t);

inline std::uint32_t LoadWord(const void* at) noexcept {
  const auto* byte = static_cast<const unsigned char*>(at);
  return byte[0] | std::uint32_t{byte[1]} << 8 | std::uint32_t{byte[2]} << 16 |
         std::uint32_t{byte[3]} << 24;
}

template <class Byte>
void StoreWord(Byte* at, std::uint32_t word) noexcept {
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

// Several words at once cost little more than one.
template <class Bytes>
void AppendWords(Bytes& bytes, const std::uint32_t* first, std::size_t count) {
  const std::size_t start = bytes.size();
  bytes.resize(start + kWordSize * count);
  auto* at = bytes.data() + start;
  for (std::size_t i = 0; i < count; ++i) StoreWord(at + i * kWordSize, first[i]);
}
template <class Bytes>
void AppendWords(Bytes& bytes, std::initializer_list<std::uint32_t> words) {
  AppendWords(bytes, words.begin(), words.size());
}

template <class Bytes>
void AppendWord(Bytes& bytes, std::uint32_t word) {
  AppendWords(bytes, {word});
}

}  // namespace ruxcomp::language

#endif  // RUXCOMP_LANGUAGE_WORDS_H_
