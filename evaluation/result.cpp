#include "evaluation/result.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace rux::evaluation {

std::string TextOf(Number number) {
  std::string digits;
  const bool is_negative = number < 0;
  do {
    const int digit = static_cast<int>(number % 10);
    digits += static_cast<char>('0' + (is_negative ? -digit : digit));
    number /= 10;
  } while (number != 0);
  if (is_negative) digits += '-';
  std::reverse(digits.begin(), digits.end());
  return digits;
}

const char* NameOf(Result::Kind kind) {
  constexpr const char* kNames[] = {"number", "unknown", "error"};
  return kNames[static_cast<std::size_t>(kind)];
}

std::string Result::Text() const {
  return IsNumber() ? TextOf(number_) : std::string(NameOf(kind_)) + " (" + reason_ + ')';
}

const Result& ObstacleOf(const Result& first, const Result& second) {
  const auto rank = [](const Result& result) {
    if (result.kind() == Result::Kind::kError) return 3;
    return result.IsNumber() ? 0 : result.LacksReading() ? 1 : 2;
  };
  return rank(second) > rank(first) ? second : first;
}

}  // namespace rux::evaluation
