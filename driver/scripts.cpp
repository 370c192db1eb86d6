#include <fmt/format.h>
#include <string.h>
#include <sys/mman.h>

#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "diagnostics/diagnostic.h"
#include "diagnostics/report.h"
#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "driver/messages.h"
#include "reader/include_folders.h"
#include "sources/main_scripts.h"
#include "sources/source_file.h"
#include "support/failure.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "support/workers.h"

namespace rux::driver {
namespace {

constexpr std::string_view kName = "{}";

support::Failure WrongUsage(const std::string& text) {
  return support::Failure(support::ExitStatus::kWrongUsage, "{}", text);
}

void ExpectForOne(const CompileOptions& options) {
  const diagnostics::ReportOptions& reporting = options.reporting;
  if (!reporting.file.empty() && reporting.format == "human") {
    throw WrongUsage("--diagnostics-file needs a --format for programs");
  }
  const std::vector<std::string>& scripts = options.scripts;
  const auto inputs = std::count(scripts.begin(), scripts.end(), CompileOptions::kStandardInput);
  if (inputs == 0 && !options.stdin_name.empty()) {
    throw WrongUsage("--stdin-name needs - for a script");
  }
  if (inputs != 0 && scripts.size() > 1) throw WrongUsage("- cannot be one of several scripts");
}

// Whether the form is one document for each script.
bool IsDocument(const diagnostics::ReportOptions& reporting) {
  return reporting.format == "json" || reporting.format == "sarif";
}

void ExpectForSeveral(const CompileOptions& options) {
  const diagnostics::ReportOptions& reporting = options.reporting;
  RequireNamePerScript(options, "--diagnostics-file", reporting.file);
  if (IsDocument(reporting) && reporting.file.empty()) {
    throw WrongUsage("a document of --format " + reporting.format +
                     " is for one script: give each its own, as with --diagnostics-file {}." +
                     reporting.format);
  }
}

// Counts that the processes of all scripts write to.
class SharedCounts {
 public:
  explicit SharedCounts(std::size_t count)
      : messages_(AllMessages().rows().size() + 1),
        size_(count *
              (sizeof(diagnostics::Counts) + messages_ * sizeof(diagnostics::MessageCount))),
        memory_(mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) {
    if (memory_ == MAP_FAILED) throw support::SystemFailure("cannot share", "memory");
    auto* by_message = reinterpret_cast<diagnostics::MessageCount*>(&(*this)[count]);
    for (std::size_t i = 0; i < count; ++i) {
      (*this)[i].by_message = by_message + i * messages_;
    }
  }
  ~SharedCounts() { munmap(memory_, size_); }
  SharedCounts(const SharedCounts&) = delete;
  SharedCounts& operator=(const SharedCounts&) = delete;

  // The kernel's zeros are the counts of a script without messages.
  diagnostics::Counts& operator[](std::size_t i) const {
    return static_cast<diagnostics::Counts*>(memory_)[i];
  }

 private:
  const std::size_t messages_;  // all that there are, and one for the end
  const std::size_t size_;
  void* const memory_;
};

// What comes together of all scripts.
class Outcome {
 public:
  explicit Outcome(std::size_t scripts) : counts_(scripts), scripts_(scripts) {}

  diagnostics::Counts& CountsOf(std::size_t i) const { return counts_[i]; }

  void Report(const std::string& script, const support::JobResult& done) {
    support::PrintOut(done.output);
    support::PrintError(done.errors);
    if (done.signal != 0) {
      support::PrintError(
          fmt::format("rux: error: {}: the process that read it was ended by signal {} ({})\n",
                      support::SafeText(script), done.signal, strsignal(done.signal)));
    }
    worst_ = std::max(worst_, done.status);
    if (done.status != support::ExitStatus::kDone) failed_.push_back(support::SafeText(script));
    if (done.status > support::ExitStatus::kFindings) ++undone_;
  }

  std::string Summary(bool folds) const {
    diagnostics::Report all;
    all.script = fmt::format("{} scripts", scripts_);
    for (std::size_t i = 0; i < scripts_; ++i) {
      all.errors += counts_[i].errors;
      all.warnings += counts_[i].warnings;
      all.suppressed += counts_[i].suppressed;
    }
    std::string line = diagnostics::SummaryLine(all);
    if (undone_ > 0) {
      line.insert(line.size() - 1, fmt::format("; {} could not be processed", undone_));
    }
    const std::vector<diagnostics::MessageCount> by_message = CountByMessage();
    const bool has_table = folds && diagnostics::IsLong(by_message);
    return (has_table ? diagnostics::MessageTable(by_message) : "") + FailedText() + line;
  }

  support::ExitStatus worst() const { return worst_; }

