// What every command that compiles takes from the command line.
#ifndef DRIVER_COMPILE_OPTIONS_H_
#define DRIVER_COMPILE_OPTIONS_H_

#include <cstddef>
#include <string>
#include <vector>

#include "diagnostics/reporting.h"

namespace rux::driver {

struct CompileOptions {
  static constexpr const char* kStandardInput = "-";

  // For one script.
  bool reads_standard_input() const { return scripts.front() == kStandardInput; }
  // The path, as the library takes it, of the script or of the file that standard input stands for.
  std::string script_name() const;

  std::vector<std::string> scripts;  // one at least
  std::size_t jobs = 0;              // how many at a time; 0: as many as there are processors
  std::string stdin_name;            // what standard input stands for; empty: no file
  bool werror = false;
  std::vector<std::string> warnings;  // each fit for Severities
  diagnostics::ReportOptions reporting;
};

}  // namespace rux::driver

#endif  // DRIVER_COMPILE_OPTIONS_H_
