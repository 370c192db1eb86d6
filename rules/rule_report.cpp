#include "rules/rule_report.h"

#include <string>
#include <string_view>
#include <utility>

#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "rules/script_item.h"
#include "support/safe_text.h"
#include "support/text_file.h"

namespace rux::rules {

Warning& Warning::Note(std::string text, const Place& place) {
  if (diagnostic_ == nullptr) return *this;
  diagnostic_->notes.push_back(
      {std::move(text), diagnostics::LocationIn(*place.file, place.file->RangeAt(place.line))});
  return *this;
}

Warning& Warning::Note(std::string text, const ItemRef& item, std::string_view part) {
  if (diagnostic_ == nullptr) return *this;
  diagnostic_->notes.push_back(
      {std::move(text), diagnostics::LocationIn(*item.file, item.file->RangeOf(part))});
  return *this;
}

Warning& Warning::Suggest(std::string meant) {
  if (diagnostic_ != nullptr) diagnostic_->suggestion = std::move(meant);
  return *this;
}

Warning& Warning::Fix(support::ByteRange range, std::string text) {
  if (diagnostic_ != nullptr) diagnostic_->fix = diagnostics::Fix{range, std::move(text), true};
  return *this;
}

Warning& Warning::Offer(support::ByteRange range, std::string text) {
  if (diagnostic_ != nullptr) diagnostic_->fix = diagnostics::Fix{range, std::move(text), false};
  return *this;
}

Warning RuleReport::Add(const ruxcomp::findings::MessageRow& row, const ItemRef& item,
                        const WarningText& text, std::string_view meant) {
  const std::string_view at = meant.empty() ? item.name() : meant;
  diagnostics::Diagnostic* warning = Begin(row, {item.file, item.file->RangeOf(at)}, text);
  if (warning != nullptr) {
    warning->section = support::Excerpted(item.section->name);
    warning->entry = support::Excerpted(item.name());
    if (!meant.empty()) warning->arguments.emplace_back(support::Excerpted(meant));
  }
  return Warning(warning);
}

Warning RuleReport::Add(const ruxcomp::findings::MessageRow& row, const ScriptSection& section,
                        const WarningText& text) {
  const ruxcomp::reader::Section& found = *section.section;
  diagnostics::Diagnostic* warning =
      Begin(row, {section.file, section.file->RangeOf(found.header)}, text);
  if (warning != nullptr) warning->section = support::Excerpted(found.name);
  return Warning(warning);
}

Warning RuleReport::Add(const ruxcomp::findings::MessageRow& row, const Place& place,
                        const WarningText& text) {
  return Add(row, Bytes{place.file, place.file->RangeOfLine(place.line)}, text);
}

Warning RuleReport::Add(const ruxcomp::findings::MessageRow& row, const Bytes& bytes,
                        const WarningText& text) {
  return Warning(Begin(row, bytes, text));
}

Warning RuleReport::Add(const ruxcomp::findings::MessageRow& row, const WarningText& text) {
  return Warning(Begin(row, {}, text));
}

diagnostics::Diagnostic* RuleReport::Begin(const ruxcomp::findings::MessageRow& row,
                                           const Bytes& bytes, const WarningText& text) {
  if (drops_repeated_ && IsRepeated(row, bytes, text)) return nullptr;
  const bool may_go = keeping_.may_go && keeping_.may_go(row, bytes.file);
  if (!may_go && !warnings_.tally.Add(row)) return nullptr;
  diagnostics::Diagnostic& warning = warnings_.kept.emplace_back();
  warning.row = &row;
  warning.severity = row.severity;
  // What it mentions may be as long as a script; the line that is shown below it has more of it.
  warning.text = support::Shortened(text.Made());
  if (bytes.file != nullptr) warning.at = diagnostics::LocationIn(*bytes.file, bytes.range);
  return &warning;
}

bool RuleReport::IsRepeated(const ruxcomp::findings::MessageRow& row, const Bytes& bytes,
                            const WarningText& text) {
  const Known known(&row, bytes.file, bytes.range.begin, TextHash()(text.Made()));
  return !known_.insert(known).second;
}

}  // namespace rux::rules
