#include "diagnostics/collection.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/severities.h"
#include "findings/tally.h"

namespace rux::diagnostics {

void Collection::AddRest(const MessageRow& row, Severity severity, std::size_t count) {
  Count(row, severities_.RulingOn(row, severity), count);
}

std::size_t Collection::CountOf(const MessageRow& row) const {
  const auto found = counts_by_row_.find(&row);
  return found == counts_by_row_.end() ? 0 : found->second;
}

bool Collection::IsTaken(const Diagnostic& warning, const Ruling& ruling) {
  // Also one that a setting drops makes use of the comment.
  if (allowances_ != nullptr && allowances_->Takes(warning)) {
    if (!ruling.is_dropped || ruling.is_suppressed) ++suppressed_;
    return true;
  }
  if (ruling.is_dropped || baseline_ == nullptr || !baseline_->Takes(warning)) return false;
  ++in_baseline_;
  return true;
}

bool Collection::Count(const MessageRow& row, const Ruling& ruling, std::size_t count) {
  if (ruling.is_suppressed) suppressed_ += count;
  if (ruling.is_dropped) return false;
  const Severity severity = ruling.severity;
  std::size_t& of_row = counts_by_row_[&row];
  of_row += count;
  counts_[static_cast<int>(severity)] += count;
  if (severity == Severity::kNote && !has_remarks_) return false;
  return ruxcomp::findings::IsWithin(of_row, MostOf(severity));
}

std::vector<Diagnostic> Collection::TakeShown() {
  std::vector<Diagnostic> shown;
  std::size_t counts[3] = {};
  const auto count_of = [&](Severity severity) -> std::size_t& {
    return counts[static_cast<int>(severity)];
  };
  for (Diagnostic& each : kept_) {
    // What follows the last error that is shown is not shown, whatever it is.
    if (most_errors_ != 0 && count_of(Severity::kError) >= most_errors_) break;
    const ruxcomp::findings::Most most = MostOf(each.severity);
    if (most != 0 && count_of(each.severity) >= most) continue;
    ++count_of(each.severity);
    shown.push_back(std::move(each));
  }
  not_shown_ = errors() + warnings() - count_of(Severity::kError) - count_of(Severity::kWarning);
  std::move(conclusions_.begin(), conclusions_.end(), std::back_inserter(shown));
  return shown;
}

}  // namespace rux::diagnostics
