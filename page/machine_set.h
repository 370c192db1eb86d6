// The machines of a command that writes several pages, and what each of them was before.
#ifndef PAGE_MACHINE_SET_H_
#define PAGE_MACHINE_SET_H_

#include <string>
#include <vector>

#include "driver/compile_options.h"

namespace rux::page {

struct NamedMachine {
  std::string name;         // as it is loaded
  std::string before = {};  // the machine to compare with; empty: none
};

struct MachineSet {
  std::vector<NamedMachine> machines;
  std::vector<std::string> gone = {};  // those before that none of the machines was
};

// The scripts of the options are what the command names: files, folders, lists of them. `before`: a
// folder, or REVISION:FOLDER; empty: none. A machine was what is there at its path below the folder
// that was named, whatever the suffix. Throws a Failure.
MachineSet MachinesOf(driver::CompileOptions options, const std::string& before);

}  // namespace rux::page

#endif  // PAGE_MACHINE_SET_H_
