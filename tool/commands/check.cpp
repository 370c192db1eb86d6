// rux check SCRIPT...
#include <memory>

#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"

namespace rux::tool {

Action SetUpCheck(Arguments& arguments) {
  const auto options = std::make_shared<driver::CompileOptions>();
  AddCompileOptions(arguments, *options);
  arguments.Footer("Examples:\n  rux check boards/server.rux\n  rux check -j 4 boards/*.rux");
  return [options] {
    return driver::RunAll(
        driver::OptionsPerScript(*options),
        [](const driver::CompileOptions& one) { return driver::RunCompile(one); });
  };
}

}  // namespace rux::tool
