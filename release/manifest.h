// The manifest of a release: which files belong to it, and what they are.
//
//   docs/manifest.schema.json
#ifndef RELEASE_MANIFEST_H_
#define RELEASE_MANIFEST_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace rux::release {

// Paths are relative to the folder of the release, with slashes. Files are in it; sources may be
// elsewhere.
struct FileRecord {
  std::string path;
  std::uint64_t bytes;
  std::string sha256;
  // Of a compiled file: "meta", "debug meta", and when it was made; empty for others.
  std::string form = {};
  std::optional<std::uint32_t> created = {};
  std::string pair = {};                  // the other one of a meta file and a debug meta file
  std::vector<std::string> sources = {};  // what it was compiled from, if that is known
};

struct Manifest {
  std::string tool;                    // "rux 0.1.0"
  std::uint32_t created;               // seconds since 1970
  std::string revision;                // of the sources, as the user calls it; may be empty
  std::vector<FileRecord> files = {};  // both in the order of their paths
  std::vector<FileRecord> sources = {};
};

std::string ManifestText(const Manifest& manifest);

// Throws a Failure for a file that cannot be read or is not such a manifest, which names the line.
Manifest ReadManifest(const std::string& path);

// What the forms of compiled files are called there.
inline constexpr char kMetaForm[] = "meta";
inline constexpr char kDebugMetaForm[] = "debug meta";

// Whether a path from the folder of the release leads to what is in it.
bool IsInside(const std::string& path);

}  // namespace rux::release

#endif  // RELEASE_MANIFEST_H_
