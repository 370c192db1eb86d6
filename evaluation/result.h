// The result of an evaluation: a number, or the reason why it has none.
#ifndef EVALUATION_RESULT_H_
#define EVALUATION_RESULT_H_

#include <cstdint>
#include <string>
#include <utility>

namespace rux::evaluation {

// Holds every product of two numbers of 64 bits.
__extension__ using Number = __int128;

std::string TextOf(Number number);

class Result {
 public:
  enum class Kind : std::uint8_t {
    kNumber,
    kUnknown,  // depends on what neither the language, the profile nor the readings say
    kError,    // the machine as it is has no result
  };

  static Result Of(Number number) { return {Kind::kNumber, Why::kOther, number, {}}; }
  static Result Unknown(std::string reason) { return Unknown(Why::kOther, std::move(reason)); }
  // What has no number by what it does, such as a write: unknown to what uses it.
  static Result Nothing(std::string reason) { return Unknown(Why::kNothing, std::move(reason)); }
  // For want of a reading.
  static Result NoReading(std::string reason) {
    return Unknown(Why::kNoReading, std::move(reason));
  }
  static Result Error(std::string reason) {
    return {Kind::kError, Why::kOther, 0, std::move(reason)};
  }

  Kind kind() const { return kind_; }
  bool IsNumber() const { return kind_ == Kind::kNumber; }
  // Whether it depends on what is not stated.
  bool IsOpen() const { return kind_ == Kind::kUnknown && why_ != Why::kNothing; }
  // Whether a reading is all that it lacks.
  bool LacksReading() const { return why_ == Why::kNoReading; }
  Number number() const { return number_; }              // 0 unless it is one
  const std::string& reason() const { return reason_; }  // empty for a number

  // "93", "unknown (no reading of 4,0x0,1,5,0x30)"
  std::string Text() const;

  friend bool operator==(const Result& a, const Result& b) {
    return a.kind_ == b.kind_ && a.number_ == b.number_ && a.reason_ == b.reason_;
  }

 private:
  // Why something is unknown.
  enum class Why : std::uint8_t { kOther, kNothing, kNoReading };

  Result(Kind kind, Why why, Number number, std::string reason)
      : kind_(kind), why_(why), number_(number), reason_(std::move(reason)) {}
  static Result Unknown(Why why, std::string reason) {
    return {Kind::kUnknown, why, 0, std::move(reason)};
  }

  Kind kind_;
  Why why_;
  Number number_;
  std::string reason_;
};

// "number", "unknown", "error"
const char* NameOf(Result::Kind kind);

// Of two results, at least one of which is not a number, the one that decides: an error before what
// is unknown, and that before what only lacks a reading; else the first before the second.
const Result& ObstacleOf(const Result& first, const Result& second);

}  // namespace rux::evaluation

#endif  // EVALUATION_RESULT_H_
