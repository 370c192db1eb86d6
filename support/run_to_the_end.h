// The end of a process, whatever comes.
#ifndef SUPPORT_RUN_TO_THE_END_H_
#define SUPPORT_RUN_TO_THE_END_H_

#include <functional>

#include "support/exit_status.h"

namespace rux::support {

// What the process is to exit with after `run`. What that throws is told on standard error, and so
// is what standard output did not take.
ExitStatus RunToTheEnd(const std::function<ExitStatus()>& run);

}  // namespace rux::support

#endif  // SUPPORT_RUN_TO_THE_END_H_