 private:
  std::vector<diagnostics::MessageCount> CountByMessage() const {
    std::map<const diagnostics::MessageRow*, std::size_t> totals;
    for (std::size_t i = 0; i < scripts_; ++i) {
      for (const auto* each = counts_[i].by_message; each->row != nullptr; ++each) {
        totals[each->row] += each->all;
      }
    }
    std::vector<diagnostics::MessageCount> counts;
    counts.reserve(totals.size());
    for (const auto& [row, all] : totals) counts.push_back({row, all, 0});
    diagnostics::SortByCount(counts);
    return counts;
  }

  // "3 of 21 scripts failed: a/main.rux, ..."
  std::string FailedText() const {
    constexpr std::size_t kMost = 10;
    if (failed_.empty()) return "";
    std::string text = fmt::format("{} of {} scripts failed: ", failed_.size(), scripts_);
    for (std::size_t i = 0; i < std::min(failed_.size(), kMost); ++i) {
      text += (i == 0 ? "" : ", ") + failed_[i];
    }
    if (failed_.size() > kMost) text += fmt::format(" and {} more", failed_.size() - kMost);
    return text + '\n';
  }

  const SharedCounts counts_;
  const std::size_t scripts_;
  std::vector<std::string> failed_;
  std::size_t undone_ = 0;
  support::ExitStatus worst_ = support::ExitStatus::kDone;
};

support::ExitStatus RunSeveral(
    const std::vector<CompileOptions>& runs,
    const std::function<support::ExitStatus(const CompileOptions&)>& run) {
  Outcome outcome(runs.size());
  const diagnostics::ReportOptions& reporting = runs.front().reporting;
  const std::size_t jobs = runs.front().jobs;
  const std::size_t processors = std::max(std::thread::hardware_concurrency(), 1u);
  support::RunJobs(
      runs.size(), jobs != 0 ? jobs : processors,
      [&](std::size_t i) {
        CompileOptions one = runs[i];
        one.reporting.counts = &outcome.CountsOf(i);
        return run(one);
      },
      [&](std::size_t i, const support::JobResult& done) {
        outcome.Report(sources::ToOpenablePath(runs[i].script_name()), done);
      });
  if (reporting.format == "human" || !reporting.file.empty())
    support::PrintError(outcome.Summary(!reporting.shows_all()));
  return outcome.worst();
}

}  // namespace

std::string ExpandFileName(const std::string& script, const std::string& name) {
  std::string whole = name;
  const std::string stem = std::filesystem::path(sources::ToOpenablePath(script)).stem().string();
  for (std::size_t at = 0; (at = whole.find(kName, at)) != std::string::npos; at += stem.size()) {
    whole.replace(at, kName.size(), stem);
  }
  return whole;
}

void RequireNamePerScript(const CompileOptions& options, const char* option,
                          const std::string& name) {
  if (options.scripts.size() < 2 || name.empty() || name.find(kName) != std::string::npos) return;
  throw WrongUsage(
      fmt::format("for several scripts, {} needs {{}} in the name, for that of each", option));
}

std::vector<CompileOptions> OptionsPerScript(const CompileOptions& options) {
  ExpectForOne(options);
  const bool are_several = options.scripts.size() > 1;
  if (are_several) ExpectForSeveral(options);
  std::vector<CompileOptions> runs;
  for (const std::string& script : options.scripts) {
    CompileOptions& one = runs.emplace_back(options);
    one.scripts = {script};
    one.reporting.file = ExpandFileName(one.script_name(), options.reporting.file);
    if (are_several)
      one.reporting.color = diagnostics::UsesColour(options.reporting.color) ? "always" : "never";
  }
  return runs;
}

std::vector<CompileOptions> WithMainScripts(const std::vector<CompileOptions>& runs) {
  std::vector<CompileOptions> all;
  for (const CompileOptions& run : runs) {
    const std::string part = sources::ToOpenablePath(run.script_name());
    std::vector<std::string> mains;
    if (!run.reads_standard_input()) {
      const ruxcomp::reader::IncludeFolders folders(run.include_folders);
      mains = sources::FindMainScripts(part);
    }
    if (mains.empty()) all.push_back(run);
    const diagnostics::ReportOptions& reporting = run.reporting;
    if (mains.size() > 1 && (IsDocument(reporting) || !reporting.file.empty())) mains.resize(1);
    for (const std::string& main : mains) {
      CompileOptions& one = all.emplace_back(run);
      one.scripts = {main};
      one.part = part;
    }
  }
  return all;
}

support::ExitStatus RunAll(const std::vector<CompileOptions>& runs,
                           const std::function<support::ExitStatus(const CompileOptions&)>& run) {
  return runs.size() == 1 ? run(runs.front()) : RunSeveral(runs, run);
}

}  // namespace rux::driver
