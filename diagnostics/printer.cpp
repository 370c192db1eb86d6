#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/repeated.h"
#include "diagnostics/report.h"
#include "findings/message_row.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/text_stream.h"
#include "support/utf8.h"

namespace rux::diagnostics {
namespace {

constexpr std::string_view kBold = "\x1B[1m";
constexpr std::string_view kRed = "\x1B[1;31m";
constexpr std::string_view kMagenta = "\x1B[1;35m";
constexpr std::string_view kCyan = "\x1B[1;36m";
constexpr std::string_view kGreen = "\x1B[1;32m";
constexpr std::string_view kPlain = "\x1B[0m";

// Of a longer source line only the surroundings of the offending text are shown.
constexpr std::size_t kLongestShownLine = 160;
constexpr std::size_t kShownBefore = 60;

std::string_view ColourOf(Severity severity) {
  switch (severity) {
    case Severity::kNote:
      return kCyan;
    case Severity::kWarning:
      return kMagenta;
    case Severity::kError:
      break;
  }
  return kRed;
}

// What is shown of a source line.
struct Shown {
  std::string text;
  std::size_t begin;  // the offending bytes of the text
  std::size_t length;
};

// Part of a line, which grows character by character up to a number of columns. One that takes no
// column of its own counts as well: the width of a window is limited.
class Window {
 public:
  Window(std::string_view text, std::size_t at) : text_(text), begin_(at), end_(at) {}

  std::size_t begin() const { return begin_; }
  std::size_t end() const { return end_; }

  void GrowLeft(std::size_t most) {
    while (begin_ > 0) {
      const support::Character last = support::LastCharacter(text_.substr(0, begin_));
      if (!Takes(last, most)) return;
      begin_ -= last.bytes.size();
    }
  }
  void GrowRight(std::size_t most) {
    while (end_ < text_.size()) {
      const support::Character first = support::FirstCharacter(text_.substr(end_));
      if (!Takes(first, most)) return;
      end_ += first.bytes.size();
    }
  }

 private:
  bool Takes(const support::Character& character, std::size_t most) {
    const std::size_t width = std::max<std::size_t>(WidthOf(character), 1);
    if (columns_ + width > most) return false;
    columns_ += width;
    return true;
  }

  // As the line is shown, a tab as one column.
  static std::size_t WidthOf(const support::Character& character) {
    return character.code == '\t' ? 1 : support::Columns(character);
  }

  const std::string_view text_;
  std::size_t begin_;
  std::size_t end_;
  std::size_t columns_ = 0;
};

// Cuts a long line down, at whole characters.
Shown Clipped(const Excerpt& whole) {
  const std::string_view text = whole.text;
  Window window(text, whole.begin);
  window.GrowLeft(kShownBefore);
  window.GrowRight(kLongestShownLine);
  window.GrowLeft(kLongestShownLine);
  const std::size_t begin = window.begin();
  const std::size_t end = window.end();
  const std::string_view left = begin > 0 ? "..." : "";
  const std::string_view right = end < text.size() ? "..." : "";
  Shown shown{std::string(left), left.size() + whole.begin - begin, 0};
  shown.text.append(text, begin, end - begin).append(right);
  shown.length = std::min(whole.length, end - whole.begin);
  return shown;
}

// What is printed under the text before the marked one: blanks, and its tabs, so that both lines
// run alike.
std::string Indent(std::string_view before) {
  std::string indent;
  while (true) {
    const std::size_t tab = before.find('\t');
    indent.append(support::Columns(before.substr(0, tab)), ' ');
    if (tab == std::string_view::npos) return indent;
    indent += '\t';
    before.remove_prefix(tab + 1);
  }
}

class Printer {
 public:
  Printer(const Report& report, bool colour, support::TextStream& out)
      : report_(report), colour_(colour), out_(out) {}

  void Print(const Diagnostic& diagnostic) {
    Repeatable repeatable(report_, true, diagnostic,
                          fmt::format("{}: {}: in {} (--all shows them)\n",
                                      PlaceText(diagnostic.at), diagnostic.row->id, kOthers),
                          out_);
    PrintMessage(diagnostic.at, diagnostic.severity, WholeText(diagnostic), Label(diagnostic));
    if (diagnostic.suggestion) PrintAside(SuggestionText(diagnostic));
    // What has no place of its own belongs to the message, not to a note.
    for (const Note& note : diagnostic.notes) {
      if (note.at.path.empty()) PrintNote(note);
    }
    for (const Note& note : diagnostic.notes) {
      if (!note.at.path.empty()) PrintNote(note);
    }
    repeatable.BeginOwn();
    // Of several diagnostics in a row that are in one file, the first shows how it is reached.
    if (diagnostic.at.path != last_path_) {
      for (const Note& include : diagnostic.included_from) PrintNote(include);
    }
    last_path_ = diagnostic.at.path;
  }

