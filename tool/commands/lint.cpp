// rux lint SCRIPT...
#include "diagnostics/severities.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"

namespace rux::tool {

Action SetUpLint(Arguments& arguments) {
  arguments.Footer(
      "Examples:\n  rux lint boards/server.rux\n  rux lint -W no-negative-number boards\n  rux "
      "lint "
      "--baseline lint.json boards");
  return SetUpReporting(arguments, diagnostics::Purpose::kLint);
}

}  // namespace rux::tool
