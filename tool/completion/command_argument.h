// What the arguments of commands take.
#ifndef TOOL_COMPLETION_COMMAND_ARGUMENT_H_
#define TOOL_COMPLETION_COMMAND_ARGUMENT_H_

#include <string>
#include <utility>
#include <vector>

#include "tool/completion/candidate.h"

namespace rux {

// An argument as its command describes it.
struct CommandArgument {
  std::string name;                  // as the help calls it: META, PATH, FORMAT
  bool is_option = false;            // the value of an option
  bool is_file = false;              // the name of a file
  std::vector<std::string> choices;  // all that it takes; none: more than can be listed
};

// The arguments that stand in front of one, by the names that the help gives them.
using Given = std::vector<std::pair<std::string, std::string>>;

// What the beginning `typed` of the argument may become; also candidates that begin otherwise, for
// shells that forgive typing mistakes. May throw a Failure about a file among `given`.
Candidates CandidatesFor(const CommandArgument& argument, const Given& given,
                         const std::string& typed);

}  // namespace rux

#endif  // TOOL_COMPLETION_COMMAND_ARGUMENT_H_
