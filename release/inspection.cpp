#include "release/inspection.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "release/manifest.h"
#include "release/released_file.h"
#include "support/failure.h"
#include "support/input_file.h"
#include "support/json.h"
#include "support/sha256.h"

namespace rux::release {
namespace {

namespace fs = std::filesystem;

// What tools that sign put after the name of the file.
constexpr const char* kSignatures[] = {".asc", ".minisig", ".p7s", ".sig", ".sigstore"};

class Inspector {
 public:
  Inspector(const Manifest& manifest, const Inspection& inspection)
      : manifest_(manifest),
        inspection_(inspection),
        folder_(inspection.folder.empty() ? fs::path(inspection.manifest).parent_path()
                                          : fs::path(inspection.folder)) {}

  std::vector<Problem> Run() {
    for (const FileRecord& file : manifest_.files) Inspect(file);
    if (inspection_.with_sources) {
      for (const FileRecord& source : manifest_.sources) Inspect(source);
    }
    InspectPairs();
    FindExtraFiles();
    std::stable_sort(problems_.begin(), problems_.end(),
                     [](const Problem& a, const Problem& b) { return a.path < b.path; });
    return std::move(problems_);
  }

 private:
  void Inspect(const FileRecord& record) {
    const std::string path = (folder_ / record.path).string();
    std::error_code error;
    if (!fs::exists(path, error) && !error) return Add(record.path, "missing", "it is missing");
    try {
      InspectBytes(record, path);
    } catch (const support::Failure& failure) {
      Add(record.path, "unreadable", failure.what());
    }
  }

  void InspectBytes(const FileRecord& record, const std::string& path) {
    const ReleasedFile file(path);
    const support::Digest& digest = file.digest();
    if (digest.bytes != record.bytes) {
      return Add(record.path, "changed",
                 fmt::format("it has {} bytes; recorded are {}", digest.bytes, record.bytes));
    }
    if (digest.sha256 != record.sha256)
      return Add(record.path, "changed", "its SHA-256 is " + digest.sha256);
    if (file.form() != record.form) return Add(record.path, "changed", "it is of another form");
    if (record.created != file.CreationTime())
      Add(record.path, "changed", "it was made at another time");
  }

  void InspectPairs() {
    std::set<std::pair<std::string_view, std::string_view>> pairs;
    for (const FileRecord& file : manifest_.files) pairs.emplace(file.path, file.pair);
    for (const FileRecord& file : manifest_.files) {
      if (file.pair.empty() || pairs.count({file.pair, file.path}) > 0) continue;
      Add(file.path, "unpaired", "its pair is not in the manifest: " + file.pair);
    }
  }

  // Paths are compared as they are from the root of the file system, however the user spells them.
  void FindExtraFiles() {
    const fs::path root = fs::canonical(OrWorkingFolder(folder_));
    std::set<std::string> known;
    for (const auto* list : {&manifest_.files, &manifest_.sources}) {
      for (const FileRecord& file : *list)
        known.insert((root / file.path).lexically_normal().string());
    }
    const fs::path own = OwnPath();
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
      if (entry.is_directory() && !entry.is_symlink()) continue;
      if (Has(known, entry.path().string()) || BelongsTo(own, entry.path())) continue;
      Add(entry.path().lexically_relative(root).generic_string(), "extra",
          "it is not in the manifest");
    }
  }

  static fs::path OrWorkingFolder(const fs::path& folder) {
    return folder.empty() ? fs::path(".") : folder;
  }

  // Of the manifest; empty on standard input.
  fs::path OwnPath() const {
    if (inspection_.manifest == support::kStandardInput) return {};
    const fs::path path(inspection_.manifest);
    return fs::canonical(OrWorkingFolder(path.parent_path())) / path.filename();
  }

  // Whether it is one of the paths, or the folder of some: that may be a symbolic link.
  static bool Has(const std::set<std::string>& paths, const std::string& path) {
    if (paths.count(path) > 0) return true;
    const std::string folder = path + '/';
    const auto next = paths.lower_bound(folder);
    return next != paths.end() && next->compare(0, folder.size(), folder) == 0;
  }

  // Whether the path is that of the manifest itself or of a signature beside it.
  static bool BelongsTo(const fs::path& manifest, const fs::path& path) {
    if (path == manifest) return true;
    return std::any_of(std::begin(kSignatures), std::end(kSignatures), [&](const char* extension) {
      return path == manifest.string() + extension;
    });
  }

  void Add(const std::string& path, const char* what, const std::string& text) {
    problems_.push_back({path, what, text});
  }

  const Manifest& manifest_;
  const Inspection& inspection_;
  const fs::path folder_;
  std::vector<Problem> problems_;
};

}  // namespace

std::vector<Problem> ProblemsIn(const Manifest& manifest, const Inspection& inspection) {
  try {
    return Inspector(manifest, inspection).Run();
  } catch (const fs::filesystem_error& error) {
    throw support::SystemFailure("cannot read", error.path1().string(), error.code().value());
  }
}

void WriteProblems(support::JsonObject& json, const Inspection& inspection,
                   const Manifest& manifest, const std::vector<Problem>& problems) {
  json.Schema(1);
  json.Member("manifest", inspection.manifest);
  json.Member("valid", problems.empty());
  json.Member("files", manifest.files.size());
  json.Objects("problems", problems, [](support::JsonObject& object, const Problem& problem) {
    object.Member("path", problem.path);
    object.Member("problem", problem.what);
    object.Member("text", problem.text);
  });
}

}  // namespace rux::release
