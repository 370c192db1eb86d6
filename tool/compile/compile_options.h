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
  std::string script;
  bool werror = false;
  std::vector<std::string> warnings;  // each fit for Severities
  TellingOptions telling;
};

void AddCompileOptions(CLI::App& command, CompileOptions& options);

}  // namespace rux

#endif  // TOOL_COMPILE_COMPILE_OPTIONS_H_
