// Writing files whole or not at all.
#ifndef SUPPORT_PLACEMENT_H_
#define SUPPORT_PLACEMENT_H_

#include <string>
#include <string_view>
#include <vector>

namespace rux::support {

struct NewFile {
  std::string path;
  std::string_view bytes;  // not owned
};

// Puts all the files in place, or none of them: then what was there before is unchanged. Throws a
// Failure.
//
// A file has its name only once all of it is on the disk: it takes the place of what was
// there by renaming, with the rights of the one it replaces (FileRights). When its name is a
// symbolic link, the file that the link leads to is replaced; other hard links keep the older file.
// Two things cannot be taken back: what was written into devices and pipes, which comes first of
// all, and, on a file system without hard links, a file that was replaced before the last one.
//
// Signals wait while files change their names. One that nothing can hold back (SIGKILL), like a
// loss of power, may come between two files; each is still there whole, old or new, and all that
// may remain is a name ".rux-..." for a file that was about to be put in place.
void PutInPlace(const std::vector<NewFile>& files);

// Makes the folder of a file, and those above it, where they are missing. Throws a Failure.
void MakeFolderOf(const std::string& file);

}  // namespace rux::support

#endif  // SUPPORT_PLACEMENT_H_
