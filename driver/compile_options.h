// What every command that compiles takes: options, the text on standard input, the time in the
// environment.
#ifndef DRIVER_COMPILE_OPTIONS_H_
#define DRIVER_COMPILE_OPTIONS_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/report.h"
#include "diagnostics/severities.h"
#include "driver/baseline.h"
#include "run/run.h"
#include "settings/project.h"

namespace rux::driver {

// Of files below a folder, the main scripts there that include them.
using MainsOfParts = std::map<std::string, std::vector<std::string>>;

struct CompileOptions {
  static constexpr const char* kStandardInput = "-";

  // For one script.
  bool reads_standard_input() const { return scripts.front() == kStandardInput; }
  // The path, as the library takes it, of the script or of the file that standard input stands for.
  std::string script_name() const;
  // Empty without a project.
  std::string project_file() const;
  // Those of the command line, then those of the project.
  std::vector<std::string> all_include_folders() const;

  // Whether each file to be written needs a name for each script.
  bool are_several() const { return is_list || scripts.size() > 1; }

  std::vector<std::string> scripts;  // one at least
  bool is_list = false;              // of scripts that are several, even if it has one alone
  std::size_t jobs = 0;              // how many at a time; 0: as many as there are processors
  std::vector<std::string> include_folders;  // beside the folder of the including file
  // Whether the library gets paths that do not depend on where the tree is, because it stores them.
  bool stores_paths = false;
  std::vector<std::string> prefix_map;  // OLD=NEW, for these paths
  // The path that the library is given: relative to the script, or as the map has it.
  std::string stored_name() const;
  // What the library is to call a file that was found at that path in an include folder: mapped
  // like that of the script, or else relative to the script's folder.
  std::string stored_path(const std::string& found) const;

  // Files below folders of the command that have allow comments and that several main scripts there
  // include. When they are among the scripts, only what none of these makes use of is reported.
  std::shared_ptr<MainsOfParts> shared_parts = std::make_shared<MainsOfParts>();
  bool is_shared_part() const { return shared_parts->count(scripts.front()) != 0; }

  // The one file of the script that is reported on, as it can be opened; empty: all.
  std::string part;
  // What was on standard input, once it is read; in a machine, it takes the place of a part.
  std::optional<run::Text> text;
  // Runs over the main scripts that include the script, as whose part it is checked; none: it is
  // checked by itself.
  std::vector<CompileOptions> machines;
  // Files that others of the command's scripts are: they are reported there.
  std::vector<std::string> left_out;
  std::string stdin_name;  // what standard input stands for; empty: no file
  settings::ProjectChoice project_choice;
  std::shared_ptr<settings::Projects> projects;      // of all scripts of the command
  std::shared_ptr<const settings::Project> project;  // of the script; null: none

  BaselineFiles baseline_files;
  std::shared_ptr<Baseline> baseline;  // of all scripts of the command; null: none

  diagnostics::Purpose purpose = diagnostics::Purpose::kCheck;
  bool werror = false;
  std::vector<std::string> warnings;  // each fit for Severities
  diagnostics::ReportOptions reporting;
};

// The project files of that choice, with the warnings that rux knows.
std::shared_ptr<settings::Projects> ProjectsOf(const settings::ProjectChoice& choice);

// Finds the project of the options' one script. Throws a Failure.
void UseProject(CompileOptions& options);

// What is reported by the project and the options.
diagnostics::Severities SeveritiesOf(const CompileOptions& options);

// Reads to the end. `name`: the library's path of the file that the text stands for, whose folder
// is that of its included files. Throws a Failure, also when there is no such folder.
std::string ReadStandardInput(const std::string& name);

// What the environment variable SOURCE_DATE_EPOCH sets, so that the same sources give the same
// bytes at any time; nothing when it is not there. Throws a Failure of wrong usage when it is no
// number of seconds since 1970 that the files can hold.
std::optional<std::uint32_t> SourceDateEpoch();

}  // namespace rux::driver

#endif  // DRIVER_COMPILE_OPTIONS_H_
