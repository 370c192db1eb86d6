// Operators as a profile has them. A choice counts only where the result depends on it: what a
// profile does not state leaves no more unknown than it has to.
#ifndef EVALUATION_ARITHMETIC_H_
#define EVALUATION_ARITHMETIC_H_

#include <cstdint>
#include <string>

#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "profile/profile.h"

namespace rux::evaluation {

// What depends on a member that the profile does not state.
template <class Value>
Result Unstated(const profile::Member<Value>& member) {
  return Result::Unknown("no profile states " + std::string(member.key));
}

class Arithmetic {
 public:
  // The profile must outlive this.
  explicit Arithmetic(const profile::Profile& profile) : profile_(profile) {}

  // A number as a meta file stores it, below 0 only where the profile says so.
  Result Stored(std::uint32_t number) const;
  // A reading, which is refused when the width cannot hold it. Bits are those of a number.
  Result Given(const Reading& reading) const;

  // An arithmetic operator of two numbers.
  Result Calculate(std::uint32_t operator_code, Number x, Number y) const;
  // Whether a comparison of two numbers holds: 1 or 0.
  Result Compare(std::uint32_t operator_code, Number x, Number y) const;
  // Some bits of a number, as the profile has the two numbers of a field.
  Result Field(std::uint32_t first, std::uint32_t second, Number x) const;

 private:
  // A number that may be too large to be held even here: then the width cannot hold it either, and
  // `number` has its low bits.
  struct Exact {
    Number number;
    bool is_beyond = false;
    bool is_negative = false;  // of one that is beyond
  };

  bool HasForm() const { return profile_.width.stated && profile_.sign.stated; }
  bool IsSigned() const { return profile_.sign.Is(profile::Sign::kSigned); }
  int Width() const { return static_cast<int>(*profile_.width.stated); }
  Number Least() const;
  Number Greatest() const;
  // Whether the number is the same with and without a sign, in any width that may be meant.
  bool IsSmall(Number number) const;
  bool Holds(Number number) const { return number >= Least() && number <= Greatest(); }
  // The number that the low bits are.
  Number Wrapped(Number number) const;
  // The low bits, from 0 up.
  Number Pattern(Number number) const;
  Result Fit(const Exact& exact) const;

  Result Divide(bool is_quotient, Number x, Number y) const;
  Result ShiftLeft(Number x, Number count) const;
  Result ShiftRight(Number x, Number count) const;
  Result Shift(bool is_left, Number x, Number count) const;
  Result Power(Number x, Number exponent) const;

  const profile::Profile& profile_;
};

}  // namespace rux::evaluation

#endif  // EVALUATION_ARITHMETIC_H_
