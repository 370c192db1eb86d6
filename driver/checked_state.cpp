#include "driver/checked_state.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "diagnostics/diagnostic.h"
#include "diagnostics/report.h"
#include "driver/compile_run.h"
#include "findings/message_row.h"
#include "support/folders.h"

namespace rux::driver {

using ruxcomp::findings::Level;
using ruxcomp::findings::Severity;

CheckedState::CheckedState(const Checked& checked)
    : is_complete_(!checked.failure && checked.found.report.is_complete) {
  for (const diagnostics::Diagnostic& diagnostic : checked.found.report.diagnostics) {
    const bool is_error = diagnostic.severity == Severity::kError;
    const bool is_style = diagnostic.row->level == Level::kStyle;
    if (!is_error && (is_style || diagnostic.severity != Severity::kWarning)) continue;
    const std::string key =
        fmt::format("{}\n{}\n{}\n{}", diagnostic.row->id, support::WholeName(diagnostic.at.path),
                    diagnostic.section.value_or(""), diagnostic.entry.value_or(""));
    (is_error ? errors_ : warnings_)
        .emplace(key, fmt::format("{}: {}{}", diagnostics::PlaceText(diagnostic.at),
                                  WholeText(diagnostic), Label(diagnostic)));
  }
}

const std::string* CheckedState::FindNew(const Findings& now, const Findings& before) {
  const auto found = std::find_if(now.begin(), now.end(), [&](const auto& finding) {
    return before.count(finding.first) < now.count(finding.first);
  });
  return found == now.end() ? nullptr : &found->second;
}

std::string CheckedState::WhyWorseThan(const CheckedState& before) const {
  if (!is_complete_ || !before.is_complete_) return "no complete check";
  const std::string* warning = FindNew(warnings_, before.warnings_);
  if (warning != nullptr) return "a new warning: " + *warning;
  const bool are_all_gone = !before.errors_.empty() &&
                            std::none_of(errors_.begin(), errors_.end(), [&](const auto& error) {
                              return before.errors_.count(error.first) != 0;
                            });
  if (are_all_gone || errors_.size() <= before.errors_.size()) return "";
  return "a new error: " + *FindNew(errors_, before.errors_);
}

}  // namespace rux::driver
