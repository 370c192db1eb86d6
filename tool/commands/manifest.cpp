// rux manifest FILE...
#include "release/manifest.h"

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "driver/compile_options.h"
#include "driver/overwriting.h"
#include "release/making.h"
#include "support/failure.h"
#include "support/placement.h"
#include "support/standard_streams.h"
#include "tool/command.h"

namespace rux::tool {
namespace {

struct ManifestOptions {
  release::Contents contents;
  std::string output;  // empty: standard output
};

// Neither the files that the manifest is about nor what it was made from may be lost to it.
void RefuseToOverwriteListed(const release::Contents& contents, const release::Manifest& manifest,
                             const std::string& output) {
  const driver::NamedFile written{"manifest", output};
  for (const std::string& depfile : contents.depfiles)
    driver::RefuseToOverwrite({"dependency file", depfile}, written);
  const auto refuse_each = [&](const char* what, const std::vector<release::FileRecord>& records) {
    for (const release::FileRecord& record : records) {
      const std::filesystem::path path = std::filesystem::path(contents.folder) / record.path;
      driver::RefuseToOverwrite({what, path.lexically_normal().string()}, written);
    }
  };
  refuse_each("file of the release", manifest.files);
  refuse_each("source", manifest.sources);
}

support::ExitStatus WriteManifest(const ManifestOptions& options) {
  release::Contents contents = options.contents;
  contents.tool = VersionText();
  contents.created =
      driver::SourceDateEpoch().value_or(static_cast<std::uint32_t>(std::time(nullptr)));
  if (contents.folder.empty())
    contents.folder = std::filesystem::path(options.output).parent_path().string();
  const release::Manifest manifest = release::ManifestOf(contents);
  if (options.output.empty()) {
    support::PrintOut(release::ManifestText(manifest));
  } else {
    RefuseToOverwriteListed(contents, manifest, options.output);
    support::PutInPlace({{options.output, release::ManifestText(manifest)}});
  }
  return support::ExitStatus::kDone;
}

}  // namespace

Action SetUpManifest(Arguments& arguments) {
  const auto options = std::make_shared<ManifestOptions>();
  arguments.Add("FILE", &options->contents.files, "The files of the release").File().Required();
  arguments.Add("-o,--output", &options->output, "The manifest to write (default: standard output)")
      .File("FILE");
  arguments
      .Add("--depfile", &options->contents.depfiles,
           "Record what files were compiled from, by what rux compile --depfile wrote")
      .File("FILE");
  arguments.Add("--revision", &options->contents.revision, "Record the revision of the sources")
      .Value("TEXT");
  arguments
      .Add("--folder", &options->contents.folder,
           "The folder of the release (default: that of the manifest)")
      .File("FOLDER");
  arguments.Footer(
      "For each file: path from the folder of the release, size and SHA-256; of compiled files "
      "also\n"
      "form, time and pair. rux verify --manifest checks all of it. The time of the manifest is\n"
      "SOURCE_DATE_EPOCH when that is set. docs/manifest.schema.json describes the JSON.\n\n"
      "Example:\n"
      "  rux manifest out/*.meta out/*.metad --revision v1.2 -o out/manifest.json");
  return [options] { return WriteManifest(*options); };
}

}  // namespace rux::tool
