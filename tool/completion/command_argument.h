// What the arguments of commands take.
#ifndef TOOL_COMPLETION_COMMAND_ARGUMENT_H_
#define TOOL_COMPLETION_COMMAND_ARGUMENT_H_

#include <string>

#include "tool/arguments.h"
#include "tool/command_line.h"
#include "tool/completion/candidate.h"

namespace rux::tool {

// What the beginning `typed` of the argument may become; also candidates that begin otherwise, for
// shells that forgive typing mistakes. May throw a Failure about a file among `given`.
Candidates CandidatesFor(const CommandArgument& argument, const GivenValues& given,
                         const std::string& typed);

}  // namespace rux::tool

#endif  // TOOL_COMPLETION_COMMAND_ARGUMENT_H_
