#include "support/character_counts.h"

#include <algorithm>

#include "support/safe_text.h"

namespace rux::support {
namespace {

constexpr std::size_t kStep = 256;

std::size_t Characters(std::string_view text) {
  return text.size() -
         static_cast<std::size_t>(std::count_if(text.begin(), text.end(), IsInsideCharacter));
}

}  // namespace

CharacterCounts::CharacterCounts(std::string_view text) : text_(text) {
  before_steps_.reserve(text.size() / kStep + 1);
  before_steps_.push_back(0);
  for (std::size_t at = 0; at + kStep <= text.size(); at += kStep) {
    before_steps_.push_back(before_steps_.back() + Characters(text.substr(at, kStep)));
  }
}

std::size_t CharacterCounts::Before(std::size_t at) const {
  const std::size_t step = at / kStep;
  return before_steps_[step] + Characters(text_.substr(step * kStep, at - step * kStep));
}

}  // namespace rux::support
