#include "exports/amount.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string>

namespace rux::exports {
namespace {

std::uint64_t MagnitudeOf(std::int64_t number) {
  return number < 0 ? ~static_cast<std::uint64_t>(number) + 1 : static_cast<std::uint64_t>(number);
}

std::uint64_t WithoutFactor(std::uint64_t number, std::uint64_t factor) {
  while (number % factor == 0) number /= factor;
  return number;
}

// All digits of a quotient, and how many of them are decimals.
struct Digits {
  std::string text;
  int decimals = 0;
};

Digits DigitsOf(std::uint64_t number, std::uint64_t divisor) {
  Digits digits{std::to_string(number / divisor)};
  constexpr int kMostDecimals = 64;  // as many as a decimal quotient of 64 bits has
  std::uint64_t rest = number % divisor;
  for (; rest != 0 && digits.decimals < kMostDecimals; ++digits.decimals) {
    // Ten times the rest, without more bits than a word has.
    std::uint64_t digit = 0;
    std::uint64_t sum = 0;
    for (int i = 0; i < 10; ++i) {
      const bool is_full = sum >= divisor - rest;
      sum = is_full ? sum - (divisor - rest) : sum + rest;
      digit += is_full ? 1 : 0;
    }
    digits.text += static_cast<char>('0' + digit);
    rest = sum;
  }
  return digits;
}

}  // namespace

bool Amount::IsDecimal() const {
  const std::uint64_t rest = divisor / std::gcd(MagnitudeOf(number), divisor);
  return WithoutFactor(WithoutFactor(rest, 2), 5) == 1;
}

std::string Amount::Text() const {
  Digits digits = DigitsOf(MagnitudeOf(number), divisor);
  constexpr int kFewDecimals = 10;
  if (!IsDecimal()) {
    digits.text.resize(digits.text.size() -
                       static_cast<std::size_t>(digits.decimals - kFewDecimals));
    digits.decimals = kFewDecimals;
  }
  const int decimals = digits.decimals - exponent;
  if (decimals < 0) digits.text.append(static_cast<std::size_t>(-decimals), '0');
  const auto places = static_cast<std::size_t>(std::max(decimals, 0));
  if (digits.text.size() <= places) digits.text.insert(0, places + 1 - digits.text.size(), '0');
  std::string whole = digits.text.substr(0, digits.text.size() - places);
  std::string fraction = digits.text.substr(digits.text.size() - places);
  whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size() - 1));
  fraction.erase(fraction.find_last_not_of('0') + 1);
  if (!fraction.empty()) whole += '.' + fraction;
  return number < 0 ? '-' + whole : whole;
}

}  // namespace rux::exports
