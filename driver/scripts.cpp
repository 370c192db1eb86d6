#include <fmt/format.h>
#include <string.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "diagnostics/machine_form.h"
#include "diagnostics/report.h"
#include "driver/baseline.h"
#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "driver/outcome.h"
#include "driver/output_names.h"
#include "driver/overwriting.h"
#include "driver/progress.h"
#include "reader/include_folders.h"
#include "settings/project.h"
#include "sources/main_scripts.h"
#include "sources/source_file.h"
#include "support/failure.h"
#include "support/placement.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "support/workers.h"

namespace rux::driver {
namespace {

support::Failure WrongUsage(const std::string& text) {
  return support::Failure(support::ExitStatus::kWrongUsage, "{}", text);
}

void ExpectForOne(const CompileOptions& options) {
  const diagnostics::ReportOptions& reporting = options.reporting;
  if (!reporting.file.empty() && reporting.format == "human") {
    throw WrongUsage("--diagnostics-file needs a machine-readable --format");
  }
  const std::vector<std::string>& scripts = options.scripts;
  const auto inputs = std::count(scripts.begin(), scripts.end(), CompileOptions::kStandardInput);
  if (inputs == 0 && !options.stdin_name.empty()) {
    throw WrongUsage("--stdin-name needs - as the script");
  }
  if (inputs != 0 && scripts.size() > 1) throw WrongUsage("- cannot be one of several scripts");
}

// Whether what programs get is about one script.
bool IsDocumentOfOne(const diagnostics::ReportOptions& reporting) {
  if (reporting.is_piece) return false;
  const diagnostics::MachineForm* form = diagnostics::FindMachineForm(reporting.format);
  return form != nullptr && (form->is_document() || !reporting.file.empty());
}

// Whether there are messages for people.
bool HasSummary(const diagnostics::ReportOptions& reporting) {
  return reporting.format == "human" || !reporting.file.empty();
}

// The first run brings the baseline that all share.
void UseBaseline(CompileOptions& options) {
  const BaselineFiles& files = options.baseline_files;
  if (!files.is_used()) return;
  const std::string project = options.project_file();
  if (!files.written.empty() && !project.empty()) {
    RefuseToOverwrite({"project file", project}, {"baseline", files.written});
  }
  if (options.baseline == nullptr) options.baseline = std::make_shared<Baseline>(files);
}

// No diagnostics are written where there is a script, or what belongs to another one.
void KeepApart(const std::vector<CompileOptions>& runs) {
  std::deque<std::string> scripts;
  std::vector<NamedFile> kept;
  std::vector<NamedFile> written;
  for (const CompileOptions& run : runs) {
    scripts.push_back(sources::ToOpenablePath(run.script_name()));
    kept.push_back({"script", scripts.back()});
    if (!run.reporting.is_piece)
      written.push_back({"diagnostics file", run.reporting.file, &scripts.back()});
  }
  const diagnostics::ReportOptions& reporting = runs.front().reporting;
  if (reporting.is_piece) written.push_back({"diagnostics file", reporting.file});
  RefuseToWriteTwice(kept, written);
}

// Runs that are made at the same time, and what is printed and written of them.
class SeveralRuns {
 public:
  using RunOne = std::function<support::ExitStatus(const CompileOptions&)>;
  using AddPiece = std::function<void(std::string_view)>;

  SeveralRuns(const std::vector<CompileOptions>& runs, const RunOne& run)
      : runs_(runs),
        run_(run),
        reporting_(runs.front().reporting),
        form_(reporting_.is_piece ? diagnostics::FindMachineForm(reporting_.format) : nullptr),
        outcome_(runs.size()),
        progress_(runs.size(), support::StatusWidth(), std::chrono::steady_clock::now,
                  support::PrintError) {}

  support::ExitStatus Run() {
    const bool has_file = form_ != nullptr && !reporting_.file.empty();
    std::string document;
    if (form_ == nullptr) {
      RunAll(support::PrintOut);
    } else if (!has_file) {
      support::Print(support::PrintOut, [&](support::TextStream& out) { WriteDocument(out); });
    } else {
      document = support::WrittenText([&](support::TextStream& out) { WriteDocument(out); });
    }
    if (HasSummary(reporting_)) support::PrintError(outcome_.Summary(!reporting_.shows_all()));
    // Then the document may be in the place of a script.
    if (has_file && !outcome_.has_wrong_usage()) support::PutInPlace({{reporting_.file, document}});
    return outcome_.worst();
  }

 private:
  void WriteDocument(support::TextStream& out) {
    const auto add_all = [&](const AddPiece& add) {
      RunAll([&](std::string_view piece) {
        add(piece);
        out.Flush();
      });
    };
    form_->write_many({add_all, [&] { return outcome_.Total(); }}, out);
  }

