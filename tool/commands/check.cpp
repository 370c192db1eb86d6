// rux check SCRIPT...
#include <memory>
#include <vector>

#include "driver/compile_options.h"
#include "driver/compile_run.h"
#include "driver/script_list.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"

namespace rux::tool {

Action SetUpCheck(Arguments& arguments) {
  const auto options = std::make_shared<driver::CompileOptions>();
  const auto as_main = std::make_shared<bool>(false);
  AddCompileOptions(arguments, *options);
  arguments.Add("--as-main", as_main.get(),
                "Check an included file by itself, not as part of the script that includes it");
  arguments.Footer(
      "Examples:\n  rux check boards/server.rux\n  rux check -j 4 boards/*.rux\n  rux check "
      "boards");
  return [options, as_main] {
    driver::ExpandScripts(*options);
    const std::vector<driver::CompileOptions> runs = driver::OptionsPerScript(*options);
    return driver::RunAll(
        *as_main ? runs : driver::WithMainScripts(runs),
        [](const driver::CompileOptions& one) { return driver::RunCompile(one); });
  };
}

}  // namespace rux::tool
