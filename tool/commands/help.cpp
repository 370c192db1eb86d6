// rux help [COMMAND]
#include "tool/help.h"

#include <cstddef>
#include <memory>
#include <string>

#include "support/failure.h"
#include "support/standard_streams.h"
#include "support/terminal.h"
#include "tool/command.h"

namespace rux::tool {

Action SetUpHelp(Arguments& arguments) {
  const auto command = std::make_shared<std::string>();
  arguments.Add("COMMAND", command.get(), "The command to describe (default: rux itself)");
  arguments.Footer("Example:\n  rux help compile");
  return [command] {
    const std::size_t width = support::TextWidth();
    support::PrintOut(command->empty() ? ProgramHelp(width)
                                       : CommandHelp(ExpectCommand(*command), width));
    return support::ExitStatus::kDone;
  };
}

}  // namespace rux::tool
