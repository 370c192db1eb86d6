#include "release/inspection.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "compiled/compiled_file.h"
#include "release/manifest.h"
#include "support/failure.h"
#include "support/json.h"
#include "support/sha256.h"

namespace rux::release {
namespace {

namespace fs = std::filesystem;

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
    for (const FileRecord& file : manifest_.files) InspectPair(file);
    FindExtraFiles();
    std::stable_sort(problems_.begin(), problems_.end(),
                     [](const Problem& a, const Problem& b) { return a.path < b.path; });
    return std::move(problems_);
  }

 private:
  void Inspect(const FileRecord& record) {
    const std::string path = (folder_ / record.path).string();
    std::error_code error;
    if (!fs::exists(path, error)) return Add(record.path, "missing", "it is missing");
    try {
      InspectBytes(record, path);
    } catch (const support::Failure& failure) {
      Add(record.path, "unreadable", failure.what());
    }
  }

  void InspectBytes(const FileRecord& record, const std::string& path) {
    const support::FileDigest digest = support::DigestOf(path);
    if (digest.bytes != record.bytes) {
      return Add(record.path, "changed",
                 fmt::format("it has {} bytes; recorded are {}", digest.bytes, record.bytes));
    }
    if (digest.sha256 != record.sha256)
      return Add(record.path, "changed", "its SHA-256 is " + digest.sha256);
    const std::string form = FormOf(path);
    if (form != record.form) return Add(record.path, "changed", "it is of another form");
    if (form.empty()) return;
    const compiled::CompiledFile file(path);
    if (record.created != file.summary().creation_time)
      Add(record.path, "changed", "it was made at another time");
  }

  void InspectPair(const FileRecord& record) {
    if (record.pair.empty()) return;
    const bool is_there =
        std::any_of(manifest_.files.begin(), manifest_.files.end(), [&](const FileRecord& other) {
          return other.path == record.pair && other.pair == record.path;
        });
    if (!is_there) Add(record.path, "unpaired", "its pair is not in the manifest: " + record.pair);
  }

  void FindExtraFiles() {
    std::set<fs::path> known;
    for (const auto* list : {&manifest_.files, &manifest_.sources}) {
      for (const FileRecord& file : *list) known.insert((folder_ / file.path).lexically_normal());
    }
    const fs::path root = folder_.empty() ? fs::path(".") : folder_;
    const std::string own = fs::path(inspection_.manifest).lexically_normal().string();
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
      if (entry.is_directory() && !entry.is_symlink()) continue;
      const fs::path path = entry.path().lexically_normal();
      if (known.count(path) > 0 || path.string().compare(0, own.size(), own) == 0) continue;
      Add(path.lexically_relative(root.lexically_normal()).generic_string(), "extra",
          "it is not in the manifest");
    }
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
  constexpr std::size_t kSchema = 1;  // raised when a member changes its meaning or is removed
  json.Member("schema", kSchema);
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
