#include "imports/decimal.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "support/ascii.h"

namespace rux::imports {
namespace {

constexpr std::size_t kMostDigits = 18;
constexpr int kFarthest = 60;
constexpr std::int64_t kLargest = 999'999'999'999'999'999;

bool TakeSign(std::string_view& text) {
  if (text.empty() || (text.front() != '-' && text.front() != '+')) return false;
  const bool is_negative = text.front() == '-';
  text.remove_prefix(1);
  return is_negative;
}

template <class Number>
std::optional<Number> WholeNumber(std::string_view text, int base = 10) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// The power after an e, which is taken off the text; 0 without one.
std::optional<int> TakePower(std::string_view& text) {
  const std::size_t mark = text.find_first_of("eE");
  if (mark == std::string_view::npos) return 0;
  std::string_view power = text.substr(mark + 1);
  text = text.substr(0, mark);
  const bool is_negative = TakeSign(power);
  if (power.empty() || !support::IsDigit(power.front())) return std::nullopt;
  const std::optional<int> number = WholeNumber<int>(power);
  if (!number || *number > 2 * kFarthest) return std::nullopt;
  return is_negative ? -*number : *number;
}

// How many digits the text begins with, which are taken off it.
std::size_t TakeDigits(std::string_view& text, std::string_view digits) {
  const std::size_t count = std::min(text.find_first_not_of(digits), text.size());
  text.remove_prefix(count);
  return count;
}

std::optional<std::int64_t> Product(std::int64_t a, std::int64_t b) {
  std::int64_t product = 0;
  if (__builtin_mul_overflow(a, b, &product) || std::llabs(product) > kLargest) return std::nullopt;
  return product;
}

}  // namespace

Decimal::Decimal(std::int64_t digits, int exponent) : digits_(digits), exponent_(exponent) {
  if (digits_ == 0) exponent_ = 0;
  while (digits_ != 0 && digits_ % 10 == 0) {
    digits_ /= 10;
    ++exponent_;
  }
}

bool Decimal::IsNumber(std::string_view text) {
  constexpr std::string_view kHexDigits = "0123456789abcdefABCDEF";
  constexpr std::string_view kDigits = kHexDigits.substr(0, 10);
  TakeSign(text);
  if (text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X") {
    text.remove_prefix(2);
    return TakeDigits(text, kHexDigits) > 0 && text.empty();
  }
  std::size_t taken = TakeDigits(text, kDigits);
  if (!text.empty() && text.front() == '.') {
    text.remove_prefix(1);
    taken += TakeDigits(text, kDigits);
  }
  if (taken == 0 || text.empty()) return taken > 0;
  if (text.front() != 'e' && text.front() != 'E') return false;
  text.remove_prefix(1);
  TakeSign(text);
  return TakeDigits(text, kDigits) > 0 && text.empty();
}

std::optional<Decimal> Decimal::In(std::string_view text) {
  const bool is_negative = TakeSign(text);
  if (text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X") {
    const std::optional<std::uint32_t> number = WholeNumber<std::uint32_t>(text.substr(2), 16);
    if (!number) return std::nullopt;
    return Decimal(is_negative ? -std::int64_t{*number} : std::int64_t{*number}, 0);
  }
  const std::optional<int> power = TakePower(text);
  if (!power) return std::nullopt;
  const std::size_t point = text.find('.');
  std::string figures(text.substr(0, point));
  int shift = *power;
  if (point != std::string_view::npos) {
    std::string_view decimals = text.substr(point + 1);
    while (!decimals.empty() && decimals.back() == '0') decimals.remove_suffix(1);
    if (figures.empty() && text.size() == 1) return std::nullopt;
    if (decimals.size() > kMostDigits) return std::nullopt;
    figures += decimals;
    shift -= static_cast<int>(decimals.size());
  }
  if (figures.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
  if (figures.empty() && point == std::string_view::npos) return std::nullopt;
  figures.erase(0, figures.find_first_not_of('0'));
  if (figures.empty()) return Decimal();
  const std::optional<std::int64_t> number =
      figures.size() > kMostDigits ? std::nullopt : WholeNumber<std::int64_t>(figures);
  if (!number || std::abs(shift) > kFarthest) return std::nullopt;
  return Decimal(is_negative ? -*number : *number, shift);
}

std::optional<Decimal> Decimal::Quotient(std::int64_t dividend, std::int64_t divisor) {
  const std::int64_t common = std::gcd(dividend, divisor);
  std::int64_t figures = dividend / common;
  std::int64_t rest = divisor / common;
  int shift = 0;
  // Only twos and fives are left of the divisor: each is a tenth of five or two.
  for (const auto& [prime, other] : {std::pair(2, 5), std::pair(5, 2)}) {
    while (rest % prime == 0) {
      const std::optional<std::int64_t> larger = Product(figures, other);
      if (!larger) return std::nullopt;
      figures = *larger;
      rest /= prime;
      --shift;
    }
  }
  if (rest != 1 && rest != -1) return std::nullopt;
  return Decimal(figures * rest, shift);
}

std::optional<Decimal> Decimal::Times(const Decimal& other) const {
  const std::optional<std::int64_t> figures = Product(digits_, other.digits_);
  const int shift = exponent_ + other.exponent_;
  if (!figures || std::abs(shift) > kFarthest) return std::nullopt;
  return Decimal(*figures, shift);
}

std::optional<std::int64_t> Decimal::WholeAt(int power) const {
  if (digits_ == 0) return 0;
  const int zeros = exponent_ + power;
  if (zeros < 0) return std::nullopt;
  std::optional<std::int64_t> number = digits_;
  for (int i = 0; i < zeros && number; ++i) number = Product(*number, 10);
  return number;
}

std::string Decimal::Text() const {
  std::string text = std::to_string(std::llabs(digits_));
  if (exponent_ >= 0) {
    text.append(static_cast<std::size_t>(exponent_), '0');
  } else {
    const auto decimals = static_cast<std::size_t>(-exponent_);
    if (text.size() <= decimals) text.insert(0, decimals + 1 - text.size(), '0');
    text.insert(text.size() - decimals, ".");
  }
  return digits_ < 0 ? '-' + text : text;
}

}  // namespace rux::imports
