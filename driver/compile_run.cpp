#include "driver/compile_run.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "advice/advice.h"
#include "advice/allowances.h"
#include "advice/consequences.h"
#include "diagnostics/collection.h"
#include "diagnostics/diagnostic.h"
#include "diagnostics/report.h"
#include "diagnostics/severities.h"
#include "driver/baseline.h"
#include "driver/compile_options.h"
#include "driver/machines.h"
#include "driver/messages.h"
#include "driver/overwriting.h"
#include "driver/part_report.h"
#include "findings/message_row.h"
#include "findings/message_rows.h"
#include "findings/tally.h"
#include "lint/lint.h"
#include "reader/archive.h"
#include "reader/include_folders.h"
#include "reader/script_root.h"
#include "rules/check_script.h"
#include "rules/rule.h"
#include "rules/rule_report.h"
#include "run/log.h"
#include "run/readers.h"
#include "run/run.h"
#include "ruxcomp/language/paths.h"
#include "settings/project.h"
#include "sources/allow_comments.h"
#include "sources/main_scripts.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/failure.h"
#include "support/folders.h"
#include "support/text_file.h"

namespace rux::driver {
namespace {

// Who writes the report of a run.
enum class Writer { kRun, kCaller };

class CompileRun {
 public:
  CompileRun(const CompileOptions& options, Writer writer)
      : options_(options),
        writer_(writer),
        script_(sources::ToShownPath(options.script_name())),
        folders_(options.all_include_folders()),
        include_folders_(folders_,
                         [this](const std::string& found) { return options_.stored_path(found); }),
        root_(FolderOf(LibraryName(options)), FolderOf(options.script_name())),
        run_(LibraryName(options), TextOf(options), MostKept(options),
             ruxcomp::findings::RowsOf(rules::kTakenOver), sources::kAllowMarker),
        severities_(SeveritiesOf(options)),
        diagnostics_(severities_, options.reporting.most_errors(),
                     options.reporting.most_warnings(), options.reporting.verbose) {}

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
    if (is_script) AddUnusedAllowances(product);
    if (is_script && result().raised) AddRaised();
    const bool is_done = (result().accepted || is_part()) && !Fails();
    ReportAll();
    if (RanOutOfMemory()) throw std::bad_alloc();
    if (failure_) throw support::Failure(*failure_);
    if (!result().opened) throw CannotRead();
    if (product != nullptr) is_done ? product->Keep(result()) : product->Discard(result());
    return is_done ? support::ExitStatus::kDone : support::ExitStatus::kFindings;
  }

  // What there is to write; nothing before it is complete.
  bool has_report() const { return report_.has_value(); }
  PartFindings TakeFindings() {
    return {script_, scope_.errors_elsewhere(), std::move(*report_), run_.TakeSources()};
  }
  const sources::SourceFiles& files() const { return result().files; }

 private:
  bool is_part() const { return !options_.part.empty(); }

  const run::Result& result() const { return run_.result(); }

  static std::string FolderOf(const std::string& path) {
    return std::string(ruxcomp::language::FolderOf(path));
  }

  // Another reader knows no paths but those of the files.
  static std::string LibraryName(const CompileOptions& options) {
    const bool is_own = options.stores_paths && !run::IsForeignReaderInstalled();
    return is_own ? options.stored_name() : options.script_name();
  }

  static std::optional<run::Text> TextOf(const CompileOptions& options) {
    if (options.text || !options.reads_standard_input()) return options.text;
    return run::Text{ReadStandardInput(options.script_name())};
  }

  // Of a part, what is found first may be in other files. Of a baseline, the new ones may come
  // last.
  static ruxcomp::findings::Most MostKept(const CompileOptions& options) {
    const bool has_all_files = options.part.empty() && options.left_out.empty();
    return has_all_files && options.baseline == nullptr ? options.reporting.most() : 0;
  }

  void RefuseForPlugin() const {
    if (!result().has_foreign_reader) return;
    if (!folders_.empty()) {
      throw support::Failure(
          support::ExitStatus::kTrouble,
          "cannot use include folders: the reader plug-in {} has a search of its own",
          run::kPluginPath);
    }
    if (!options_.text && !options_.reads_standard_input()) return;
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
    scope_ = is_part() ? advice::Scope(result().sources, options_.part)
                       : advice::Scope(result().sources, options_.left_out);
    const advice::Consequences consequences(result(), diagnostics_);
    advice::AddDiagnosticsOf(result(), script_, consequences, scope_, diagnostics_);
    if (result().opened && !result().raised) {
      const lint::LintChoice choice = LintOf();
      rules::Warnings warnings = rules::CheckScript(
          result().sources,
          {MostKept(options_),
           [&](const ruxcomp::findings::MessageRow& row, const support::TextFile* file) {
             return allowances_->MayTake(row, file);
           }},
          [&](const rules::RuleContext& context) { return lint::MakeRules(context, choice); });
      consequences.RemoveFrom(warnings.kept);
      AddWarnings(std::move(warnings));
    }
    // The first ones are those that are shown.
    diagnostics::SortByPlace(FilesRead(), diagnostics_.kept());
    advice::Advise(result(), diagnostics_.kept());
  }

