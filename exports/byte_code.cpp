#include "exports/byte_code.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "exports/amount.h"

namespace rux::exports {
namespace {

constexpr int kMostStep = 511;
constexpr int kLeastExponent = -8;
constexpr int kMostExponent = 7;

long double PowerOfTen(int exponent) { return std::pow(10.0L, exponent); }

long double ValueOf(const Amount& amount) {
  return static_cast<long double>(amount.number) / static_cast<long double>(amount.divisor) *
         PowerOfTen(amount.exponent);
}

// As a whole number of 10^exponent, when it is one.
std::optional<std::int64_t> WholeNumberOf(const Amount& amount, int exponent) {
  const long double number = std::round(ValueOf(amount) / PowerOfTen(exponent));
  constexpr long double kMost = 1e15L;
  if (std::fabs(number) > kMost) return std::nullopt;
  const auto whole = static_cast<std::int64_t>(number);
  if (Amount{whole, 1, exponent}.Text() != amount.Text()) return std::nullopt;
  return whole;
}

// How fine bytes can be that reach all amounts.
long double FinestStep(const std::vector<Amount>& amounts, bool is_signed) {
  long double step = 0;
  for (const Amount& amount : amounts) {
    const long double value = ValueOf(amount);
    step = std::max(step, value < 0 ? -value / 128 : value / (is_signed ? 127 : 255));
  }
  return step;
}

// The best code so far: one with more exact amounts, or a finer one.
class BestCode {
 public:
  BestCode(const std::vector<Amount>& amounts, bool is_signed)
      : amounts_(amounts), is_signed_(is_signed), finest_(FinestStep(amounts, is_signed)) {}

  ByteCode Find() {
    const int first = std::clamp(static_cast<int>(std::ceil(std::log10(finest_ / kMostStep))),
                                 kLeastExponent, kMostExponent);
    // From there on, steps up to the largest are up to a hundred times as coarse as they need be.
    for (int exponent = first; exponent <= std::min(first + 2, kMostExponent); ++exponent)
      TryExponent(exponent);
    return best_;
  }

 private:
  void TryExponent(int exponent) {
    std::vector<std::int64_t> numbers;
    for (const Amount& amount : amounts_) {
      if (const std::optional<std::int64_t> number = WholeNumberOf(amount, exponent))
        numbers.push_back(*number);
    }
    const long double finest = finest_ / PowerOfTen(exponent);
    for (int step = static_cast<int>(std::max(std::ceil(finest), 1.0L)); step <= kMostStep;
         ++step) {
      const auto exact = std::count_if(numbers.begin(), numbers.end(),
                                       [&](std::int64_t number) { return number % step == 0; });
      // What loses some amounts anyway need not be much coarser for the others.
      const bool is_fine = step <= 2 * finest;
      if (is_fine || exact == static_cast<std::ptrdiff_t>(amounts_.size()))
        Offer({step, exponent, is_signed_}, exact);
    }
  }

  void Offer(const ByteCode& code, std::ptrdiff_t exact) {
    const long double size = code.step * PowerOfTen(code.exponent);
    if (exact < exact_ || (exact == exact_ && size >= size_)) return;
    best_ = code;
    exact_ = exact;
    size_ = size;
  }

  const std::vector<Amount>& amounts_;
  const bool is_signed_;
  const long double finest_;
  // Until one is found, what reaches the most.
  ByteCode best_ = {kMostStep, kMostExponent, is_signed_};
  std::ptrdiff_t exact_ = -1;
  long double size_ = 0;
};

}  // namespace

int ByteCode::ByteFor(const Amount& amount) const {
  const long double byte = std::round(ValueOf(amount) / (step * PowerOfTen(exponent)));
  return static_cast<int>(
      std::clamp(byte, is_signed ? -128.0L : 0.0L, is_signed ? 127.0L : 255.0L));
}

ByteCode CodeFor(const std::vector<Amount>& amounts) {
  const bool is_signed = std::any_of(amounts.begin(), amounts.end(),
                                     [](const Amount& amount) { return amount.number < 0; });
  const auto is_zero = [](const Amount& amount) { return amount.number == 0; };
  if (std::all_of(amounts.begin(), amounts.end(), is_zero)) return {};
  return BestCode(amounts, is_signed).Find();
}

}  // namespace rux::exports
