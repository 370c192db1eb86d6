// Evaluates expressions, so that another evaluator can compare: one on each line of standard input,
// in postfix order.
//
//   profile {"name": ...}   what the lines after it go by
//   5 given -7 *            numbers are as meta files store them; after "given" they are readings,
//   in
//                           decimal or as bits: 0xFFFFFFFF
//   5 field 4 8             some bits of what is before
//
// Prints a number, "unknown" or "error" for each expression.
#include <cstdint>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "evaluation/arithmetic.h"
#include "evaluation/readings.h"
#include "evaluation/result.h"
#include "profile/profile.h"
#include "ruxcomp/language/values.h"

namespace {

using rux::evaluation::Arithmetic;
using rux::evaluation::ObstacleOf;
using rux::evaluation::Readings;
using rux::evaluation::Result;

class Expression {
 public:
  explicit Expression(const Arithmetic& arithmetic) : arithmetic_(arithmetic) {}

  Result Evaluate(const std::string& line) {
    std::istringstream words(line);
    std::string word;
    while (words >> word) {
      if (word == "given") {
        words >> word;
        stack_.push_back(arithmetic_.Given(Readings::NumberOf(word)));
      } else if (word == "field") {
        std::uint32_t first = 0;
        std::uint32_t second = 0;
        words >> first >> second;
        const Result x = Pop();
        stack_.push_back(x.IsNumber() ? arithmetic_.Field(first, second, x.number()) : x);
      } else if (const auto* row = ruxcomp::language::FindOperator(word)) {
        Operate(row->code);
      } else {
        stack_.push_back(arithmetic_.Stored(static_cast<std::uint32_t>(std::stoul(word))));
      }
    }
    return Pop();
  }

 private:
  Result Pop() {
    Result top = std::move(stack_.back());
    stack_.pop_back();
    return top;
  }

  void Operate(std::uint32_t code) {
    const Result y = Pop();
    const Result x = Pop();
    if (!x.IsNumber() || !y.IsNumber()) {
      stack_.push_back(ObstacleOf(x, y));
    } else if (ruxcomp::language::IsComparison(code)) {
      stack_.push_back(arithmetic_.Compare(code, x.number(), y.number()));
    } else {
      stack_.push_back(arithmetic_.Calculate(code, x.number(), y.number()));
    }
  }

  const Arithmetic& arithmetic_;
  std::vector<Result> stack_;
};

}  // namespace

int main() {
  std::ios::sync_with_stdio(false);
  rux::profile::Profile profile;
  constexpr std::string_view kProfile = "profile ";
  std::string line;
  while (std::getline(std::cin, line)) {
    if (line.compare(0, kProfile.size(), kProfile) == 0) {
      profile = rux::profile::ParseProfile("profile.json", line.substr(kProfile.size()));
      continue;
    }
    const Result result = Expression(Arithmetic(profile)).Evaluate(line);
    std::cout << (result.IsNumber() ? result.Text() : NameOf(result.kind())) << '\n';
  }
  return 0;
}
