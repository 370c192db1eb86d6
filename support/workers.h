// Work that is done by processes of their own, several at a time.
#ifndef SUPPORT_WORKERS_H_
#define SUPPORT_WORKERS_H_

#include <cstddef>
#include <functional>
#include <string>

#include "support/failure.h"

namespace rux::support {

// How a piece of work ended, and what it printed.
struct JobResult {
  ExitStatus status = ExitStatus::kTrouble;
  int signal = 0;  // that ended the process; 0: none did
  std::string output;
  std::string errors;
};

// Does `count` pieces of work, `most` of them at a time, in processes that begin as copies of this
// one; and reports each, in their order, as soon as those before it are done. What work throws is
// reported on its standard error, as main() does it.
//
// Once the first ones are under way, this process does what is to be done meanwhile, if anything;
// it must not start other such work.
//
// A signal that ends this process (SIGINT, SIGTERM, SIGHUP, SIGQUIT) ends those others first, and
// interrupted() is called; when nothing can hold it back (SIGKILL), the system ends them. Throws a
// Failure when no process can be started, and passes on what `report` and
// `meanwhile` throw; those that are under way are ended then.
void RunJobs(std::size_t count, std::size_t most,
             const std::function<ExitStatus(std::size_t)>& work,
             const std::function<void(std::size_t, const JobResult&)>& report,
             const std::function<void()>& interrupted,
             const std::function<void()>& meanwhile = nullptr);

}  // namespace rux::support

#endif  // SUPPORT_WORKERS_H_
