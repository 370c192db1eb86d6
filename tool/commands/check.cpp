// rux check SCRIPT
#include <memory>

#include "tool/command.h"
#include "tool/compile/compile_run.h"

namespace rux {

Action SetUpCheck(CLI::App& app) {
  const auto options = std::make_shared<CompileOptions>();
  AddCompileOptions(app, *options);
  app.footer("Example:\n  rux check boards/server.rux");
  return [options] { return RunCompile(*options); };
}

}  // namespace rux
