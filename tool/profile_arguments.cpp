#include "tool/profile_arguments.h"

#include <string>

#include "machine/machine.h"
#include "profile/profile.h"
#include "settings/project.h"
#include "tool/command.h"

namespace rux::tool {

void AddProfile(Arguments& arguments, std::string& profile) {
  arguments
      .Add("--profile", &profile,
           "What the firmware does where the language leaves it open (docs/profile.schema.json); "
           "without it, the profile of the project file")
      .File("FILE");
}

profile::Profile ProfileFor(const machine::Machine& machine, const std::string& chosen) {
  if (!chosen.empty()) return profile::ReadProfile(chosen);
  const settings::Project* project = machine.project();
  if (project == nullptr || project->profile.empty()) return {};
  return profile::ReadProfile(project->profile);
}

}  // namespace rux::tool
