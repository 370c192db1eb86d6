// Texts of which a part gets lost.
#include <fmt/format.h>

#include <set>

#include "tool/traps/trap_rules.h"

namespace rux {
namespace {

constexpr std::string_view kBlanks = " \t";

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(kBlanks) == std::string_view::npos;
}

bool IsComment(std::string_view line) {
  const std::size_t first = line.find_first_not_of(kBlanks);
  return first != std::string_view::npos && (line[first] == '#' || line[first] == ';');
}

// Whether a comment stands in the line, at its beginning or behind a blank, outside quotes.
bool HasComment(std::string_view line) {
  if (IsComment(line)) return true;
  bool is_quoted = false;
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (line[i] == '"') is_quoted = !is_quoted;
    const bool is_sign = line[i] == '#' || line[i] == ';';
    if (is_sign && !is_quoted && kBlanks.find(line[i - 1]) != std::string_view::npos) return true;
  }
  return false;
}

// Whether something stands beside the first quotes of a part of the value.
bool HasTextBesideQuotes(std::string_view value) {
  while (true) {
    const std::size_t quote = value.find('"');
    const std::size_t comma = value.find(',');
    if (quote == std::string_view::npos) return false;
    if (comma < quote) {
      value.remove_prefix(comma + 1);
      continue;
    }
    const std::size_t closing = value.find('"', quote + 1);
    if (!IsBlank(value.substr(0, quote))) return true;
    if (closing == std::string_view::npos) return false;
    value.remove_prefix(closing + 1);
    const std::size_t next = value.find(',');
    if (!IsBlank(value.substr(0, next))) return true;
    if (next == std::string_view::npos) return false;
    value.remove_prefix(next + 1);
  }
}

class TextTraps : public TrapRules {
 public:
  explicit TextTraps(TrapReport& report) : report_(report) {}

  bool BeginSection(const SourceSection&, std::uint32_t) override { return true; }

  void See(const ScriptItem& item) override {
    const std::string_view value = item.item->value;
    // A value that is its own first part has no quotes.
    if (item.first().size() == value.size() || !HasTextBesideQuotes(value)) return;
    std::string taken;
    for (const std::string_view part : item.parts) {
      taken += fmt::format("{}\"{}\"", taken.empty() ? "" : ", ", part);
    }
    report_.Add(MessageId::kTextBesideQuotes, item,
                fmt::format("text beside double quotes is dropped: what is left is {}", taken));
  }

  void End(const SourceView& sources) override {
    std::set<const SourceFile*> seen;
    for (const SourceSection& section : sources.sections()) {
      if (seen.insert(section.file).second) SeeFile(*section.file);
    }
  }

 private:
  void SeeFile(const SourceFile& file) {
    // Rare, so that lines are counted only where there is one.
    if (file.text().find("\\\n") == std::string::npos &&
        file.text().find("\\\r\n") == std::string::npos) {
      return;
    }
    bool goes_on = false;  // the line is part of a comment that was told of
    for (std::uint32_t number = 1; number < file.line_count(); ++number) {
      const std::string_view line = file.Line(number);
      const bool joins = !line.empty() && line.back() == '\\';
      const bool is_comment = joins && (goes_on || HasComment(line));
      const std::string_view next = is_comment ? file.Line(number + 1) : std::string_view();
      if (is_comment && !goes_on && !IsBlank(next) && !IsComment(next)) Tell(file, number);
      goes_on = is_comment;
    }
  }

  void Tell(const SourceFile& file, std::uint32_t line) {
    Diagnostic& warning =
        report_.Add(MessageId::kJoinedComment,
                    "the comment ends in a backslash, so that the next line belongs to it");
    warning.anchor = Anchor::kPlace;
    warning.at.source = &file;
    warning.at.first_line = line;
  }

  TrapReport& report_;
};

}  // namespace

std::unique_ptr<TrapRules> MakeTextTraps(const DefinedWordTable&, TrapReport& report) {
  return std::make_unique<TextTraps>(report);
}

}  // namespace rux
