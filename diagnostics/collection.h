// The diagnostics of a run, as they come in.
#ifndef DIAGNOSTICS_COLLECTION_H_
#define DIAGNOSTICS_COLLECTION_H_

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/severities.h"
#include "findings/tally.h"

namespace rux::diagnostics {

// Takes warnings out of what is reported.
class Filter {
 public:
  virtual ~Filter() = default;

  // Whether it may take any warning with the message.
  virtual bool Concerns(const MessageRow& row) const = 0;
  virtual bool Takes(const Diagnostic& warning) = 0;
};

// Counts all, but makes and keeps only what may be shown: of each message, as many as are shown at
// most of all. Which are shown depends on their places.
class Collection {
 public:
  // `has_remarks`: what is a note by itself is shown, too.
  Collection(const Severities& severities, ruxcomp::findings::Most most_errors,
             ruxcomp::findings::Most most_warnings, bool has_remarks)
      : severities_(severities),
        most_errors_(most_errors),
        most_warnings_(most_warnings),
        has_remarks_(has_remarks) {}

  // What the comments of the script allow counts as suppressed.
  void SetAllowances(Filter* allowances) { allowances_ = allowances; }

  // What the baseline takes is not reported.
  void SetBaseline(Filter* baseline) { baseline_ = baseline; }

  // One more with the message and the severity that it has by itself. make() is called when it is
  // shown.
  template <class Make>
  void Add(const MessageRow& row, Severity severity, Make make) {
    const Ruling ruling = severities_.RulingOn(row, severity);
    std::optional<Diagnostic> made;
    if (severity == Severity::kWarning && IsFiltered(row)) {
      made = make();
      if (IsTaken(*made, ruling)) return;
    }
    if (!Count(row, ruling, 1)) return;
    Diagnostic& added = kept_.emplace_back(made ? std::move(*made) : make());
    added.severity = ruling.severity;
  }

  // So many more, after as many of the message as are shown.
  void AddRest(const MessageRow& row, Severity severity, std::size_t count);

  // What there is to say of all the others; shown in any case.
  void AddConclusion(Diagnostic diagnostic) { conclusions_.push_back(std::move(diagnostic)); }

  // What is shown of those that are kept, which are in the order of their places by now: up to a
  // limit of errors and, before the last of them, up to another limit of warnings and of remarks;
  // then the conclusions. Called once, at the end.
  std::vector<Diagnostic> TakeShown();

  std::size_t errors() const { return CountOf(Severity::kError); }
  std::size_t warnings() const { return CountOf(Severity::kWarning); }
  // What becomes of a message that has its own severity.
  Severity SeverityOf(const MessageRow& row) const {
    return severities_.RulingOn(row, row.severity).severity;
  }
  // Of a message; those that are dropped are not counted.
  std::size_t CountOf(const MessageRow& row) const;
  // Calls use(row, count) for each message that was counted, in no order.
  template <class Use>
  void ForEachCount(Use use) const {
    for (const auto& [row, count] : counts_by_row_) use(*row, count);
  }
  // Warnings that a setting drops, or a comment of the script.
  std::size_t suppressed() const { return suppressed_; }
  // Warnings that the baseline takes.
  std::size_t in_baseline() const { return in_baseline_; }
  // Errors and warnings that are not shown. Known after TakeShown.
  std::size_t not_shown() const { return not_shown_; }

  std::vector<Diagnostic>& kept() { return kept_; }

 private:
  std::size_t CountOf(Severity severity) const { return counts_[static_cast<int>(severity)]; }
  ruxcomp::findings::Most MostOf(Severity severity) const {
    return severity == Severity::kError ? most_errors_ : most_warnings_;
  }
  bool IsFiltered(const MessageRow& row) const {
    return (allowances_ != nullptr && allowances_->Concerns(row)) ||
           (baseline_ != nullptr && baseline_->Concerns(row));
  }
  // Counts a warning that a filter takes.
  bool IsTaken(const Diagnostic& warning, const Ruling& ruling);
  // Answers whether to keep the first one.
  bool Count(const MessageRow& row, const Ruling& ruling, std::size_t count);

  const Severities& severities_;
  const ruxcomp::findings::Most most_errors_;
  const ruxcomp::findings::Most most_warnings_;
  const bool has_remarks_;
  Filter* allowances_ = nullptr;
  Filter* baseline_ = nullptr;
  std::vector<Diagnostic> kept_;
  std::vector<Diagnostic> conclusions_;
  std::size_t counts_[3] = {};  // by severity
  std::unordered_map<const MessageRow*, std::size_t> counts_by_row_;
  std::size_t not_shown_ = 0;
  std::size_t suppressed_ = 0;
  std::size_t in_baseline_ = 0;
};

}  // namespace rux::diagnostics

#endif  // DIAGNOSTICS_COLLECTION_H_
