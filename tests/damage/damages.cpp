#include "tests/damage/damages.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace {

constexpr std::size_t kMostBytesForBits = 4096;
constexpr std::size_t kWordSize = 4;

// None and one, the largest signed number and what follows it, the largest two, and two lengths
// that just reach and just miss the end of the file.
using Words = std::array<std::uint32_t, 8>;
Words ExtremesFor(const std::string& file) {
  const auto size = static_cast<std::uint32_t>(file.size());
  return {0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF, size, size + 1};
}

std::size_t CountOf(const std::string& file, Damage damage) {
  switch (damage) {
    case Damage::kCut:
      return file.size();
    case Damage::kBit:
      return std::min(file.size(), kMostBytesForBits) * 8;
    case Damage::kWord:
      return file.size() / kWordSize * Words().size();
  }
  return 0;
}

}  // namespace

Damages::Damages(std::string file, Damage damage)
    : file_(std::move(file)), damage_(damage), size_(CountOf(file_, damage)) {}

std::string Damages::At(std::size_t i) const {
  std::string bytes = file_;
  switch (damage_) {
    case Damage::kCut:
      bytes.resize(i);
      break;
    case Damage::kBit:
      bytes[i / 8] = static_cast<char>(bytes[i / 8] ^ (1 << i % 8));
      break;
    case Damage::kWord: {
      const std::uint32_t word = ExtremesFor(file_)[i % Words().size()];
      for (std::size_t byte = 0; byte < kWordSize; ++byte) {
        bytes[i / Words().size() * kWordSize + byte] = static_cast<char>(word >> 8 * byte);
      }
    }
  }
  return bytes;
}

std::string Damages::Name(std::size_t i) const {
  switch (damage_) {
    case Damage::kCut:
      return "cut to " + std::to_string(i) + " bytes";
    case Damage::kBit:
      return "byte " + std::to_string(i / 8) + ", bit " + std::to_string(i % 8) + " flipped";
    case Damage::kWord:
      return "word at " + std::to_string(i / Words().size() * kWordSize) + " set to " +
             std::to_string(ExtremesFor(file_)[i % Words().size()]);
  }
  return "";
}
