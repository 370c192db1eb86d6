#include "diagnostics/repeated.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "diagnostics/diagnostic.h"
#include "diagnostics/report.h"
#include "support/number_text.h"
#include "support/text_stream.h"

namespace rux::diagnostics {
namespace {

constexpr char kBegin = '\x1C';    // then the line
constexpr char kCompare = '\x1A';  // then what is compared, and after kNext each alternative
constexpr char kNext =
    '\x1D';  // then what all scripts print, and after another one, what each does
constexpr char kEnd = '\x1F';

// The text up to the mark, which is taken away with it.
std::string_view TakeUpTo(char mark, std::string_view& text) {
  const std::size_t end = text.find(mark);
  const std::string_view taken = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return taken;
}

}  // namespace

Repeatable::Repeatable(const Report& report, bool is_piece, const Diagnostic& diagnostic,
                       std::string_view line, support::TextStream& out)
    : is_marked_(is_piece && report.is_one_of_many && MayBeRepeated(report, diagnostic)),
      out_(out) {
  if (is_marked_) out_ += fmt::format("{}{}{}", kBegin, line, kNext);
}

Repeatable::~Repeatable() {
  BeginOwn();
  if (is_marked_) out_ += std::string(1, kEnd);
}

void Repeatable::BeginOwn() {
  if (is_marked_ && !is_own_) out_ += std::string(1, kNext);
  is_own_ = true;
}

bool MayBeRepeated(const Report& report, const Diagnostic& diagnostic) {
  return !diagnostic.at.path.empty() && diagnostic.at.path != report.script;
}

void WriteComparable(support::TextStream& out, const WritePart& write_common,
                     const WritePart& write_first, const WritePart& write_again) {
  out += kCompare;
  write_common();
  out += kNext;
  write_first();
  out += kNext;
  write_again();
  out += kEnd;
}

std::string RepeatedOnce::Without(std::string_view printed) {
  constexpr char kMarks[] = {kBegin, kCompare, '\0'};
  std::string text;
  while (true) {
    const std::size_t mark = printed.find_first_of(kMarks);
    text += printed.substr(0, mark);
    if (mark == std::string_view::npos) return text;
    const bool is_compared = printed[mark] == kCompare;
    printed.remove_prefix(mark + 1);
    is_compared ? ChooseAlternative(printed, text) : TakeRepeated(printed, text);
  }
}

void RepeatedOnce::TakeRepeated(std::string_view& left, std::string& text) {
  const std::string_view line = TakeUpTo(kNext, left);
  const std::string_view common = TakeUpTo(kNext, left);
  const std::string_view own = TakeUpTo(kEnd, left);
  const auto [place, is_new] = places_.try_emplace(std::string(common), repetitions_.size());
  if (is_new) {
    repetitions_.emplace_back(line, 0);
    text.append(common).append(own);
  } else {
    ++repetitions_[place->second].second;
  }
}

void RepeatedOnce::ChooseAlternative(std::string_view& left, std::string& text) {
  const std::string_view common = TakeUpTo(kNext, left);
  const std::string_view first = TakeUpTo(kNext, left);
  const std::string_view again = TakeUpTo(kEnd, left);
  text.append(common).append(compared_.emplace(common).second ? first : again);
}

std::string RepeatedOnce::Lines() const {
  std::string lines;
  for (const auto& [line, others] : repetitions_) {
    if (others == 0) continue;
    std::string_view rest = line;
    lines += TakeUpTo(kOthers.front(), rest);
    lines += support::CountText(others, "more script").append(rest);
  }
  return lines;
}

}  // namespace rux::diagnostics
