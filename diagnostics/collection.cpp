#include "diagnostics/collection.h"

#include <cstddef>

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
  counts_by_row_[&row] += count;
  // What follows the last error that is shown is not shown, whatever it is.
  const bool is_closed = most_errors_ != 0 && errors() >= most_errors_;
  counts_[static_cast<int>(severity)] += count;
  if (severity == Severity::kNote && !has_remarks_) return false;
  const ruxcomp::findings::Most most = severity == Severity::kError ? most_errors_ : most_warnings_;
  const bool is_shown = !is_closed && ruxcomp::findings::IsWithin(CountOf(severity), most);
  if (!is_shown && severity != Severity::kNote) not_shown_ += count;
  return is_shown;
}

}  // namespace rux::diagnostics
