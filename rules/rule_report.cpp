#include "rules/rule_report.h"

#include <cstdint>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "rules/rule_rows.h"
#include "rules/script_item.h"
#include "support/safe_text.h"
#include "support/text_file.h"

namespace rux::rules {
namespace {

diagnostics::Diagnostic MakeWarning(RuleId rule, std::string_view text) {
  diagnostics::Diagnostic warning;
  warning.row = &RowOf(rule);
  warning.severity = warning.row->severity;
  // What it mentions may be as long as a script; the line that is shown below it has more of it.
  warning.text = support::Shortened(text);
  return warning;
}

// About a text that the reader handed out.
diagnostics::Diagnostic MakeWarning(RuleId rule, const ScriptFile& file, std::string_view meant,
                                    std::string_view text) {
  diagnostics::Diagnostic warning = MakeWarning(rule, text);
  warning.at = diagnostics::LocationIn(file, file.RangeOf(meant));
  return warning;
}

}  // namespace

Warning& Warning::Note(std::string text, const Place& place) {
  diagnostic_.notes.push_back(
      {std::move(text), diagnostics::LocationIn(*place.file, place.file->RangeAt(place.line))});
  return *this;
}

Warning& Warning::Note(std::string text, const ItemRef& item, std::string_view part) {
  diagnostic_.notes.push_back(
      {std::move(text), diagnostics::LocationIn(*item.file, item.file->RangeOf(part))});
  return *this;
}

Warning& Warning::Suggest(std::string meant) {
  diagnostic_.suggestion = std::move(meant);
  return *this;
}

Warning RuleReport::Add(RuleId rule, const ItemRef& item, std::string_view text,
                        std::string_view meant) {
  diagnostics::Diagnostic warning =
      MakeWarning(rule, *item.file, meant.empty() ? item.name() : meant, text);
  warning.section = std::string(item.section->name);
  warning.entry = std::string(item.name());
  if (!meant.empty()) warning.arguments.emplace_back(std::string(meant));
  return Add(std::move(warning));
}

Warning RuleReport::Add(RuleId rule, const ScriptSection& section, std::string_view text) {
  diagnostics::Diagnostic warning = MakeWarning(rule, *section.file, section.section->header, text);
  warning.section = std::string(section.section->name);
  return Add(std::move(warning));
}

Warning RuleReport::Add(RuleId rule, const Place& place, std::string_view text) {
  diagnostics::Diagnostic warning = MakeWarning(rule, text);
  warning.at = diagnostics::LocationIn(*place.file, place.file->RangeOfLine(place.line));
  return Add(std::move(warning));
}

Warning RuleReport::Add(RuleId rule, std::string_view text) { return Add(MakeWarning(rule, text)); }

Warning RuleReport::Add(diagnostics::Diagnostic warning) {
  return Warning(warnings_.emplace_back(std::move(warning)));
}

void RuleReport::DropRepeated() {
  using Key = std::tuple<const diagnostics::MessageRow*, const support::TextFile*, std::uint32_t,
                         std::string_view>;
  std::set<Key> known;
  std::vector<diagnostics::Diagnostic> kept;
  // The keys look into what is kept, which must not move.
  kept.reserve(warnings_.size());
  const auto key_of = [](const diagnostics::Diagnostic& warning) {
    const diagnostics::Location& at = warning.at;
    return Key(warning.row, at.file, at.range.begin, warning.text);
  };
  for (diagnostics::Diagnostic& warning : warnings_) {
    if (known.count(key_of(warning)) != 0) continue;
    known.insert(key_of(kept.emplace_back(std::move(warning))));
  }
  warnings_ = std::move(kept);
}

}  // namespace rux::rules
