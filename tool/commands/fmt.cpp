// rux fmt SCRIPT...
#include <memory>

#include "driver/format_run.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"

namespace rux::tool {

Action SetUpFmt(Arguments& arguments) {
  const auto options = std::make_shared<driver::FormatOptions>();
  AddScripts(arguments, options->scripts,
             "The scripts to format; - for standard input, a folder for all scripts below it, "
             "@FILE for those that a file lists");
  arguments.Add("--check", &options->checks,
                "Change nothing: list the scripts that need formatting");
  arguments
      .Add("--diff", &options->diffs, "Change nothing: print what would change, for patch or git")
      .Without({"--check"});
  arguments.Add("--blank-lines", &options->blank_lines,
                "Also put one empty line between sections, and remove surplus empty lines");
  arguments
      .Add("--format", &options->form, "With --check: human (default), or json on standard output")
      .OneOf("FORMAT", {"human", "json"});
  AddProjectOptions(arguments, options->scripts);
  arguments.Footer(
      "Each file is replaced as a whole. A script that has errors stays as it is, and so does one\n"
      "whose machine would compile to another meta file. '# rux: format off' and\n"
      "'# rux: format on' in a script exempt the lines in between.\n\n"
      "The exit status is 1 when a script is not formatted.\n\n"
      "Examples:\n  rux fmt boards/server.rux\n  rux fmt --check boards\n  rux fmt --diff boards | "
      "less\n  rux fmt - --stdin-name boards/fans.rux < boards/fans.rux");
  return [options] { return driver::FormatScripts(*options); };
}

}  // namespace rux::tool
