// Formats scripts, and reports what became of each.
#ifndef DRIVER_FORMAT_RUN_H_
#define DRIVER_FORMAT_RUN_H_

#include <string>

#include "driver/compile_options.h"
#include "support/failure.h"

namespace rux::driver {

struct FormatOptions {
  CompileOptions scripts;  // which, and how they are compiled for comparison
  bool checks = false;     // lists what is not formatted
  bool diffs = false;      // prints how it differs
  bool blank_lines = false;
  std::string form = "human";  // of what checks prints: or "json"
};

// Puts the formatted scripts in place of the files, or with `checks` or `diffs` leaves these as
// they are; prints the text of standard input, formatted if it can be. The status is kFindings when
// scripts are not formatted in the end. Throws a Failure.
support::ExitStatus FormatScripts(FormatOptions options);

}  // namespace rux::driver

#endif  // DRIVER_FORMAT_RUN_H_
