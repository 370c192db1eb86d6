// Keeping a command from writing over its own files.
#ifndef DRIVER_OVERWRITING_H_
#define DRIVER_OVERWRITING_H_

#include <string>
#include <vector>

#include "sources/source_set.h"

namespace rux::driver {

struct NamedFile {
  const char* what;  // "meta file"
  const std::string& path;
};

// Throws a Failure of wrong usage when the two are one file, under the same name or another.
// Devices and pipes are written into and not replaced: they may be given twice.
void RefuseToOverwrite(const NamedFile& kept, const NamedFile& written);

// The same for the files of several scripts: none of the written ones is a kept one or written
// twice. Of hard links this is not noticed.
void RefuseToWriteTwice(const std::vector<NamedFile>& kept, const std::vector<NamedFile>& written);

// The same for all the sources of a script.
void KeepSources(const sources::SourceFiles& sources, const NamedFile& written);

// For a script whose files are not known any more: throws a Failure of trouble when the file to be
// written may be one of them, because there is something other than a compiled file.
void RefusePossibleSource(const NamedFile& written);

}  // namespace rux::driver

#endif  // DRIVER_OVERWRITING_H_
