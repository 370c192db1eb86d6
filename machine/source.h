// What a machine is read from: a file, or one of a git revision.
#ifndef MACHINE_SOURCE_H_
#define MACHINE_SOURCE_H_

#include <memory>
#include <string>
#include <vector>

#include "ruxcomp/file/header.h"
#include "ruxcomp/file/kept_bytes.h"

namespace rux::machine {

// What a REVISION:PATH names. A file of that name takes precedence.
struct Source {
  std::string name;  // as the user called it
  std::string path;  // of the file, relative to the working folder unless the user made it whole
  std::string revision;  // empty: the file is one of the file system
  std::string folder;    // of the repository that the working folder is; "" or "boards/"
  std::unique_ptr<ruxcomp::file::KeptBytes> bytes;
  ruxcomp::file::Form form;  // kNone: a script

  // A machine that is not there: git calls it /dev/null.
  bool is_missing = false;
};

// Throws a Failure when it cannot be read, or is neither a compiled file nor a script.
Source ReadSource(const std::string& name);

// The machines in a folder of a revision, REVISION:FOLDER, each as ReadSource() takes it: main
// scripts with that section in themselves, and compiled files that have no script beside them.
// Throws a Failure, of wrong usage when the name is not one of a folder.
std::vector<std::string> MachinesOfRevision(const std::string& name);

// Lets the reader of scripts find all files in the revision of the source, if it is of one.
void ReadScriptsOf(const Source& source);

}  // namespace rux::machine

#endif  // MACHINE_SOURCE_H_
