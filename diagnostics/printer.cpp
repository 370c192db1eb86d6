#include "diagnostics/printer.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "support/safe_text.h"

namespace rux::diagnostics {
namespace {

constexpr std::string_view kBold = "\x1B[1m";
constexpr std::string_view kRed = "\x1B[1;31m";
constexpr std::string_view kMagenta = "\x1B[1;35m";
constexpr std::string_view kCyan = "\x1B[1;36m";
constexpr std::string_view kGreen = "\x1B[1;32m";
constexpr std::string_view kPlain = "\x1B[0m";

// Of a longer source line only the surroundings of the offending text are shown.
constexpr std::size_t kLongestLine = 160;
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

// How many columns a byte takes at most.
std::size_t WidthOf(char byte) {
  static const std::array<std::size_t, 256> widths = [] {
    std::array<std::size_t, 256> each{};
    for (std::size_t i = 0; i < each.size(); ++i) {
      const char c = static_cast<char>(i);
      each[i] = support::SafeLine({&c, 1}).size();
    }
    return each;
  }();
  return widths[static_cast<unsigned char>(byte)];
}

// Part of a line, which grows byte by byte up to a number of columns.
struct Window {
  void GrowLeft(std::string_view text, std::size_t most) {
    while (begin > 0 && columns + WidthOf(text[begin - 1]) <= most) {
      columns += WidthOf(text[--begin]);
    }
  }
  void GrowRight(std::string_view text, std::size_t most) {
    while (end < text.size() && columns + WidthOf(text[end]) <= most) {
      columns += WidthOf(text[end++]);
    }
  }

  std::size_t begin;
  std::size_t end;
  std::size_t columns = 0;
};

// Cuts a long line down, at whole characters.
Shown Clipped(const Excerpt& whole) {
  const std::string_view text = whole.text;
  Window window{whole.begin, whole.begin};
  window.GrowLeft(text, kShownBefore);
  window.GrowRight(text, kLongestLine);
  window.GrowLeft(text, kLongestLine);
  std::size_t begin = window.begin;
  std::size_t end = window.end;
  while (begin < whole.begin && support::IsInsideCharacter(text[begin])) ++begin;
  while (end < text.size() && end > whole.begin && support::IsInsideCharacter(text[end])) --end;
  const std::string_view left = begin > 0 ? "..." : "";
  const std::string_view right = end < text.size() ? "..." : "";
  Shown shown{std::string(left), left.size() + whole.begin - begin, 0};
  shown.text.append(text, begin, end - begin).append(right);
  shown.length = std::min(whole.length, end - whole.begin);
  return shown;
}

// What stands under the text before the offending one: blanks, and its tabs, so that both lines run
// alike.
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
  explicit Printer(bool colour) : colour_(colour) {}

  void Print(const Diagnostic& diagnostic) {
    PrintMessage(diagnostic.at, diagnostic.severity, WholeText(diagnostic), Label(diagnostic));
    if (diagnostic.suggestion) PrintAside(SuggestionText(diagnostic));
    for (const Note& note : diagnostic.notes) PrintNote(note);
    // Of several diagnostics in a row that stand in one file, the first tells how it is reached.
    if (diagnostic.at.path != last_path_) {
      for (const Note& include : diagnostic.included_from) PrintNote(include);
    }
    last_path_ = diagnostic.at.path;
  }

  std::string TakeText() { return std::move(out_); }

 private:
  void PrintMessage(const Location& at, Severity severity, std::string_view text,
                    std::string_view id) {
    std::string place = support::SafeText(at.path.empty() ? "rux" : at.path);
    if (at.line() != 0) place += fmt::format(":{}", at.line());
    if (at.excerpt) place += fmt::format(":{}", at.excerpt->first_column);
    out_ += Paint(place + ":", kBold) + ' ' +
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

  const bool colour_;
  std::string last_path_;
  std::string out_;
};

std::string Counted(std::size_t count, std::string_view noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

}  // namespace

std::string HumanText(const Report& report, bool colour) {
  Printer printer(colour);
  for (const Diagnostic& diagnostic : report.diagnostics) printer.Print(diagnostic);
  std::string text = printer.TakeText();
  if (report.not_shown > 0) {
    text += fmt::format("rux: {} not shown\n", Counted(report.not_shown, "more diagnostic"));
  }
  return text;
}

std::string SummaryLine(const Report& report) {
  return fmt::format("{}: {}, {}\n", support::SafeText(report.script),
                     Counted(report.errors, "error"), Counted(report.warnings, "warning"));
}

}  // namespace rux::diagnostics
