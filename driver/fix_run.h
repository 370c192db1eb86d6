// Applies fixes of findings to scripts, and reports what became of each.
#ifndef DRIVER_FIX_RUN_H_
#define DRIVER_FIX_RUN_H_

#include <string>

#include "driver/compile_options.h"
#include "support/failure.h"

namespace rux::driver {

struct FixOptions {
  CompileOptions scripts;      // which, and which warnings are fixed
  bool is_dry = false;         // lists the fixes
  bool diffs = false;          // prints what would change
  bool takes_offers = false;   // fixes that are not safe are made, too
  std::string form = "human";  // or "json"
};

// Puts the fixed scripts in place of the files, those that they include and those that include
// them regarded, or with `is_dry` or `diffs` leaves these as they are. The status is kFindings when
// there are fixes that are not made in the end. Throws a Failure.
support::ExitStatus FixScripts(FixOptions options);

}  // namespace rux::driver

#endif  // DRIVER_FIX_RUN_H_
