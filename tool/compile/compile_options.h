// What every command that compiles takes from the command line.
#ifndef TOOL_COMPILE_COMPILE_OPTIONS_H_
#define TOOL_COMPILE_COMPILE_OPTIONS_H_

#include <string>
#include <vector>

#include "tool/compile/telling.h"

namespace CLI {
class App;
}

namespace rux {

struct CompileOptions {
  bool reads_standard_input() const { return script == "-"; }
  // The path, as the library takes it, of the script or of the file that standard input stands for.
  std::string script_name() const;

  std::string script;      // "-": standard input
  std::string stdin_name;  // what that stands for; empty: no file
  bool werror = false;
  std::vector<std::string> warnings;  // each fit for Severities
  TellingOptions telling;
};

void AddCompileOptions(CLI::App& command, CompileOptions& options);

}  // namespace rux

#endif  // TOOL_COMPILE_COMPILE_OPTIONS_H_