  void RunAll(const AddPiece& add) {
    const std::size_t jobs = runs_.front().jobs;
    const std::size_t processors = std::max(std::thread::hardware_concurrency(), 1u);
    support::RunJobs(
        runs_.size(), jobs != 0 ? jobs : processors,
        [&](std::size_t i) {
          CompileOptions one = runs_[i];
          one.reporting.counts = &outcome_.CountsOf(i);
          return run_(one);
        },
        [&](std::size_t i, const support::JobResult& done) { Report(i, done, add); },
        [&] { progress_.Erase(); });
  }

  void Report(std::size_t i, const support::JobResult& done, const AddPiece& add) {
    const std::string script = sources::ToOpenablePath(runs_[i].script_name());
    progress_.Erase();
    outcome_.Add(i, script, done);
    add(form_ == nullptr || outcome_.CountsOf(i).is_written ? done.output : PieceOnTrouble(script));
    support::PrintError(done.errors);
    if (done.signal != 0) {
      support::PrintError(
          fmt::format("rux: error: {}: the process that read it was killed by signal {} ({})\n",
                      support::SafeText(script), done.signal, strsignal(done.signal)));
    }
    progress_.Show(i + 1, script);
  }

  // For a process that ended before it had written its own.
  std::string PieceOnTrouble(const std::string& script) const {
    diagnostics::Report report;
    report.script = script;
    report.is_complete = false;
    return support::WrittenText([&](support::TextStream& out) { form_->write_piece(report, out); });
  }

  const std::vector<CompileOptions>& runs_;
  const RunOne& run_;
  const diagnostics::ReportOptions& reporting_;
  const diagnostics::MachineForm* const form_;  // of the document about all; null: none
  Outcome outcome_;
  Progress progress_;
};

}  // namespace

std::vector<CompileOptions> OptionsPerScript(const CompileOptions& options) {
  ExpectForOne(options);
  const bool are_several = options.are_several();
  const std::string& file = options.reporting.file;
  const bool is_human = options.reporting.format == "human";
  std::vector<CompileOptions> runs;
  for (const std::string& script : options.scripts) {
    // The first one brings the projects that all share.
    CompileOptions& one = runs.emplace_back(runs.empty() ? options : runs.front());
    one.scripts = {script};
    UseProject(one);
    UseBaseline(one);
    one.reporting.is_piece = are_several && !is_human && !IsPerScript(file);
    one.reporting.file = ExpandFileName(one.script_name(), file);
    one.reporting.makes_folder = HasScriptFolder(file);
    if (are_several)
      one.reporting.color = diagnostics::UsesColour(options.reporting.color) ? "always" : "never";
  }
  if (are_several && !file.empty()) KeepApart(runs);
  return runs;
}

namespace {

// Those of the project before those of the nearest folder.
std::vector<std::string> FindMainScripts(const CompileOptions& run, const std::string& part) {
  if (!sources::IsPart(part)) return {};
  if (run.project != nullptr) {
    std::vector<std::string> mains =
        sources::MainScriptsOf(part, settings::MainScriptsOf(*run.project));
    if (!mains.empty()) return mains;
  }
  return sources::FindMainScripts(part);
}

}  // namespace

std::vector<CompileOptions> WithMainScripts(const std::vector<CompileOptions>& runs) {
  std::vector<CompileOptions> all;
  for (const CompileOptions& run : runs) {
    const std::string part = sources::ToOpenablePath(run.script_name());
    std::vector<std::string> mains;
    if (!run.reads_standard_input()) {
      const std::vector<std::string> names = run.all_include_folders();
      const ruxcomp::reader::IncludeFolders folders(names);
      mains = FindMainScripts(run, part);
    }
    if (mains.empty()) all.push_back(run);
    if (mains.size() > 1 && IsDocumentOfOne(run.reporting)) mains.resize(1);
    for (const std::string& main : mains) {
      CompileOptions& one = all.emplace_back(run);
      one.scripts = {main};
      one.part = part;
      UseProject(one);
    }
  }
  return all;
}

support::ExitStatus RunAll(const std::vector<CompileOptions>& runs,
                           const std::function<support::ExitStatus(const CompileOptions&)>& run) {
  const CompileOptions& first = runs.front();
  const bool is_one = runs.size() == 1 && !first.are_several();
  const support::ExitStatus status = is_one ? run(first) : SeveralRuns(runs, run).Run();
  // What could not be read is not known.
  if (first.baseline == nullptr || status > support::ExitStatus::kFindings) return status;
  const std::string line = first.baseline->End();
  if (HasSummary(first.reporting)) support::PrintError(line);
  return status;
}

}  // namespace rux::driver
