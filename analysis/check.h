// What a process of its own finds out about documents and machines.
#ifndef ANALYSIS_CHECK_H_
#define ANALYSIS_CHECK_H_

#include <string>
#include <vector>

#include "analysis/findings.h"
#include "analysis/surroundings.h"
#include "workspace/documents.h"

namespace rux::analysis {

// These functions change the working folder and the texts that the reader takes instead of files,
// and leave them so.

// A machine, from its folder.
struct Machine {
  std::string script;      // the main script's path
  std::string whole_name;  // of the main script
};

template <class Wire>
void Walk(Wire& wire, Machine& machine) {
  wire(machine.script);
  wire(machine.whole_name);
}

// The machines that the document is a part of; itself when it is none of any.
std::vector<Machine> MachinesOf(const Surroundings& surroundings,
                                const workspace::Document& document);

// The machines below the root of the surroundings that read the file or one in the folder, of which
// this is the whole name.
std::vector<Machine> MachinesBelow(const Surroundings& surroundings,
                                   const std::string& file_or_folder);

// What rux check finds in a machine.
MachineFindings CheckMachine(const Surroundings& surroundings, const std::string& script);

}  // namespace rux::analysis

#endif  // ANALYSIS_CHECK_H_
