#include "format/line_diff.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rux::format {
namespace {

constexpr std::size_t kContext = 3;

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
    lines.push_back(text.substr(0, size));
    text.remove_prefix(size);
  }
  return lines;
}

bool IsEmpty(std::string_view line) {
  return line.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

// A line of the diff.
struct Step {
  char sign;  // ' ', '-' or '+'
  std::string_view line;
};

// Empty lines come and go; all others have a partner.
std::vector<Step> StepsBetween(const std::vector<std::string_view>& lines,
                               const std::vector<std::string_view>& others,
                               EmptyLines empty_lines) {
  const bool may_move = empty_lines == EmptyLines::kMove;
  std::vector<Step> steps;
  std::vector<Step> added;  // after what is removed before them
  const auto end_change = [&] {
    steps.insert(steps.end(), added.begin(), added.end());
    added.clear();
  };
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < lines.size() || j < others.size()) {
    const bool is_removed = j == others.size() || (may_move && i < lines.size() &&
                                                   IsEmpty(lines[i]) && !IsEmpty(others[j]));
    const bool is_added = i == lines.size() || (may_move && j < others.size() &&
                                                !IsEmpty(lines[i]) && IsEmpty(others[j]));
    if (!is_removed && !is_added && lines[i] == others[j]) {
      end_change();
      steps.push_back({' ', lines[i]});
    } else {
      if (!is_added) steps.push_back({'-', lines[i]});
      if (!is_removed) added.push_back({'+', others[j]});
    }
    if (!is_added) ++i;
    if (!is_removed) ++j;
  }
  end_change();
  return steps;
}

// "3,7"; of one line, "3"; of none, "2,0": after line 2.
std::string LineNumbers(std::size_t before, std::size_t count) {
  if (count == 1) return fmt::format("{}", before + 1);
  return fmt::format("{},{}", count == 0 ? before : before + 1, count);
}

class Writer {
 public:
  explicit Writer(const std::vector<Step>& steps) : steps_(steps) {}

  std::string Hunks() {
    for (std::size_t at = NextChange(0); at < steps_.size();) {
      const std::size_t first = at - std::min(at, kContext);
      std::size_t last = at;
      for (; at < steps_.size() && at - last <= 2 * kContext + 1; at = NextChange(at + 1))
        last = at;
      AddHunk(first, std::min(last + 1 + kContext, steps_.size()));
    }
    return std::move(text_);
  }

 private:
  std::size_t NextChange(std::size_t at) const {
    while (at < steps_.size() && steps_[at].sign == ' ') ++at;
    return at;
  }

  std::size_t CountWithout(char sign, std::size_t first, std::size_t last) const {
    const auto begin = steps_.begin();
    return static_cast<std::size_t>(std::count_if(
        begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(last),
        [&](const Step& step) { return step.sign != sign; }));
  }

  void AddHunk(std::size_t first, std::size_t last) {
    before_ += CountWithout('+', done_, first);
    after_ += CountWithout('-', done_, first);
    const std::size_t removed = CountWithout('+', first, last);
    const std::size_t added = CountWithout('-', first, last);
    text_ +=
        fmt::format("@@ -{} +{} @@\n", LineNumbers(before_, removed), LineNumbers(after_, added));
    for (std::size_t i = first; i < last; ++i) {
      text_ += steps_[i].sign;
      text_ += steps_[i].line;
      if (steps_[i].line.back() != '\n') text_ += "\n\\ No newline at end of file\n";
    }
    before_ += removed;
    after_ += added;
    done_ = last;
  }

  const std::vector<Step>& steps_;
  std::string text_;
  std::size_t done_ = 0;    // steps
  std::size_t before_ = 0;  // lines of both texts in them
  std::size_t after_ = 0;
};

}  // namespace

std::string UnifiedDiff(std::string_view path, std::string_view text, std::string_view formatted,
                        EmptyLines empty_lines) {
  if (text == formatted) return {};
  const std::vector<Step> steps = StepsBetween(LinesOf(text), LinesOf(formatted), empty_lines);
  return fmt::format("--- {0}\n+++ {0}\n", path) + Writer(steps).Hunks();
}

}  // namespace rux::format