 private:
  void PrintMessage(const Location& at, Severity severity, std::string_view text,
                    std::string_view id) {
    out_ += Paint(PlaceText(at) + ":", kBold) + ' ' +
            Paint(fmt::format("{}:", WordOf(severity)), ColourOf(severity)) + ' ' +
            support::SafeText(text) + std::string(id) + '\n';
    if (at.excerpt) PrintExcerpt(*at.excerpt);
  }

  void PrintNote(const Note& note) {
    if (note.at.path.empty()) return PrintAside(note.text);
    PrintMessage(note.at, Severity::kNote, note.text, "");
  }

  // What belongs to the diagnostic above, and to no place of its own.
  void PrintAside(std::string_view text) { out_ += "      = " + support::SafeText(text) + '\n'; }

  void PrintExcerpt(const Excerpt& excerpt) {
    const Shown shown = Clipped(excerpt);
    const std::string_view text = shown.text;
    out_ += fmt::format("{:5} | {}\n", excerpt.line, support::SafeLine(text));
    const std::size_t columns = support::Columns(text.substr(shown.begin, shown.length));
    const std::string mark = '^' + std::string(std::max<std::size_t>(columns, 1) - 1, '~');
    out_ += fmt::format("      | {}{}\n", Indent(text.substr(0, shown.begin)), Paint(mark, kGreen));
  }

  std::string Paint(std::string_view text, std::string_view colour) const {
    if (!colour_) return std::string(text);
    return fmt::format("{}{}{}", colour, text, kPlain);
  }

  const Report& report_;
  const bool colour_;
  std::string last_path_;
  support::TextStream& out_;
};

// Up to this many equal messages are all shown; of more, only the first ones.
constexpr std::size_t kFew = 10;
constexpr std::size_t kFirst = 3;

// Which diagnostics are shown when equal ones are folded.
class Folding {
 public:
  Folding(const Report& report, bool folds) : not_shown_(report.not_shown) {
    for (const MessageCount& count : report.by_message) {
      if (!folds || count.all <= kFew) continue;
      const std::size_t shown = std::min(kFirst, count.kept);
      folded_.push_back({count.row, count.all - shown});
      left_[count.row] = shown;
      not_shown_ -= count.all - count.kept;
    }
  }

  bool Shows(const Diagnostic& diagnostic) {
    const auto left = left_.find(diagnostic.row);
    if (left == left_.end()) return true;
    if (left->second == 0) return false;
    --left->second;
    return true;
  }

  // What is said of the others.
  std::string Text(const std::string& script) const {
    std::string text;
    for (const Folded& each : folded_) {
      text += fmt::format("{}: {} more (--all shows them)\n", each.row->id, each.more);
    }
    if (not_shown_ > 0) {
      text += fmt::format("{}: {}\n", support::SafePath(script), NotShownText(not_shown_));
    }
    return text;
  }

 private:
  struct Folded {
    const MessageRow* row;
    std::size_t more;
  };
  std::vector<Folded> folded_;
  std::map<const MessageRow*, std::size_t> left_;  // how many are still to be shown
  std::size_t not_shown_;                          // of messages that are not folded
};

}  // namespace

std::string PlaceText(const Location& at) {
  std::string place = support::SafePath(at.path.empty() ? "rux" : at.path);
  if (at.line() != 0) place += fmt::format(":{}", at.line());
  if (at.excerpt) place += fmt::format(":{}", at.excerpt->first_column);
  return place;
}

void WriteHumanText(const Report& report, HumanStyle style, support::TextStream& out) {
  Printer printer(report, style.colour, out);
  Folding folding(report, style.folds);
  for (const Diagnostic& diagnostic : report.diagnostics) {
    if (folding.Shows(diagnostic)) printer.Print(diagnostic);
  }
  out += folding.Text(report.script);
}

bool IsLong(const std::vector<MessageCount>& by_message) {
  return std::any_of(by_message.begin(), by_message.end(),
                     [](const MessageCount& count) { return count.all > kFew; });
}

std::string MessageTable(const std::vector<MessageCount>& by_message) {
  std::string table;
  for (const MessageCount& count : by_message) {
    if (count.all == 0) continue;
    table += fmt::format("{:>9}  {} ({})\n", count.all, count.row->id, WordOf(count.row->level));
  }
  return table;
}

std::string SummaryLine(const Report& report) {
  std::string others;
  const auto add = [&](std::size_t count, std::string_view what) {
    if (count > 0) others += fmt::format("{}{} {}", others.empty() ? " (" : ", ", count, what);
  };
  add(report.suppressed, "suppressed");
  add(report.in_baseline, "in the baseline");
  if (!others.empty()) others += ')';
  return fmt::format("{}: {}, {}{}\n", support::SafePath(report.script),
                     support::CountText(report.errors, "error"),
                     support::CountText(report.warnings, "warning"), others);
}

}  // namespace rux::diagnostics
