#include "evaluation/arithmetic.h"

#include <fmt/format.h>

#include <cstdint>
#include <string>

#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "profile/choices.h"
#include "profile/profile.h"
#include "ruxcomp/language/values.h"

namespace rux::evaluation {

namespace language = ruxcomp::language;

namespace {

constexpr std::uint32_t CodeOf(const char* text) { return language::OperatorCode(text); }

constexpr Number PowerOfTwo(int exponent) { return Number{1} << exponent; }

constexpr int kMostBits = 64;

}  // namespace

Number Arithmetic::Least() const { return IsSigned() ? -PowerOfTwo(Width() - 1) : 0; }

Number Arithmetic::Greatest() const { return PowerOfTwo(IsSigned() ? Width() - 1 : Width()) - 1; }

Number Arithmetic::Pattern(Number number) const { return number & (PowerOfTwo(Width()) - 1); }

Number Arithmetic::Wrapped(Number number) const {
  const Number pattern = Pattern(number);
  return pattern > Greatest() ? pattern - PowerOfTwo(Width()) : pattern;
}

bool Arithmetic::IsSmall(Number number) const {
  constexpr int kLeastWidth = 8;
  const int width = profile_.width.stated ? Width() : kLeastWidth;
  return number >= 0 && number < PowerOfTwo(width - 1);
}

Result Arithmetic::Fit(const Exact& exact) const {
  if (!exact.is_beyond && Holds(exact.number)) return Result::Of(exact.number);
  if (!profile_.overflow.stated) return Unstated(profile_.overflow);
  const bool is_negative = exact.is_beyond ? exact.is_negative : exact.number < 0;
  switch (*profile_.overflow.stated) {
    case profile::Overflow::kWrap:
      return Result::Of(Wrapped(exact.number));
    case profile::Overflow::kSaturate:
      return Result::Of(is_negative ? Least() : Greatest());
    default:
      return Result::Error(fmt::format("the result is beyond {} bits", Width()));
  }
}

Result Arithmetic::Stored(std::uint32_t number) const {
  const auto with_sign = static_cast<std::int32_t>(number);
  const auto fit = [&](Number of) { return HasForm() ? Fit({of}) : Result::Of(of); };
  if (!IsSigned() || with_sign >= 0) return fit(number);
  if (profile_.stored_sign.Is(profile::StoredSign::kExtended)) return fit(with_sign);
  if (!profile_.width.stated) return Unstated(profile_.width);
  constexpr int kStoredBits = 32;
  if (Width() <= kStoredBits) return fit(with_sign);
  return profile_.stored_sign.stated ? fit(number) : Unstated(profile_.stored_sign);
}

Result Arithmetic::Given(const Reading& reading) const {
  const Number number = reading.number;
  if (!HasForm() || Holds(number)) return Result::Of(number);
  if (reading.is_bits && number >= 0 && number == Pattern(number))
    return Result::Of(Wrapped(number));
  return Result::Error(fmt::format("the reading {} is beyond {} bits", TextOf(number), Width()));
}

Result Arithmetic::Calculate(std::uint32_t operator_code, Number x, Number y) const {
  if (!profile_.width.stated) return Unstated(profile_.width);
  if (!profile_.sign.stated) return Unstated(profile_.sign);
  switch (operator_code) {
    case CodeOf("+"):
      return Fit({x + y});
    case CodeOf("-"):
      return Fit({x - y});
    case CodeOf("*"): {
      Exact product{0};
      product.is_beyond = __builtin_mul_overflow(x, y, &product.number);
      product.is_negative = (x < 0) != (y < 0);
      return Fit(product);
    }
    case CodeOf("/"):
    case CodeOf("%"):
      return Divide(operator_code == CodeOf("/"), x, y);
    case CodeOf("|"):
      return Result::Of(Wrapped(x | y));
    case CodeOf("&"):
      return Result::Of(Wrapped(x & y));
    case CodeOf("^"):
      return Result::Of(Wrapped(x ^ y));
    case CodeOf("<<"):
    case CodeOf(">>"):
      return Shift(operator_code == CodeOf("<<"), x, y);
    case CodeOf("pow"):
      return Power(x, y);
    default:
      return Result::Error(fmt::format("no operator has the code {}", operator_code));
  }
}

Result Arithmetic::Compare(std::uint32_t operator_code, Number x, Number y) const {
  if (!profile_.sign.stated && !(IsSmall(x) && IsSmall(y))) return Unstated(profile_.sign);
  switch (operator_code) {
    case CodeOf("=="):
      return Result::Of(x == y ? 1 : 0);
    case CodeOf(">"):
      return Result::Of(x > y ? 1 : 0);
    case CodeOf(">="):
      return Result::Of(x >= y ? 1 : 0);
    case CodeOf("!="):
      return Result::Of(x != y ? 1 : 0);
    case CodeOf("<"):
      return Result::Of(x < y ? 1 : 0);
    case CodeOf("<="):
      return Result::Of(x <= y ? 1 : 0);
    default:
      return Result::Error(fmt::format("no comparison has the code {}", operator_code));
  }
}

Result Arithmetic::Divide(bool is_quotient, Number x, Number y) const {
  if (y == 0) {
    if (!profile_.division_by_zero.stated) return Unstated(profile_.division_by_zero);
    if (profile_.division_by_zero.Is(profile::DivisionByZero::kError))
      return Result::Error("division by zero");
    return Result::Of(profile_.division_by_zero.Is(profile::DivisionByZero::kZero) ? 0
                                                                                   : Greatest());
  }
  Number quotient = x / y;
  const bool is_rounded = quotient * y != x;
  if (is_rounded && (x < 0) != (y < 0)) {
    if (!profile_.quotient.stated) return Unstated(profile_.quotient);
    if (profile_.quotient.Is(profile::Quotient::kDown)) --quotient;
  }
  return Fit({is_quotient ? quotient : x - quotient * y});
}

Result Arithmetic::Shift(bool is_left, Number x, Number count) const {
  if (count < 0 || count >= Width()) {
    if (!profile_.shift_beyond.stated) return Unstated(profile_.shift_beyond);
    switch (*profile_.shift_beyond.stated) {
      case profile::ShiftBeyond::kError:
        return Result::Error(fmt::format("a shift by {} of {} bits", TextOf(count), Width()));
      case profile::ShiftBeyond::kAllOut:
        count = Width();
        break;
      default:
        count = Pattern(count) % Width();
    }
  }
  return is_left ? ShiftLeft(x, count) : ShiftRight(x, count);
}

Result Arithmetic::ShiftLeft(Number x, Number count) const {
  Exact product{0, false, x < 0};
  product.is_beyond =
      __builtin_mul_overflow(x, PowerOfTwo(static_cast<int>(count)), &product.number);
  if (!product.is_beyond && Holds(product.number)) return Result::Of(product.number);
  if (!profile_.left_shift.stated) return Unstated(profile_.left_shift);
  if (profile_.left_shift.Is(profile::LeftShift::kDrop)) return Result::Of(Wrapped(product.number));
  return Fit(product);
}

Result Arithmetic::ShiftRight(Number x, Number count) const {
  if (x >= 0) return Result::Of(x >> static_cast<int>(count));
  if (count == 0) return Result::Of(x);
  if (!profile_.right_shift.stated) return Unstated(profile_.right_shift);
  const bool keeps_sign = profile_.right_shift.Is(profile::RightShift::kArithmetic);
  return Result::Of((keeps_sign ? x : Pattern(x)) >> static_cast<int>(count));
}

Result Arithmetic::Power(Number x, Number exponent) const {
  if (exponent < 0) {
    if (!profile_.negative_power.stated) return Unstated(profile_.negative_power);
    if (profile_.negative_power.Is(profile::NegativePower::kZero)) return Result::Of(0);
    return Result::Error(fmt::format("the power has an exponent of {}", TextOf(exponent)));
  }
  // By squares. What is beyond keeps its low bits and its sign.
  const bool is_negative = x < 0 && exponent % 2 != 0;
  Exact power{1, false, is_negative};
  Exact square{x};
  for (;;) {
    if (exponent % 2 != 0) {
      const bool overflows = __builtin_mul_overflow(power.number, square.number, &power.number);
      power.is_beyond = power.is_beyond || overflows || square.is_beyond;
    }
    exponent /= 2;
    if (exponent == 0) return Fit(power);
    const bool overflows = __builtin_mul_overflow(square.number, square.number, &square.number);
    square.is_beyond = square.is_beyond || overflows;
  }
}

Result Arithmetic::Field(std::uint32_t first, std::uint32_t second, Number x) const {
  if (!profile_.field_bits.stated) return Unstated(profile_.field_bits);
  if (x < 0 && !profile_.width.stated) return Unstated(profile_.width);
  std::uint32_t lowest = first;
  Number count = second;
  if (!profile_.field_bits.Is(profile::FieldBits::kLowestCount)) {
    const bool is_upwards = profile_.field_bits.Is(profile::FieldBits::kLowestHighest);
    lowest = is_upwards ? first : second;
    count = Number{is_upwards ? second : first} - lowest + 1;
    if (count < 1) return Result::Error("the highest bit of the field is below the lowest");
  }
  const Number pattern = x < 0 ? Pattern(x) : x;
  const Number moved = lowest >= kMostBits ? 0 : pattern >> static_cast<int>(lowest);
  const int kept = count > kMostBits ? kMostBits : static_cast<int>(count);
  const Number bits = moved & (PowerOfTwo(kept) - 1);
  return Result::Of(HasForm() ? Wrapped(bits) : bits);
}

}  // namespace rux::evaluation
