// The profile of commands that evaluate machines.
#ifndef TOOL_PROFILE_ARGUMENTS_H_
#define TOOL_PROFILE_ARGUMENTS_H_

#include <string>

#include "machine/machine.h"
#include "profile/profile.h"
#include "tool/command.h"

namespace rux::tool {

// --profile
void AddProfile(Arguments& arguments, std::string& profile);

// The file that is chosen or, failing that, what the project of the machine names; without either,
// nothing is stated. Throws a Failure.
profile::Profile ProfileFor(const machine::Machine& machine, const std::string& chosen);

}  // namespace rux::tool

#endif  // TOOL_PROFILE_ARGUMENTS_H_
