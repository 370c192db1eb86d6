#include "tool/compile/compile_options.h"

#include "CLI/CLI.hpp"
#include "tool/command.h"
#include "tool/compile/script_path.h"
#include "tool/diagnostics/severities.h"

namespace rux {

std::string CompileOptions::script_name() const {
  if (!reads_standard_input()) return ToLibraryPath(scripts.front());
  return stdin_name.empty() ? "<stdin>" : ToLibraryPath(stdin_name);
}

void AddCompileOptions(CLI::App& command, CompileOptions& options) {
  TellingOptions& telling = options.telling;
  command
      .add_option("SCRIPT", options.scripts, "The script to read, or several; - for standard input")
      ->required()
      ->type_name("")
      ->check(IsFileName());
  command
      .add_option("-j,--jobs", options.jobs,
                  "Read so many scripts at a time (default: as many as there are processors)")
      ->type_name("N")
      ->check(IsCount());
  command
      .add_option("--stdin-name", options.stdin_name,
                  "With -: the name of the script, for messages and the folder of its INCLUDEs")
      ->type_name("NAME")
      ->check(IsFileName());
  command.add_flag("--werror", options.werror, "Let warnings fail the run, like -W error");
  const auto is_setting = [](const std::string& text) { return Severities().Set(text); };
  command
      .add_option("-W", options.warnings,
                  "error: let warnings fail the run; error=ID: those of one message; no-ID: do not "
                  "tell them ('rux explain' lists the ids)")
      ->type_name("WHAT")
      ->allow_extra_args(false)
      ->check(is_setting);
  command.add_option("--max-errors", telling.max_errors, "Tell no more than this many errors")
      ->type_name("N")
      ->check(IsCount());
  command
      .add_option("--format", telling.format,
                  "How to tell: human (default), or, for programs and on standard output, gcc, "
                  "json, sarif, github")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({"human", "gcc", "json", "sarif", "github"}));
  command
      .add_option("--diagnostics-file", telling.file,
                  "Write the form for programs into this file; people are told as usual")
      ->type_name("FILE")
      ->check(IsFileName());
  command.add_option("--color", telling.color, "auto (default: on a terminal), always or never")
      ->type_name("WHEN")
      ->check(CLI::IsMember({"auto", "always", "never"}));
  command.add_flag("--verbose", telling.verbose, "Show also what the library only remarks");
}

}  // namespace rux
