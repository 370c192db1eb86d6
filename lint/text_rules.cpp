// How files are written, line by line.
#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string_view>

#include "lint/lint_list.h"
#include "lint/lint_rows.h"
#include "lint/lint_rule.h"
#include "rules/rule.h"
#include "rules/rule_report.h"
#include "rules/script_item.h"
#include "ruxcomp/language/sections.h"

namespace rux::lint {
namespace {

using rules::RuleContext;

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

class EmptySectionRule : public rules::Rule {
 public:
  explicit EmptySectionRule(const RuleContext& context) : context_(context) {}

  // In the other kinds, keys are missing.
  bool WantsSections(language::SectionId kind) const override {
    const auto& templates = language::KindOf(kind).templates;
    return templates.empty();
  }
  void BeginSection(const rules::ScriptSection& section, language::SectionId) override {
    if (section.section->item_count != 0) return;
    context_.report.Add(RowOf(RuleId::kEmptySection), section, "the section has no items");
  }

 private:
  const RuleContext context_;
};

class RepeatedIncludeRule : public rules::Rule {
 public:
  explicit RepeatedIncludeRule(const RuleContext& context) : context_(context) {}

  void EndScript(const rules::Script& script) override {
    std::set<const rules::ScriptFile*> known;
    for (const auto& opening : script.openings()) {
      if (known.insert(opening.file).second) continue;
      const auto includer = script.IncluderOf(opening);
      if (includer.item == nullptr) continue;
      const rules::ItemRef item{includer.opening->file, includer.section, includer.item};
      context_.report.Add(RowOf(RuleId::kRepeatedInclude), item, [&] {
        return fmt::format("{} is included before", opening.file->path());
      });
    }
  }

 private:
  const RuleContext context_;
};

// Looks at the bytes of each file once.
class LineRule : public rules::Rule {
 public:
  explicit LineRule(const RuleContext& context) : context_(context) {}

  void EndScript(const rules::Script& script) override {
    for (const rules::ScriptFile* file : rules::FilesOf(script)) {
      for (std::uint32_t line = 1; line <= file->line_count(); ++line) CheckLine(*file, line);
      CheckEnd(*file);
    }
  }

 private:
  static constexpr std::size_t kLongest = 120;

  void CheckLine(const rules::ScriptFile& file, std::uint32_t line) const {
    const std::string_view text = file.Line(line);
    if (!text.empty() && IsBlank(text.back())) {
      const std::size_t end = text.find_last_not_of(" \t") + 1;
      const rules::Bytes blanks = BytesOf(file, line, end, text.size());
      rules::Warning warning =
          context_.report.Add(RowOf(RuleId::kTrailingBlank), blanks, "the line ends with blanks");
      // Without them, the backslash would join the next line.
      if (end == 0 || text[end - 1] != '\\') warning.Fix(blanks.range, "");
    }
    for (std::size_t i = text.find('\t'); i != std::string_view::npos; i = text.find('\t', i + 1)) {
      const bool is_mixed =
          (i > 0 && text[i - 1] == ' ') || (i + 1 < text.size() && text[i + 1] == ' ');
      if (!is_mixed) continue;
      context_.report.Add(RowOf(RuleId::kMixedBlanks), BytesOf(file, line, i, i + 1),
                          "this tab is next to a space");
      break;
    }
    if (text.size() > kLongest) CheckLength(file, line, text);
  }

  void CheckLength(const rules::ScriptFile& file, std::uint32_t line, std::string_view text) const {
    std::size_t length = 0;
    std::size_t allowed = text.size();
    for (std::size_t i = 0; i < text.size(); ++i) {
      const bool continues = (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
      if (!continues && length++ == kLongest) allowed = i;
    }
    if (length <= kLongest) return;
    context_.report.Add(RowOf(RuleId::kLongLine), BytesOf(file, line, allowed, text.size()),
                        [&] { return fmt::format("the line has {} characters", length); });
  }

  void CheckEnd(const rules::ScriptFile& file) const {
    const std::string_view text = file.text();
    if (text.empty() || text.back() == '\n') return;
    const std::uint32_t line = file.line_count();
    const std::size_t size = file.Line(line).size();
    const rules::Bytes end = BytesOf(file, line, size, size);
    rules::Warning warning =
        context_.report.Add(RowOf(RuleId::kMissingLineEnd), end, "the last line has no line end");
    // At the end of a text, a backslash joins nothing and belongs to the value.
    if (text.back() != '\\') warning.Fix(end.range, LineEndOf(text));
  }

  static const char* LineEndOf(std::string_view text) {
    const std::size_t first = text.find('\n');
    const bool has_return = first != std::string_view::npos && first > 0 && text[first - 1] == '\r';
    return has_return ? "\r\n" : "\n";
  }

  static rules::Bytes BytesOf(const rules::ScriptFile& file, std::uint32_t line, std::size_t begin,
                              std::size_t end) {
    const std::uint32_t start = file.LineStart(line);
    return {&file,
            {start + static_cast<std::uint32_t>(begin), start + static_cast<std::uint32_t>(end)}};
  }

  const RuleContext context_;
};

}  // namespace

std::unique_ptr<rules::Rule> MakeEmptySectionRule(const LintContext& context) {
  return std::make_unique<EmptySectionRule>(context);
}
std::unique_ptr<rules::Rule> MakeRepeatedIncludeRule(const LintContext& context) {
  return std::make_unique<RepeatedIncludeRule>(context);
}
std::unique_ptr<rules::Rule> MakeLineRule(const LintContext& context) {
  return std::make_unique<LineRule>(context);
}

}  // namespace rux::lint
