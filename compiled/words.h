// Words and texts where they stand in a compiled file.
#ifndef COMPILED_WORDS_H_
#define COMPILED_WORDS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace rux::compiled {

inline constexpr std::size_t kWordSize = 4;

// All numbers of compiled files are unsigned 32-bit words, least significant byte first.
inline std::uint32_t LoadWord(const char* bytes) {
  // Written out, for the compiler to see that it is one load.
  const auto byte = [bytes](std::size_t i) {
    return std::uint32_t{static_cast<unsigned char>(bytes[i])};
  };
  return byte(0) | byte(1) << 8 | byte(2) << 16 | byte(3) << 24;
}

inline void StoreWord(std::uint32_t word, char* bytes) {
  for (std::size_t i = 0; i < kWordSize; ++i) bytes[i] = static_cast<char>(word >> (8 * i) & 0xFF);
}

// Words one behind the other. Valid as long as the bytes are.
class Words {
 public:
  Words() = default;
  explicit Words(std::string_view bytes) : bytes_(bytes) {}

  std::size_t size() const { return bytes_.size() / kWordSize; }
  bool empty() const { return bytes_.empty(); }
  std::uint32_t operator[](std::size_t i) const { return LoadWord(&bytes_[i * kWordSize]); }

 private:
  std::string_view bytes_;
};

// Texts one behind the other, each with its length before it. Valid as long as the bytes are.
class Texts {
 public:
  Texts() = default;
  // The bytes must hold whole texts.
  explicit Texts(std::string_view bytes) : bytes_(bytes) {}

  // Calls use(text) for each, in order.
  template <class Use>
  void ForEach(Use use) const {
    for (std::string_view rest = bytes_; !rest.empty();) {
      const std::size_t length = LoadWord(rest.data());
      use(rest.substr(kWordSize, length));
      rest.remove_prefix(kWordSize + length);
    }
  }
  std::size_t size() const {
    std::size_t count = 0;
    ForEach([&](std::string_view) { ++count; });
    return count;
  }
  // The first one, of at least one.
  std::string_view front() const { return bytes_.substr(kWordSize, LoadWord(bytes_.data())); }

 private:
  std::string_view bytes_;
};

}  // namespace rux::compiled

#endif  // COMPILED_WORDS_H_
