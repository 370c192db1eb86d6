// rux diff OLD NEW
#include <memory>
#include <string>
#include <vector>

#include "diff/change.h"
#include "diff/classes.h"
#include "diff/compare.h"
#include "diff/report.h"
#include "diff/selection.h"
#include "driver/compile_options.h"
#include "machine/load.h"
#include "machine/machine.h"
#include "settings/project.h"
#include "support/failure.h"
#include "support/placement.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "support/text_stream.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"
#include "tool/pair_arguments.h"
#include "tool/row_names.h"
#include "tool/view_arguments.h"

namespace rux::tool {
namespace {

struct DiffOptions {
  std::string before;
  std::string after;
  std::string meta_before;
  std::string meta_after;
  std::string format = "text";
  std::string color = "auto";
  bool stat = false;
  bool quiet = false;
  std::vector<std::string> only;
  std::vector<std::string> fail_on;
  std::string baseline;
  std::string written_baseline;
  std::string name;
  std::vector<std::string> include_folders;
  settings::ProjectChoice project;
};

void WriteReport(const DiffOptions& options, const diff::Report& report) {
  support::Print(support::PrintOut, [&](support::TextStream& out) {
    if (options.stat) return diff::WriteStatistics(report, out);
    for (const diff::Form& form : diff::kForms) {
      if (form.name != options.format) continue;
      if (form.write != nullptr) return form.write(report, out);
    }
    diff::WriteText(report, support::StyleOfOutput(options.color).uses_colour, out);
  });
}

support::ExitStatus Diff(const DiffOptions& options) {
  const std::vector<const diff::ClassRow*> fails = diff::ClassesFor(options.fail_on);
  const machine::LoadOptions load{options.include_folders, driver::ProjectsOf(options.project),
                                  options.name};
  WarnUnlessPair(options.meta_before, options.before, load);
  WarnUnlessPair(options.meta_after, options.after, load);
  const std::vector<machine::Machine> machines =
      machine::Load({options.before, options.after}, load);
  const bool is_named = !options.name.empty();
  diff::Report report{{is_named ? options.name : options.before, machines[0].file()},
                      {is_named ? options.name : options.after, machines[1].file()},
                      diff::Compare(machines[0], machines[1]),
                      0,
                      fails};
  diff::CheckOnly(options.only, machines);
  diff::KeepOnly(options.only, report.changes);
  if (!options.written_baseline.empty())
    support::PutInPlace({{options.written_baseline, diff::AcceptedText(report.changes)}});
  if (!options.baseline.empty()) {
    const diff::Accepted accepted(options.baseline);
    support::PrintError(accepted.UnmatchedText(report.changes));
    report.in_baseline = accepted.TakeFrom(report.changes);
  }
  if (!options.quiet) WriteReport(options, report);
  for (const diff::Change& change : report.changes) {
    if (report.Fails(change)) return support::ExitStatus::kFindings;
  }
  return support::ExitStatus::kDone;
}

void AddOutput(Arguments& arguments, DiffOptions& options) {
  arguments
      .Add("--format", &options.format,
           "text (default), json (docs/diff.schema.json), markdown for a review, github, sarif or "
           "html")
      .OneOf("FORMAT", NamesOf(diff::kForms));
  arguments.Add("--stat", &options.stat, "Print only how many changes of each class there are")
      .Without({"--format"});
  arguments.Add("-q,--quiet", &options.quiet, "Print no changes; the exit status answers")
      .Without({"--format", "--stat"});
  AddOutputColor(arguments, options.color);
}

void AddSelection(Arguments& arguments, DiffOptions& options) {
  arguments
      .Add("--only", &options.only,
           "Report only changes of that section kind or NAME (may be a pattern), category or class")
      .Value("KIND|NAME|CATEGORY|ID");
  arguments
      .Add("--fail-on", &options.fail_on,
           "Exit with 1 for changes of that class or category: position, name, id, limits, "
           "behaviour, other or any")
      .Value("CATEGORY|ID");
  arguments.Add("--baseline", &options.baseline, "Leave out the changes that FILE accepts")
      .File("FILE");
  arguments
      .Add("--write-baseline", &options.written_baseline, "Write a FILE that accepts all changes")
      .File("FILE");
}

}  // namespace

Action SetUpDiff(Arguments& arguments) {
  const auto options = std::make_shared<DiffOptions>();
  arguments
      .Add("OLD", &options->before,
           "A meta file, a debug meta file or a script; or REVISION:PATH for one of a git revision")
      .File()
      .Required();
  arguments.Add("NEW", &options->after, "The same, for what it is now").File().Required();
  arguments
      .Add("--name", &options->name,
           "Both are copies of PATH: call them that, and include what is there")
      .File("PATH");
  AddMetaOfPair(arguments, "--old-meta", options->meta_before,
                "Warn if OLD, a debug meta file or script, does not belong to this meta file");
  AddMetaOfPair(arguments, "--new-meta", options->meta_after, "The same for NEW");
  AddOutput(arguments, *options);
  AddSelection(arguments, *options);
  AddSearchOptions(arguments, options->include_folders, options->project);
  arguments.Footer(
      "Sections match by kind, then ID, then NAME. The exit status is 0 unless --fail-on finds\n"
      "something; rux explain ID describes a class of changes.\n\n"
      "Examples:\n"
      "  rux diff old.meta new.meta\n"
      "  rux diff HEAD~1:boards/board.rux boards/board.rux --format markdown\n"
      "  rux diff old.metad new.metad --fail-on id --fail-on limit-loosened");
  return [options] { return Diff(*options); };
}

}  // namespace rux::tool
