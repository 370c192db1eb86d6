#include "tool/compile_arguments.h"

#include <string>

#include "diagnostics/report.h"
#include "diagnostics/severities.h"
#include "driver/compile_options.h"
#include "driver/messages.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

std::string CheckFileName(const std::string& name) {
  return name.empty() ? "the name of the file is empty" : "";
}

// What is read.
void AddInputOptions(Arguments& arguments, driver::CompileOptions& options) {
  arguments
      .Add("SCRIPT", &options.scripts,
           "The scripts to read; - for standard input, a folder for the main scripts below it, "
           "@FILE for those that a file lists")
      .File()
      .Required();
  arguments
      .Add("-j,--jobs", &options.jobs,
           "Process up to N scripts in parallel (default: one for each processor)")
      .Value("N");
  arguments
      .Add("-I,--include-folder", &options.include_folders,
           "Also look for included files in this folder, after the including file's own")
      .File("FOLDER")
      .Check([](const std::string& folder) {
        return std::string(folder.empty() ? "the name of the folder is empty" : "");
      });
  arguments
      .Add("--project", &options.project_choice.path,
           "Use this project file for all scripts, not the nearest .rux.json of each")
      .File("FILE")
      .Check(CheckFileName);
  arguments.Add("--no-project", &options.project_choice.has_none, "Use no project file")
      .Without("--project");
  arguments
      .Add("--stdin-name", &options.stdin_name,
           "With -: the name of the script, for messages and to find its included files")
      .File("NAME");
}

// Which warnings count.
void AddWarningOptions(Arguments& arguments, driver::CompileOptions& options) {
  arguments.Add("--werror", &options.werror,
                "Treat the reported warnings as errors, like -W error");
  arguments
      .Add("-W", &options.warnings,
           "Which warnings to report: a group (loss, suspect, style), the id of a warning, all or "
           "none; no-WHAT suppresses it, error=WHAT makes it an error; error: every reported "
           "warning is an error. Separate several with commas (default: loss,suspect). "
           "no-error=missing-include continues without a file that cannot be included")
      .Value("WHAT")
      .Check([](const std::string& text) {
        return diagnostics::Severities(driver::AllMessages()).Set(text);
      });
  arguments
      .Add("--baseline", &options.baseline_files.read,
           "Report only warnings that this file does not list")
      .File("FILE")
      .Check(CheckFileName);
  arguments
      .Add("--write-baseline", &options.baseline_files.written,
           "List the current warnings in this file, for --baseline")
      .File("FILE")
      .Check(CheckFileName);
}

// What is shown, and how.
void AddReportOptions(Arguments& arguments, diagnostics::ReportOptions& reporting) {
  arguments
      .Add("--max-errors", CommandArgument::Limit{&reporting.max_errors},
           "Show at most N errors, and as many warnings (default: 1000; 0: all)")
      .Value("N");
  arguments
      .Add("--max-warnings", CommandArgument::Limit{&reporting.max_warnings},
           "Show at most N warnings (0: all)")
      .Value("N");
  arguments.Add("--all", &reporting.all,
                "Show all errors and warnings, even if many have the same id");
  arguments
      .Add("--format", &reporting.format,
           "human (default), or a machine-readable form on standard output: gcc, json, sarif, "
           "junit or github")
      .OneOf("FORMAT", {"human", "gcc", "json", "sarif", "junit", "github"});
  arguments
      .Add("--diagnostics-file", &reporting.file,
           "Write the machine-readable form into this file; messages for people still go to "
           "standard "
           "error")
      .File("FILE");
  arguments.Add("--color", &reporting.color, "auto (default: on a terminal), always or never")
      .OneOf("WHEN", {"auto", "always", "never"});
  arguments.Add("--verbose", &reporting.verbose, "Also show the library's informational messages");
}

}  // namespace

void AddCompileOptions(Arguments& arguments, driver::CompileOptions& options) {
  AddInputOptions(arguments, options);
  AddWarningOptions(arguments, options);
  AddReportOptions(arguments, options.reporting);
}

}  // namespace rux::tool
