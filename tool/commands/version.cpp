// rux version
#include "support/failure.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {

Action SetUpVersion(Arguments&) {
  return [] {
    support::PrintOut(VersionText() + '\n');
    return support::ExitStatus::kDone;
  };
}

}  // namespace rux::tool
