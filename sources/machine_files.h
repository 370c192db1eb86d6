// The files that machines are read from, by their names.
#ifndef SOURCES_MACHINE_FILES_H_
#define SOURCES_MACHINE_FILES_H_

#include <string>
#include <vector>

namespace rux::sources {

enum class FileForm { kScript, kDebugMeta, kMeta, kOther };
FileForm FormByName(const std::string& path);

// The path without its suffix, which all files of a machine share.
std::string MachinePath(const std::string& path);

// Of the files of each machine, the one that says most about it: the script, the debug meta file,
// the meta file. In the order of the machines' paths.
std::vector<std::string> OneOfEachMachine(const std::vector<std::string>& paths);

}  // namespace rux::sources

#endif  // SOURCES_MACHINE_FILES_H_
