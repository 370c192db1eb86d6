#include "driver/compile_run.h"

#include <algorithm>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "advice/advice.h"
#include "advice/allowances.h"
#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "diagnostics/report.h"
#include "diagnostics/severities.h"
#include "driver/baseline.h"
#include "driver/compile_options.h"
#include "driver/messages.h"
#include "driver/overwriting.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "findings/tally.h"
#include "reader/archive.h"
#include "reader/include_folders.h"
#include "reader/script_root.h"
#include "rules/check_script.h"
#include "rules/rule_report.h"
#include "run/log.h"
#include "run/readers.h"
#include "run/run.h"
#include "ruxcomp/language/paths.h"
#include "sources/allow_comments.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/failure.h"
#include "support/text_file.h"

namespace rux::driver {
namespace {

class CompileRun {
 public:
  explicit CompileRun(const CompileOptions& options)
      : options_(options),
        script_(sources::ToOpenablePath(options.script_name())),
        folders_(options.all_include_folders()),
        include_folders_(folders_),
        root_(FolderOf(LibraryName(options)), FolderOf(options.script_name())),
        run_(LibraryName(options), TextOf(options), MostKept(options),
             ruxcomp::findings::RowsOf(rules::kTakenOver), sources::kAllowMarker),
        severities_(AllMessages()),
        diagnostics_(severities_, options.reporting.most_errors(),
                     options.reporting.most_warnings(), options.reporting.verbose) {
    if (options.project != nullptr) {
      for (const std::string& setting : options.project->warnings) severities_.Set(setting);
    }
    severities_.EndProject();
    if (options.werror) severities_.RaiseAll();
    for (const std::string& setting : options.warnings) severities_.Set(setting);
  }

  support::ExitStatus Run(CompileProduct* product) {
    run_.ReadAndCheck();
    RefuseForPlugin();
    allowances_.emplace(result().sources, AllMessages());
    diagnostics_.SetAllowances(&*allowances_);
    if (options_.baseline != nullptr) {
      baseline_.emplace(*options_.baseline, result().sources, script_);
      diagnostics_.SetBaseline(&*baseline_);
    }
    const bool is_script = !advice::AddFilesThatAreNoScripts(result(), script_, diagnostics_);
    if (is_script) AddFindings();
    if (result().accepted && !Fails() && product != nullptr) Make(*product);
    if (is_script) AddUnusedAllowances();
    if (is_script && result().raised) AddRaised();
    const bool is_part = !options_.part.empty();
    const bool is_done = (result().accepted || is_part) && !Fails();
    ReportAll();
    if (RanOutOfMemory()) throw std::bad_alloc();
    if (failure_) throw support::Failure(*failure_);
    if (!result().opened) throw CannotRead();
    if (product != nullptr) is_done ? product->Keep(result()) : product->Discard(result());
    return is_done ? support::ExitStatus::kDone : support::ExitStatus::kFindings;
  }

 private:
  const run::Result& result() const { return run_.result(); }

  static std::string FolderOf(const std::string& path) {
    return std::string(ruxcomp::language::FolderOf(path));
  }

  // Another reader knows no paths but those of the files.
  static std::string LibraryName(const CompileOptions& options) {
    const bool is_own = options.stores_paths && !run::IsForeignReaderInstalled();
    return is_own ? options.stored_name() : options.script_name();
  }

  static std::optional<std::string> TextOf(const CompileOptions& options) {
    if (!options.reads_standard_input()) return std::nullopt;
    return ReadStandardInput(options.script_name());
  }

  // Of a part, what is found first may be in other files. Of a baseline, the new ones may come
  // last.
  static ruxcomp::findings::Most MostKept(const CompileOptions& options) {
    return options.part.empty() && options.baseline == nullptr ? options.reporting.most() : 0;
  }

  void RefuseForPlugin() const {
    if (!result().has_foreign_reader) return;
    if (!folders_.empty()) {
      throw support::Failure(
          support::ExitStatus::kTrouble,
          "cannot use include folders: the reader plug-in {} has a search of its own",
          run::kPluginPath);
    }
    if (!options_.reads_standard_input()) return;
    throw support::Failure(support::ExitStatus::kTrouble,
                           "cannot read standard input: the reader plug-in {} reads only files",
                           run::kPluginPath);
  }

