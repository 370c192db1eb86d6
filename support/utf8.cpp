#include "support/utf8.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace rux::support {
namespace {

constexpr std::size_t kLongest = 4;  // bytes of a character
constexpr std::size_t kStep = 256;

// Zero when the text does not begin with a character.
std::size_t Decode(std::string_view text, std::int32_t& code) {
  const auto* const bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  const std::size_t size = std::min(text.size(), kLongest);
  const auto used = utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(size), &code);
  return used > 0 ? static_cast<std::size_t>(used) : 0;
}

// How many bytes, of a text that does not begin with a character, could begin one if it went on.
std::size_t BrokenSize(std::string_view text) {
  for (std::size_t size = std::min(text.size(), kLongest - 1); size > 1; --size) {
    std::string whole(text.substr(0, size));
    std::int32_t code;
    while (whole.size() < kLongest) {
      whole += '\x80';
      if (Decode(whole, code) == whole.size()) return size;
    }
  }
  return 1;
}

}  // namespace

std::size_t Character::Width() const { return static_cast<std::size_t>(utf8proc_charwidth(code)); }

Character FirstCharacter(std::string_view text) {
  if (static_cast<unsigned char>(text.front()) < 0x80) return {text.substr(0, 1), text.front()};
  std::int32_t code;
  if (const std::size_t size = Decode(text, code); size > 0) return {text.substr(0, size), code};
  return {text.substr(0, BrokenSize(text)), Character::kNone};
}

Character LastCharacter(std::string_view text) {
  for (std::size_t size = 1; size <= std::min(text.size(), kLongest); ++size) {
    const std::string_view end = text.substr(text.size() - size);
    std::int32_t code;
    if (Decode(end, code) == size) return {end, code};
  }
  return {text.substr(text.size() - 1), Character::kNone};
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const Character character = FirstCharacter(text);
    if (!character.is_valid()) return false;
    text.remove_prefix(character.bytes.size());
  }
  return true;
}

CharacterCounts::CharacterCounts(std::string_view text) : text_(text) {
  steps_.reserve(text.size() / kStep + 1);
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++count) {
    if (at / kStep >= steps_.size()) steps_.push_back({at, count});
    at += FirstCharacter(text.substr(at)).bytes.size();
  }
  if (steps_.empty()) steps_.push_back({0, 0});
}

std::size_t CharacterCounts::Before(std::size_t at) const {
  // The character that a stretch begins in belongs to the stretch before.
  std::size_t step = std::min(at / kStep, steps_.size() - 1);
  if (steps_[step].begin > at) --step;
  std::size_t count = steps_[step].before;
  for (std::size_t begin = steps_[step].begin; begin < at; ++count) {
    begin += FirstCharacter(text_.substr(begin)).bytes.size();
  }
  return count;
}

}  // namespace rux::support
