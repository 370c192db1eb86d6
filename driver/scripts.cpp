#include <fmt/format.h>
#include <string.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "diagnostics/machine_form.h"
#include "diagnostics/repeated.h"
#include "diagnostics/report.h"
#include "driver/baseline.h"
#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "driver/machines.h"
#include "driver/outcome.h"
#include "driver/output_names.h"
#include "driver/overwriting.h"
#include "driver/progress.h"
#include "reader/texts.h"
#include "run/run.h"
#include "sources/source_file.h"
#include "support/failure.h"
#include "support/folders.h"
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

}  // namespace

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
  if (inputs != 0 && options.are_several()) throw WrongUsage("- cannot be one of several scripts");
}

namespace {

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
    if (const std::string lines = printed_.Lines(); !lines.empty()) add(lines);
    support::PrintError(shown_.Lines());
  }

  void Report(std::size_t i, const support::JobResult& done, const AddPiece& add) {
    const std::string script = sources::ToShownPath(runs_[i].script_name());
    const bool has_report = outcome_.CountsOf(i).is_written;
    progress_.Erase();
    if (!IsSilent(i, done)) {
      outcome_.Add(i, script, done);
      if (form_ == nullptr) {
        add(done.output);
      } else {
        add(has_report ? printed_.Without(done.output) : PieceOnTrouble(script));
      }
    }
    support::PrintError(shown_.Without(done.errors));
    if (done.signal != 0) {
      support::PrintError(
          fmt::format("rux: error: {}: the process that read it was killed by signal {} ({})\n",
                      support::SafeText(script), done.signal, strsignal(done.signal)));
    }
    progress_.Show(i + 1, script);
  }

  // A file that several scripts share counts when something is found in it.
  bool IsSilent(std::size_t i, const support::JobResult& done) const {
    return runs_[i].is_shared_part() && !outcome_.CountsOf(i).is_complete &&
           done.status == support::ExitStatus::kDone;
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
  diagnostics::RepeatedOnce printed_;           // on standard output
  diagnostics::RepeatedOnce shown_;             // on standard error
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

// Those of the text on standard input, which takes the place of the file of its name.
std::vector<std::string> FindMachinesWithText(const std::string& part, const CompileOptions& run) {
  ruxcomp::reader::Texts::Put(part, run.text->bytes);
  std::vector<std::string> machines = FindMachinesWith(part, run);
  ruxcomp::reader::Texts::Remove(part);
  return machines;
}

std::string WholeNameOf(const CompileOptions& run) {
  return support::WholeName(sources::ToOpenablePath(run.script_name()));
}

std::vector<std::string> MachinesOf(const std::string& part, const CompileOptions& run) {
  if (run.text) return FindMachinesWithText(part, run);
  std::vector<std::string> mains = FindMachinesWith(part, run);
  if (!run.is_shared_part()) return mains;
  // Those below the folder, and what others the project has.
  std::vector<std::string> all = run.shared_parts->at(run.scripts.front());
  for (std::string& main : mains) {
    const bool is_known = std::any_of(all.begin(), all.end(), [&](const std::string& each) {
      return support::WholeName(each) == support::WholeName(main);
    });
    if (!is_known) all.push_back(std::move(main));
  }
  return all;
}

// A main script does not repeat what is found in its parts that are given as well.
void ReportPartsOnce(std::vector<CompileOptions>& runs) {
  const diagnostics::ReportOptions& reporting = runs.front().reporting;
  const bool has_own_documents = !reporting.file.empty() && !reporting.is_piece;
  if (has_own_documents) return;
  std::map<std::string, std::vector<std::string>> parts;  // by whole names of main scripts
  for (const CompileOptions& run : runs) {
    if (run.is_shared_part()) continue;
    for (const CompileOptions& machine : run.machines) {
      parts[WholeNameOf(machine)].push_back(machine.part);
    }
  }
  for (CompileOptions& run : runs) {
    const auto found = parts.find(WholeNameOf(run));
    if (found != parts.end()) run.left_out = found->second;
  }
}

}  // namespace

std::vector<CompileOptions> WithMainScripts(std::vector<CompileOptions> runs) {
  for (CompileOptions& run : runs) {
    const bool is_text = run.reads_standard_input();
    if (is_text && run.stdin_name.empty()) continue;
    if (is_text) run.text = run::Text{ReadStandardInput(run.script_name())};
    std::vector<CompileOptions> machines;
    const std::string part = sources::ToShownPath(run.script_name());
    for (const std::string& main : MachinesOf(part, run)) {
      CompileOptions& one = machines.emplace_back(run);
      one.scripts = {main};
      one.part = part;
      if (is_text) one.text->path = part;
      UseProject(one);
    }
    run.machines = std::move(machines);
  }
  ReportPartsOnce(runs);
  return runs;
}

support::ExitStatus RunAll(const std::vector<CompileOptions>& runs,
                           const std::function<support::ExitStatus(const CompileOptions&)>& run) {
  const CompileOptions& first = runs.front();
  const bool is_one = runs.size() == 1 && !first.are_several();
  const support::ExitStatus status = is_one ? run(first) : SeveralRuns(runs, run).Run();
  // What could not be read is not known.
  if (first.baseline == nullptr || status > support::ExitStatus::kFindings) return status;
  const std::string line =
      first.baseline->End([&](const std::string& file) { return FindMachinesWith(file, first); });
  if (HasSummary(first.reporting)) support::PrintError(line);
  return status;
}

}  // namespace rux::driver