  // The diagnostics so far have all that they need of the sources.
  void Make(CompileProduct& product) {
    run_.Write([&] {
      try {
        AddWarnings({product.Make(result()), {}});
      } catch (const support::Failure& failure) {
        failure_ = failure;
      }
    });
  }

  void AddFindings() {
    if (!options_.part.empty()) scope_ = advice::Scope(result().sources, options_.part);
    advice::AddDiagnosticsOf(result(), script_, scope_, diagnostics_);
    if (result().opened && !result().raised) {
      AddWarnings(rules::CheckScript(
          result().sources, {MostKept(options_), [&](const ruxcomp::findings::MessageRow& row,
                                                     const support::TextFile* file) {
                               return allowances_->MayTake(row, file);
                             }}));
    }
    advice::Advise(result(), diagnostics_.kept());
  }

  support::Failure CannotRead() const {
    const std::vector<ruxcomp::reader::RefusedScript>& refused = result().sources.refused();
    const std::string reason =
        refused.empty() ? "the reader cannot open it" : sources::ReasonOf(refused.front());
    return support::Failure(support::ExitStatus::kTrouble, "cannot read {}: {}", script_, reason);
  }

  // The reader goes on without what it had no memory for.
  bool RanOutOfMemory() const {
    const std::vector<run::Finding>& findings = result().findings;
    return std::any_of(findings.begin(), findings.end(), [](const run::Finding& finding) {
      return finding.row == &ruxcomp::findings::rows::kOutOfMemory;
    });
  }

  bool Fails() const { return result().raised || diagnostics_.errors() > 0; }

  void AddWarnings(rules::Warnings warnings) {
    advice::AddWarnings(result(), script_, std::move(warnings), scope_, diagnostics_);
  }

  // After an error, not all warnings were looked for.
  bool HasAllWarnings() const {
    return result().accepted && !result().raised && result().files.complete;
  }

  void AddUnusedAllowances() {
    for (const bool is_second : {false, true}) {
      AddWarnings(allowances_->Unused(HasAllWarnings(), is_second));
    }
  }

  std::vector<std::string> FilesRead() const {
    std::vector<std::string> paths;
    for (const sources::Opening& opening : result().sources.openings()) {
      paths.push_back(opening.file->path());
    }
    return paths;
  }

  void AddRaised() {
    diagnostics::Diagnostic raised = advice::DiagnosticOfRaised(result(), script_);
    const ruxcomp::findings::MessageRow& row = *raised.row;
    diagnostics_.Add(row, row.severity, [&] { return std::move(raised); });
  }

  // The last that is done with the diagnostics.
  void ReportAll() {
    advice::AddNotesOnIncludes(result(), diagnostics_);
    const bool is_part = !options_.part.empty();
    if (is_part) {
      scope_.UsePath(options_.part, diagnostics_.kept());
      diagnostics_.AddConclusion(scope_.NoteOn(options_.part, script_));
    }
    const diagnostics::ReportOptions& reporting = options_.reporting;
    diagnostics::Report report =
        diagnostics::ReportOf(is_part ? options_.part : script_, diagnostics_, FilesRead());
    report.is_complete = result().opened && !failure_ && !RanOutOfMemory();
    if (!reporting.file.empty()) KeepSources(result().files, {"diagnostics file", reporting.file});
    diagnostics::WriteReport(report, result().opened, reporting);
    if (baseline_) {
      baseline_->Note(is_part ? std::vector<std::string>{options_.part} : FilesRead(),
                      report.is_complete && HasAllWarnings());
    }
  }

  const CompileOptions& options_;
  const std::string script_;  // as it can be opened
  const std::vector<std::string> folders_;
  const ruxcomp::reader::IncludeFolders include_folders_;
  const ruxcomp::reader::ScriptRoot root_;
  run::Run run_;
  diagnostics::Severities severities_;
  advice::Scope scope_;
  std::optional<advice::Allowances> allowances_;
  std::optional<BaselineFilter> baseline_;
  diagnostics::Collection diagnostics_;
  std::optional<support::Failure> failure_;
};

}  // namespace

support::ExitStatus RunCompile(const CompileOptions& options, CompileProduct* product) {
  return CompileRun(options).Run(product);
}

}  // namespace rux::driver
