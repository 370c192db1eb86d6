// Whether the files of a release are as its manifest says.
#ifndef RELEASE_INSPECTION_H_
#define RELEASE_INSPECTION_H_

#include <string>
#include <vector>

#include "release/manifest.h"
#include "support/json.h"

namespace rux::release {

struct Problem {
  std::string path;  // as the manifest has it
  const char* what;  // "missing", "changed", ...: a word of docs/release.schema.json
  std::string text;  // for people
};

struct Inspection {
  std::string manifest;  // its path
  std::string folder;    // of the release; empty: that of the manifest
  bool with_sources = false;
};

// In the order of the paths: files that are missing, are not as recorded, or are not sound; and
// files below the folder that the manifest does not have, but for itself and signatures beside it:
// its name and the extension of one. Symbolic links to folders are not followed.
std::vector<Problem> ProblemsIn(const Manifest& manifest, const Inspection& inspection);

// docs/release.schema.json
void WriteProblems(support::JsonObject& json, const Inspection& inspection,
                   const Manifest& manifest, const std::vector<Problem>& problems);

}  // namespace rux::release

#endif  // RELEASE_INSPECTION_H_