  lint::LintChoice LintOf() {
    static const settings::Project no_project;
    return {
        options_.project == nullptr ? no_project : *options_.project,
        [this](const sources::SourceFile& file) { return HasAllWarnings() && IsInNoOther(file); },
        [this](const ruxcomp::findings::MessageRow& row) {
          const diagnostics::Ruling ruling = severities_.RulingOn(row, row.severity);
          return !ruling.is_dropped || ruling.is_suppressed || allowances_->Concerns(row);
        }};
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

  void AddUnusedAllowances(const CompileProduct* product) {
    const auto knows = [&](const sources::SourceFile& file,
                           const ruxcomp::findings::MessageRow& row) {
      return HasAllWarnings() && IsLookedFor(row, product) && IsOfThisMachine(file);
    };
    for (const bool is_second : {false, true}) AddWarnings(allowances_->Unused(knows, is_second));
  }

  static bool IsLookedFor(const ruxcomp::findings::MessageRow& row, const CompileProduct* product) {
    const bool is_about_product =
        std::find(std::begin(kRows), std::end(kRows), &row) != std::end(kRows);
    return !is_about_product || (product != nullptr && product->LooksFor(row));
  }

  // A part is reported for all machines that include it.
  bool IsOfThisMachine(const sources::SourceFile& file) { return is_part() || IsInNoOther(file); }

  // Whether no other machine includes the file.
  bool IsInNoOther(const sources::SourceFile& file) {
    if (&file == result().sources.openings().front().file) return true;
    const auto [known, is_new] = is_in_no_other_.try_emplace(&file, true);
    if (!is_new) return known->second;
    const std::vector<std::string> mains = MachinesWith(file.path(), options_, machine_finder_);
    const auto is_this = [&](const std::string& main) {
      return support::WholeName(main) == support::WholeName(script_);
    };
    // Of a part in a folder of its own, the machines may not be known.
    known->second = std::all_of(mains.begin(), mains.end(), is_this) &&
                    (!mains.empty() || !sources::IsPart(file.path()));
    return known->second;
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
    if (is_part()) {
      scope_.UsePath(options_.part, diagnostics_.kept());
    } else if (scope_.errors_elsewhere() > 0) {
      diagnostics_.AddConclusion(NoteOnErrorsInParts(script_, scope_.errors_elsewhere()));
    }
    const diagnostics::ReportOptions& reporting = options_.reporting;
    diagnostics::Report report =
        diagnostics::ReportOf(is_part() ? options_.part : script_, diagnostics_, FilesRead());
    report.is_one_of_many = reporting.folds_over_scripts();
    report.is_complete = result().opened && !failure_ && !RanOutOfMemory();
    if (!reporting.file.empty()) KeepSources(result().files, {"diagnostics file", reporting.file});
    if (writer_ == Writer::kRun) diagnostics::WriteReport(report, result().opened, reporting);
    if (baseline_) {
      baseline_->Note(is_part() ? std::vector<std::string>{options_.part} : FilesRead(),
                      report.is_complete && HasAllWarnings());
    }
    report_ = std::move(report);
  }

  const CompileOptions& options_;
  const Writer writer_;
  const std::string script_;  // as it is shown
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
  std::optional<diagnostics::Report> report_;
  std::map<const sources::SourceFile*, bool> is_in_no_other_;
  sources::MachineFinder machine_finder_;
};

// A run over each machine, and one report.
support::ExitStatus CheckPart(const CompileOptions& options) {
  const PartReport::Shows shows =
      options.is_shared_part() ? PartReport::Shows::kCommon : PartReport::Shows::kAll;
  PartReport part(options.machines.front().part, shows);
  std::exception_ptr failure;
  for (const CompileOptions& machine : options.machines) {
    CompileRun run(machine, Writer::kCaller);
    try {
      run.Run(nullptr);
    } catch (...) {
      if (!run.has_report()) throw;
      failure = std::current_exception();
    }
    part.Add(run.TakeFindings());
  }
  const diagnostics::Report merged = part.Merged();
  if (options.is_shared_part() && merged.diagnostics.empty()) return support::ExitStatus::kDone;
  diagnostics::WriteReport(merged, failure == nullptr, options.reporting);
  if (failure != nullptr) std::rethrow_exception(failure);
  return merged.errors > 0 ? support::ExitStatus::kFindings : support::ExitStatus::kDone;
}

}  // namespace

support::ExitStatus RunCompile(const CompileOptions& options, CompileProduct* product) {
  if (!options.machines.empty()) return CheckPart(options);
  return CompileRun(options, Writer::kRun).Run(product);
}

Checked Check(const CompileOptions& options) {
  CompileRun run(options, Writer::kCaller);
  std::optional<std::string> failure;
  try {
    run.Run(nullptr);
  } catch (const support::Failure& why) {
    if (!run.has_report()) throw;
    failure = why.what();
  }
  return {run.TakeFindings(), run.files(), failure};
}

}  // namespace rux::driver
