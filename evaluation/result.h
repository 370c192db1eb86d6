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

  static Result Of(Number number) { return {Kind::kNumber, number, {}}; }
  static Result Unknown(std::string reason) { return {Kind::kUnknown, 0, std::move(reason)}; }
  // What has no number by what it does, such as a write: unknown to what uses it.
  static Result Nothing(std::string reason) {
    Result result = Unknown(std::move(reason));
    result.is_nothing_ = true;
    return result;
  }
  static Result Error(std::string reason) { return {Kind::kError, 0, std::move(reason)}; }

  Kind kind() const { return kind_; }
  bool IsNumber() const { return kind_ == Kind::kNumber; }
  // Whether it depends on what nobody says.
  bool IsOpen() const { return kind_ == Kind::kUnknown && !is_nothing_; }
  Number number() const { return number_; }              // 0 unless it is one
  const std::string& reason() const { return reason_; }  // empty for a number

  // "93", "unknown (no reading of 4,0x0,1,5,0x30)"
  std::string Text() const;

  friend bool operator==(const Result& a, const Result& b) {
    return a.kind_ == b.kind_ && a.number_ == b.number_ && a.reason_ == b.reason_;
  }

 private:
  Result(Kind kind, Number number, std::string reason)
      : kind_(kind), number_(number), reason_(std::move(reason)) {}

  Kind kind_;
  Number number_;
  std::string reason_;
  bool is_nothing_ = false;
};

// "number", "unknown", "error"
const char* NameOf(Result::Kind kind);

// Of two results, at least one of which is not a number, the one that decides: an error before an
// unknown result, the first before the second.
const Result& ObstacleOf(const Result& first, const Result& second);

}  // namespace rux::evaluation

#endif  // EVALUATION_RESULT_H_
