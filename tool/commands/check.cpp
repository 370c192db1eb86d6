// rux check SCRIPT...
#include "diagnostics/severities.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"

namespace rux::tool {

Action SetUpCheck(Arguments& arguments) {
  arguments.Footer(
      "Examples:\n  rux check boards/server.rux\n  rux check -j 4 boards/*.rux\n  rux check "
      "boards");
  return SetUpReporting(arguments, diagnostics::Purpose::kCheck);
}

}  // namespace rux::tool
