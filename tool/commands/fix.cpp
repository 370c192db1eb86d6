// rux fix SCRIPT...
#include <memory>

#include "diagnostics/severities.h"
#include "driver/fix_run.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"

namespace rux::tool {

Action SetUpFix(Arguments& arguments) {
  const auto options = std::make_shared<driver::FixOptions>();
  options->scripts.purpose = diagnostics::Purpose::kFix;
  AddScripts(arguments, options->scripts,
             "The scripts to fix, with the files that they include; a folder for the main scripts "
             "below it, @FILE for those that a file lists");
  arguments.Add("--dry-run", &options->is_dry, "Change nothing: list the fixes");
  arguments
      .Add("--diff", &options->diffs, "Change nothing: print what would change, for patch or git")
      .Without({"--dry-run"});
  arguments.Add("--unsafe", &options->takes_offers,
                "Also make fixes that change what is compiled, or that are a guess");
  AddWarningChoice(
      arguments, options->scripts,
      "Which warnings to fix: a group (loss, suspect, style), the id of a warning, all "
      "or none; no-WHAT leaves it. Separate several with commas (default: all)");
  AddSearchOptions(arguments, options->scripts.include_folders, options->scripts.project_choice);
  arguments
      .Add("--format", &options->form,
           "human (default), or json on standard output (not with --diff)")
      .OneOf("FORMAT", {"human", "json"});
  arguments.Footer(
      "The fixes are those that an editor offers. They change no line into two and no two into\n"
      "one. If a machine would check worse with them, its files stay as they are.\n\n"
      "The exit status is 1 when there are fixes that are not made in the end.\n\n"
      "Examples:\n  rux fix boards/server.rux\n  rux fix --dry-run boards\n  rux fix --diff boards "
      "| less\n  rux fix -W none,trailing-blank boards");
  return [options] { return driver::FixScripts(*options); };
}

}  // namespace rux::tool
