#include "driver/outcome.h"

#include <fmt/format.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/report.h"
#include "driver/listed.h"
#include "driver/messages.h"
#include "support/failure.h"
#include "support/number_text.h"
#include "support/safe_text.h"
#include "support/workers.h"

namespace rux::driver {

SharedCounts::SharedCounts(std::size_t count)
    : messages_(AllMessages().rows().size() + 1),
      size_(count * (sizeof(diagnostics::Counts) + messages_ * sizeof(diagnostics::MessageCount))),
      memory_(mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) {
  if (memory_ == MAP_FAILED) throw support::SystemFailure("cannot share", "memory");
  auto* by_message = reinterpret_cast<diagnostics::MessageCount*>(&(*this)[count]);
  for (std::size_t i = 0; i < count; ++i) {
    (*this)[i].by_message = by_message + i * messages_;
  }
}

SharedCounts::~SharedCounts() { munmap(memory_, size_); }

// The kernel's zeros are the counts of a script without messages.
diagnostics::Counts& SharedCounts::operator[](std::size_t i) const {
  return static_cast<diagnostics::Counts*>(memory_)[i];
}

void Outcome::Add(std::size_t i, const std::string& script, const support::JobResult& done) {
  ++scripts_;
  worst_ = std::max(worst_, done.status);
  if (done.status != support::ExitStatus::kDone) failed_.push_back(support::SafeText(script));
  if (done.status > support::ExitStatus::kFindings) ++undone_;
  if (done.status == support::ExitStatus::kWrongUsage) has_wrong_usage_ = true;
  if (!counts_[i].is_complete || done.status > support::ExitStatus::kFindings) is_complete_ = false;
}

diagnostics::Report Outcome::Total() const {
  diagnostics::Report all;
  all.script = support::CountText(scripts_, "script");
  all.is_complete = is_complete_;
  std::map<const diagnostics::MessageRow*, diagnostics::MessageCount> by_row;
  for (std::size_t i = 0; i < most_; ++i) {
    const diagnostics::Counts& one = counts_[i];
    all.errors += one.errors;
    all.warnings += one.warnings;
    all.not_shown += one.not_shown;
    all.suppressed += one.suppressed;
    all.in_baseline += one.in_baseline;
    for (const auto* each = one.by_message; each->row != nullptr; ++each) {
      diagnostics::MessageCount& sum = by_row[each->row];
      sum = {each->row, sum.all + each->all, sum.kept + each->kept};
    }
  }
  for (const auto& [row, count] : by_row) all.by_message.push_back(count);
  diagnostics::SortByCount(all.by_message);
  return all;
}

// Over several scripts, what occurs twice may be far apart.
bool Outcome::HasTable(const std::vector<diagnostics::MessageCount>& by_message) const {
  const auto is_repeated = [](const diagnostics::MessageCount& count) { return count.all > 1; };
  return diagnostics::IsLong(by_message) ||
         (scripts_ > 1 && std::any_of(by_message.begin(), by_message.end(), is_repeated));
}

std::string Outcome::Summary(bool folds) const {
  const diagnostics::Report all = Total();
  std::string line = diagnostics::SummaryLine(all);
  if (undone_ > 0) {
    line.insert(line.size() - 1, fmt::format("; {} could not be processed", undone_));
  }
  const bool has_table = folds && HasTable(all.by_message);
  return (has_table ? diagnostics::MessageTable(all.by_message) : "") + FailedText() + line;
}

// "3 of 21 scripts failed: a/main.rux, ..."
std::string Outcome::FailedText() const {
  constexpr std::size_t kMost = 10;
  if (failed_.empty()) return "";
  return fmt::format("{} of {} failed: {}\n", failed_.size(),
                     support::CountText(scripts_, "script"), Listed(failed_, kMost));
}

}  // namespace rux::driver
