#include "rules/rule_report.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "support/safe_text.h"

namespace rux::rules {
namespace {

diagnostics::Diagnostic MakeWarning(RuleId rule, std::string_view text) {
  const diagnostics::MessageRow& row = RowOf(rule);
  diagnostics::Diagnostic warning;
  warning.id = row.number;
  warning.severity = row.severity;
  // What it mentions may be as long as a script; the line that is shown below it has more of it.
  warning.text = support::Shortened(text);
  return warning;
}

diagnostics::Diagnostic MakeWarning(RuleId rule, const Place& place, std::string_view text) {
  diagnostics::Diagnostic warning = MakeWarning(rule, text);
  warning.anchor = diagnostics::Anchor::kPlace;
  warning.at.source = place.file;
  warning.at.first_line = place.line;
  return warning;
}

// Where a part begins in the value of an item; none for a text from elsewhere.
std::optional<std::size_t> OffsetInValue(const reader::Item& item, std::string_view part) {
  const std::less<> is_before;
  const char* end = item.value.data() + item.value.size();
  const bool is_inside =
      !is_before(part.data(), item.value.data()) && !is_before(end, part.data() + part.size());
  if (!is_inside) return std::nullopt;
  return static_cast<std::size_t>(part.data() - item.value.data());
}

}  // namespace

Warning& Warning::Note(std::string text, const Place& place) {
  diagnostics::Note note{std::move(text), {}};
  note.at.source = place.file;
  note.at.first_line = place.line;
  diagnostic_.notes.push_back(std::move(note));
  return *this;
}

Warning& Warning::Note(std::string text, const ItemRef& item, std::string_view part) {
  Note(std::move(text), item.place());
  diagnostic_.notes.back().at.value_at = OffsetInValue(*item.item, part);
  return *this;
}

Warning& Warning::ExpectWord() {
  diagnostic_.expects_word = true;
  return *this;
}

Warning& Warning::Suggest(std::string meant) {
  diagnostic_.suggestion = std::move(meant);
  return *this;
}

Warning RuleReport::Add(RuleId rule, const ItemRef& item, std::string_view text,
                        std::string_view meant) {
  diagnostics::Diagnostic warning = MakeWarning(rule, item.place(), text);
  warning.section = std::string(item.section->name);
  warning.entry = std::string(item.name());
  if (!meant.empty()) {
    warning.arguments.emplace_back(std::string(meant));
    warning.at.value_at = OffsetInValue(*item.item, meant);
  }
  return Add(std::move(warning));
}

Warning RuleReport::Add(RuleId rule, const ScriptSection& section, std::string_view text) {
  diagnostics::Diagnostic warning =
      MakeWarning(rule, Place{section.file, section.section->line}, text);
  warning.section = std::string(section.section->name);
  return Add(std::move(warning));
}

Warning RuleReport::Add(RuleId rule, const Place& place, std::string_view text) {
  return Add(MakeWarning(rule, place, text));
}

Warning RuleReport::Add(RuleId rule, std::string_view text) { return Add(MakeWarning(rule, text)); }

Warning RuleReport::Add(diagnostics::Diagnostic warning) {
  return Warning(warnings_.emplace_back(std::move(warning)));
}

void RuleReport::DropRepeated() {
  using Key = std::tuple<diagnostics::MessageId, const ScriptFile*, std::uint32_t,
                         std::optional<std::size_t>, std::string_view>;
  std::set<Key> known;
  std::vector<diagnostics::Diagnostic> kept;
  // The keys look into what is kept, which must not move.
  kept.reserve(warnings_.size());
  const auto key_of = [](const diagnostics::Diagnostic& warning) {
    const diagnostics::Location& at = warning.at;
    return Key(warning.id, at.source, at.first_line, at.value_at, warning.text);
  };
  for (diagnostics::Diagnostic& warning : warnings_) {
    if (known.count(key_of(warning)) != 0) continue;
    known.insert(key_of(kept.emplace_back(std::move(warning))));
  }
  warnings_ = std::move(kept);
}

}  // namespace rux::rules
