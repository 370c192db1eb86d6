#include "tool/compile_arguments.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <vector>

#include "diagnostics/report.h"
#include "diagnostics/severities.h"
#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "driver/messages.h"
#include "driver/script_list.h"
#include "settings/project.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

std::string CheckFileName(const std::string& name) {
  return name.empty() ? "the name of the file is empty" : "";
}

// What is read.
void AddInputOptions(Arguments& arguments, driver::CompileOptions& options) {
  AddScripts(arguments, options,
             "The scripts to read; - for standard input, a folder for the main scripts below it, "
             "@FILE for those that a file lists");
  arguments
      .Add("-j,--jobs", &options.jobs,
           "Process up to N scripts in parallel (default: one per processor)")
      .Value("N");
  AddProjectOptions(arguments, options);
}

std::string WhatToReport(diagnostics::Purpose purpose) {
  const char* const groups = purpose == diagnostics::Purpose::kLint ? "style" : "loss,suspect";
  return fmt::format(
      "Which warnings to report: a group (loss, suspect, style), the id of a warning, all or "
      "none; no-WHAT suppresses it, error=WHAT makes it an error; error: every reported "
      "warning is an error. Separate several with commas (default: {}). "
      "no-error=missing-include continues without a file that cannot be included",
      groups);
}

}  // namespace

void AddWarningChoice(Arguments& arguments, driver::CompileOptions& options, const char* help) {
  arguments.Add("-W", &options.warnings, help).Value("WHAT").Check([](const std::string& text) {
    return diagnostics::Severities(driver::AllMessages()).Set(text);
  });
}

namespace {

// Which warnings count.
void AddWarningOptions(Arguments& arguments, driver::CompileOptions& options) {
  arguments.Add("--werror", &options.werror,
                "Treat the reported warnings as errors, like -W error");
  AddWarningChoice(arguments, options, WhatToReport(options.purpose).c_str());
  arguments
      .Add("--baseline", &options.baseline_files.read,
           "Report only warnings that this file does not list")
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

void AddSearchOptions(Arguments& arguments, std::vector<std::string>& include_folders,
                      settings::ProjectChoice& project) {
  arguments
      .Add("-I,--include-folder", &include_folders,
           "Also look for included files in this folder, after the including file's own")
      .File("FOLDER")
      .Check([](const std::string& folder) {
        return std::string(folder.empty() ? "the name of the folder is empty" : "");
      });
  arguments
      .Add("--project", &project.path,
           "Use this project file for all scripts, not the nearest .rux.json of each")
      .File("FILE")
      .Check(CheckFileName);
  arguments.Add("--no-project", &project.has_none, "Use no project file").Without({"--project"});
}

void AddScripts(Arguments& arguments, driver::CompileOptions& options, const char* help) {
  arguments.Add("SCRIPT", &options.scripts, help).File().Required();
}

void AddProjectOptions(Arguments& arguments, driver::CompileOptions& options) {
  AddSearchOptions(arguments, options.include_folders, options.project_choice);
  arguments
      .Add("--stdin-name", &options.stdin_name,
           "With -: the name of the script, for messages and to find its included files")
      .File("NAME");
}

void AddMachineOptions(Arguments& arguments, driver::CompileOptions& options) {
  AddSearchOptions(arguments, options.include_folders, options.project_choice);
  AddWarningOptions(arguments, options);
}

void AddCompileOptions(Arguments& arguments, driver::CompileOptions& options) {
  AddInputOptions(arguments, options);
  AddWarningOptions(arguments, options);
  arguments
      .Add("--write-baseline", &options.baseline_files.written,
           "List the current warnings in this file, for --baseline")
      .File("FILE")
      .Check(CheckFileName);
  AddReportOptions(arguments, options.reporting);
}

Action SetUpReporting(Arguments& arguments, diagnostics::Purpose purpose) {
  const auto options = std::make_shared<driver::CompileOptions>();
  const auto as_main = std::make_shared<bool>(false);
  options->purpose = purpose;
  AddCompileOptions(arguments, *options);
  arguments.Add("--as-main", as_main.get(),
                "Check an included file by itself, not as part of the script that includes it");
  return [options, as_main] {
    driver::ExpandScripts(*options);
    if (!*as_main) driver::AddSharedParts(*options);
    const std::vector<driver::CompileOptions> runs = driver::OptionsPerScript(*options);
    return driver::RunAll(
        *as_main ? runs : driver::WithMainScripts(runs),
        [](const driver::CompileOptions& one) { return driver::RunCompile(one); });
  };
}

}  // namespace rux::tool
