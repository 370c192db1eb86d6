// The groups that a section of a machine is in.
#ifndef MACHINE_GROUPS_H_
#define MACHINE_GROUPS_H_

#include <string>
#include <vector>

#include "ruxcomp/model/handles.h"

namespace rux::machine {

// Their names, from the outermost one. Groups of a damaged machine that contain each other are
// named once. Takes time by their number.
std::vector<std::string> GroupsOf(const ruxcomp::Section& section);

}  // namespace rux::machine

#endif  // MACHINE_GROUPS_H_
