// The files that a command finds where it is about to write.
#ifndef DRIVER_OVERWRITING_H_
#define DRIVER_OVERWRITING_H_

#include <string>
#include <vector>

#include "sources/source_set.h"
#include "support/placement.h"

namespace rux::driver {

struct NamedFile {
  const char* what;  // "meta file"
  const std::string& path;
  const std::string* script = nullptr;  // the one that it is written for, where there are several
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

// Whether a file with these bytes is there already. Of compiled files the time of creation only
// counts if `counts_time`. What cannot be read is another file.
bool HasSameContent(const support::NewFile& file, bool counts_time);

}  // namespace rux::driver

#endif  // DRIVER_OVERWRITING_H_
