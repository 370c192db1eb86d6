// Making the manifest of a release.
#ifndef RELEASE_MAKING_H_
#define RELEASE_MAKING_H_

#include <cstdint>
#include <string>
#include <vector>

#include "release/manifest.h"

namespace rux::release {

struct Contents {
  std::vector<std::string> files;
  std::vector<std::string> depfiles;  // dependency files: what files were compiled from
  std::string folder;                 // of the release; empty: the working folder
  std::string tool;
  std::string revision;
  std::uint32_t created;
};

// A meta file and a debug meta file whose paths differ only in their extensions are a pair; the
// same contents make the same manifest. Throws a Failure for a file that cannot be read, a compiled
// one that is not sound, one
// outside the folder, a pair that does not belong together or could be several, and a dependency
// file about none of the files.
Manifest ManifestOf(const Contents& contents);

}  // namespace rux::release

#endif  // RELEASE_MAKING_H_
