// Reading machines.
#ifndef MACHINE_LOAD_H_
#define MACHINE_LOAD_H_

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "machine/machine.h"
#include "machine/source.h"
#include "settings/project.h"

namespace rux::machine {

struct LoadOptions {
  std::vector<std::string> include_folders;  // those of the project come after them
  std::shared_ptr<settings::Projects> projects;
  // Where the files belong, when they are copies that were made of revisions: a script includes
  // what is there. Empty: where they are.
  std::string place;
};

// Where the files that a script includes are looked for, after its own folder.
std::vector<std::string> IncludeFoldersFor(const Source& source, const LoadOptions& options);

// Each of a meta file, a debug meta file, a script, or one of these in a git revision
// ("HEAD~1:boards/board.rux", with all that it includes from there). Scripts, and what debug meta
// files keep of them, are compiled by processes of their own. /dev/null is a machine without
// sections. Throws a Failure, also for a script in which the check finds an error, and of wrong
// usage when standard input is given twice. While they compile, or else before, this process does
// what is to be done meanwhile, if anything.
std::vector<Machine> Load(const std::vector<std::string>& names, const LoadOptions& options,
                          const std::function<void()>& meanwhile = nullptr);

}  // namespace rux::machine

#endif  // MACHINE_LOAD_H_
