// The paths of scripts, as people and as the library write them.
//
// The library's paths separate folders with backslashes: it takes what stands before the last one
// as the folder of included files and what follows as the name for its messages. Its reader opens a
// path as it stands or, when there is no such file, with backslashes read as slashes.
#ifndef SOURCES_SCRIPT_PATH_H_
#define SOURCES_SCRIPT_PATH_H_

#include <string>

namespace rux::sources {

// The library's form of a path that somebody typed. One that already has a backslash is left alone.
std::string ToLibraryPath(const std::string& path);

// The name under which the reader finds the file of one of the library's paths.
std::string ToOpenablePath(const std::string& library_path);

// What follows the last backslash of one of the library's paths; the whole when there is none.
std::string BaseNameOf(const std::string& library_path);

// What stands up to and including the last backslash; empty when there is none.
std::string FolderOf(const std::string& library_path);

}  // namespace rux::sources

#endif  // SOURCES_SCRIPT_PATH_H_
