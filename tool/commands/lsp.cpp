// rux lsp
#include <memory>

#include "driver/compile_options.h"
#include "server/serve.h"
#include "tool/command.h"
#include "tool/compile_arguments.h"

namespace rux::tool {

Action SetUpLsp(Arguments& arguments) {
  const auto options = std::make_shared<driver::CompileOptions>();
  AddMachineOptions(arguments, *options);
  arguments.Footer(
      "An editor starts it and talks to it on standard input and output, in the Language Server "
      "Protocol.\n\n"
      "Examples:\n  rux lsp\n  rux lsp -I std -W style");
  return [options] { return server::Serve(*options); };
}

}  // namespace rux::tool
