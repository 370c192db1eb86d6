// Files that are written into a folder together.
#ifndef IMPORTS_FOLDER_H_
#define IMPORTS_FOLDER_H_

#include <string>
#include <vector>

#include "imports/layout.h"

namespace rux::imports {

// "out" of "out/"; the root stays as it is.
std::string WithoutSlashAtEnd(std::string folder);

// "out/main.rux"
std::string PathIn(const std::string& folder, const std::string& name);

// Throws a Failure when one of them is there already.
void ExpectNew(const std::string& folder, const std::vector<ScriptFile>& files);

// Makes the folder where it is missing, and puts the files there, all or none; those that have that
// text already stay as they are. Throws a Failure.
void PutInFolder(const std::string& folder, const std::vector<ScriptFile>& files);

// Files that are not there are passed over. Throws a Failure.
void RemoveFrom(const std::string& folder, const std::vector<std::string>& names);

}  // namespace rux::imports

#endif  // IMPORTS_FOLDER_H_
