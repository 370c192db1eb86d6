#include "advice/consequences.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "advice/lost_items.h"
#include "advice/message_advice.h"
#include "advice/missing.h"
#include "advice/places.h"
#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "rules/rule_report.h"
#include "run/log.h"
#include "run/run.h"
#include "ruxcomp/language/sections.h"
#include "support/text_file.h"

namespace rux::advice {
namespace {

namespace language = ruxcomp::language;
namespace rows = ruxcomp::findings::rows;
using diagnostics::Diagnostic;
using diagnostics::MessageRow;
using diagnostics::Severity;
using run::Finding;

// Whether the rule looks at all sections of the kind.
bool IsAboutAll(const MessageRow& rule, const language::SectionKind* kind) {
  if (&rule == &RowOf(rules::RuleId::kMissingSection)) {
    return kind == nullptr || kind->uniqueness == language::Uniqueness::kSingle;
  }
  return &rule == &RowOf(rules::RuleId::kChildgroupMismatch) &&
         (kind == nullptr || kind->source == language::SECTION_GROUP);
}

// Whether the warning is in a section that has items of another one.
bool IsAmong(const Lost& lost, const Diagnostic& warning) {
  if (lost.section == nullptr || warning.at.file != lost.file) return false;
  return lost.file->SectionAt(lost.file->LineAt(warning.at.range.begin)) == lost.section;
}

}  // namespace

Consequences::Consequences(const run::Result& result, const diagnostics::Collection& collection)
    : result_(result), collection_(collection) {
  // What another reader found may be somewhere else in the files.
  if (result.has_foreign_reader) return;
  lost_.emplace(result);
  PlanLost();
  PlanMissing();
  PlanLocal();
  PlanMisspeltNames();
  Fold();
  FoldRests();
}

void Consequences::RemoveFrom(std::vector<Diagnostic>& warnings) const {
  if (!lost_) return;
  warnings.erase(std::remove_if(warnings.begin(), warnings.end(),
                                [&](const Diagnostic& each) { return Includes(each); }),
                 warnings.end());
}

bool Consequences::Includes(const Diagnostic& warning) const {
  const bool counts_children = warning.row == &RowOf(rules::RuleId::kChildgroupMismatch);
  if (counts_children && lacks_parent_) return true;
  return std::any_of(lost_->all().begin(), lost_->all().end(), [&](const Lost& lost) {
    return lost.cause != nullptr && HasError(*lost.cause) &&
           (IsAboutAll(*warning.row, lost.kind) || IsAmong(lost, warning));
  });
}

Severity Consequences::SeverityOf(const Finding& finding) const {
  return raised_.count(&finding) != 0 ? Severity::kError : SeverityOf(*finding.row);
}

// The check calls some messages errors and accepts the script all the same.
Severity Consequences::SeverityOf(const MessageRow& row) const {
  return row.lead.is_error && !result_.accepted ? Severity::kError : row.severity;
}

void Consequences::AddNotes(const Finding& cause, Diagnostic& diagnostic) const {
  const auto found = causes_.find(&cause);
  if (found == causes_.end()) return;
  std::vector<diagnostics::Note> notes = found->second.notes;
  if (const std::size_t far = found->second.far; far > 0) {
    const char* const verb = far == 1 ? " follows" : "s follow";
    const char* const others = found->second.is_one_of_several ? " or other missing files" : "";
    notes.push_back({fmt::format("{} error{} from this{}", far, verb, others), {}});
  }
  // What belongs to the cause itself comes before other places.
  std::stable_partition(notes.begin(), notes.end(),
                        [](const diagnostics::Note& note) { return note.at.path.empty(); });
  std::move(notes.begin(), notes.end(), std::back_inserter(diagnostic.notes));
}

void Consequences::PlanLost() {
  for (const Lost& lost : lost_->all()) {
    if (lost.cause == nullptr) continue;
    causes_[lost.cause].notes = lost.hints;
    for (const Finding* each : lost.misplaced) Plan(*each, *lost.cause);
  }
}

void Consequences::PlanMissing() {
  const std::vector<const Finding*> unread_files = FindUnreadFiles();
  for (const Finding& finding : result_.findings) {
    const auto missing = MissingOf(finding);
    if (!missing || cause_of_.count(&finding) != 0) continue;
    Lost* lost = lost_->Find(*missing);
    if (lost == nullptr && unread_files.empty()) continue;
    if (lost != nullptr && lost->cause == nullptr) {
      lost->cause = &finding;
      causes_[&finding].notes = lost->hints;
      continue;
    }
    const Finding& cause = lost != nullptr ? *lost->cause : *unread_files.front();
    Plan(finding, cause);
    if (lost == nullptr && unread_files.size() > 1) causes_[&cause].is_one_of_several = true;
    const bool is_far = !AreInOneSection(finding, cause);
    if (is_far && SeverityOf(*finding.row) == Severity::kError) ++causes_[&cause].far;
  }
}

std::vector<const Finding*> Consequences::FindUnreadFiles() const {
  std::vector<const Finding*> unread;
  for (const Finding& finding : result_.findings) {
    if (finding.row == &rows::kMissingInclude && IsError(finding)) unread.push_back(&finding);
  }
  for (const Lost& lost : lost_->all()) {
    const bool is_include = lost.kind != nullptr && lost.kind->source == language::SECTION_INCLUDE;
    if (is_include && lost.cause != nullptr) unread.push_back(lost.cause);
  }
  return unread;
}

void Consequences::Plan(const Finding& consequence, const Finding& cause) {
  const Finding* root = &cause;
  for (auto at = cause_of_.find(root); at != cause_of_.end(); at = cause_of_.find(root)) {
    root = at->second;
  }
  if (root == &consequence || !cause_of_.emplace(&consequence, root).second) return;
  causes_[root].consequences.push_back(&consequence);
}

void Consequences::Plan(const Finding& consequence, const Finding& cause, std::string text) {
  Diagnostic other;
  Places(result_.sources, "").Locate(consequence.origin, Underline::kPlace, other);
  Plan(consequence, cause);
  causes_[&cause].notes.push_back({std::move(text), other.at});
}

void Consequences::Fold() {
  for (const auto& [cause, planned] : causes_) {
    if (!HasError(*cause)) continue;
    folded_.insert(planned.consequences.begin(), planned.consequences.end());
    if (!IsError(*cause) && !planned.consequences.empty()) raised_.insert(cause);
  }
}

void Consequences::FoldRests() {
  std::map<const MessageRow*, const Finding*> folded;  // one of each message; null: not all are
  for (const Finding& finding : result_.findings) {
    const auto of_row = folded.try_emplace(finding.row, &finding).first;
    if (!Includes(finding)) of_row->second = nullptr;
  }
  result_.tally.ForEachRest([&](const MessageRow& row, std::size_t count) {
    const auto found = folded.find(&row);
    if (found == folded.end() || found->second == nullptr) return;
    folded_rest_.insert(&row);
    if (SeverityOf(row) == Severity::kError) causes_[cause_of_[found->second]].far += count;
  });
}

bool Consequences::IsError(const Finding& finding) const {
  return collection_.SeverityOf(*finding.row) == Severity::kError ||
         (!finding.row->may_be_lowered() && SeverityOf(*finding.row) == Severity::kError);
}

bool Consequences::HasError(const Finding& cause) const {
  const auto planned = causes_.find(&cause);
  return IsError(cause) ||
         (planned != causes_.end() &&
          std::any_of(planned->second.consequences.begin(), planned->second.consequences.end(),
                      [&](const Finding* each) { return IsError(*each); }));
}

}  // namespace rux::advice
