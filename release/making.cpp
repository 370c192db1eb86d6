#include "release/making.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "diff/pairing.h"
#include "driver/meta_files.h"
#include "release/manifest.h"
#include "release/released_file.h"
#include "support/failure.h"
#include "support/folders.h"
#include "support/utf8.h"

namespace rux::release {
namespace {

namespace fs = std::filesystem;
using support::ExitStatus;
using support::Failure;

class Maker {
 public:
  explicit Maker(const Contents& contents)
      : contents_(contents),
        folder_(fs::absolute(contents.folder.empty() ? "." : contents.folder).lexically_normal()),
        whole_folder_(support::WholeName(folder_.string())) {}

  Manifest Make() {
    Manifest manifest{contents_.tool, contents_.created, contents_.revision};
    for (const std::string& file : contents_.files) AddFile(file);
    for (const std::string& depfile : contents_.depfiles) AddSources(depfile);
    FindPairs();
    for (auto& [path, record] : files_) manifest.files.push_back(std::move(record));
    for (auto& [path, record] : sources_) manifest.sources.push_back(std::move(record));
    return manifest;
  }

 private:
  // The path from the folder of the release.
  std::string NameOf(const std::string& path) const {
    if (!support::IsUtf8(path))
      throw Failure(ExitStatus::kTrouble, "cannot record {}: its name must be UTF-8", path);
    const fs::path spelt = fs::absolute(path).lexically_normal();
    std::string name = spelt.lexically_relative(folder_).generic_string();
    if (IsInside(name)) return name;
    // A folder above may be that of the release by a symbolic link.
    for (fs::path above = spelt.parent_path(); above.has_relative_path();
         above = above.parent_path()) {
      if (support::WholeName(above.string()) == whole_folder_)
        return spelt.lexically_relative(above).generic_string();
    }
    return name;
  }

  FileRecord RecordOf(const std::string& path) const {
    const ReleasedFile file(path);
    return {NameOf(path), file.digest().bytes, file.digest().sha256, file.form(),
            file.CreationTime()};
  }

  void AddFile(const std::string& path) {
    FileRecord record = RecordOf(path);
    if (!IsInside(record.path)) {
      throw Failure(ExitStatus::kTrouble,
                    "cannot record {}: it is not in the folder of the release, {}", path,
                    contents_.folder.empty() ? "the working folder" : contents_.folder);
    }
    paths_[record.path] = path;
    files_.insert_or_assign(record.path, std::move(record));
  }

  // A dependency file may be about more files than the release has, but at least about one of them.
  void AddSources(const std::string& depfile) {
    const driver::DepfileRule rule = driver::ReadDepfile(depfile);
    std::vector<FileRecord*> released;
    for (const std::string& target : rule.targets) {
      const auto file = files_.find(NameOf(target));
      if (file != files_.end()) released.push_back(&file->second);
    }
    if (released.empty()) {
      throw Failure(ExitStatus::kFindings, "{} is about {}, which is not one of the files", depfile,
                    rule.targets.front());
    }
    std::vector<std::string> names;
    for (const std::string& source : rule.prerequisites) {
      names.push_back(NameOf(source));
      if (sources_.count(names.back()) == 0) sources_.emplace(names.back(), RecordOf(source));
    }
    std::sort(names.begin(), names.end());
    for (FileRecord* file : released) file->sources = names;
  }

  void FindPairs() {
    struct Stem {
      std::vector<FileRecord*> meta;
      std::vector<FileRecord*> debug_meta;
    };
    std::map<std::string, Stem> stems;
    for (auto& [name, record] : files_) {
      if (record.form == kMetaForm) stems[StemOf(name)].meta.push_back(&record);
      if (record.form == kDebugMetaForm) stems[StemOf(name)].debug_meta.push_back(&record);
    }
    for (const auto& [stem, files] : stems) {
      if (files.meta.empty() || files.debug_meta.empty()) continue;
      ExpectOne(files.meta, *files.debug_meta.front());
      ExpectOne(files.debug_meta, *files.meta.front());
      Pair(*files.meta.front(), *files.debug_meta.front());
    }
  }

  static void ExpectOne(const std::vector<FileRecord*>& files, const FileRecord& other) {
    if (files.size() == 1) return;
    throw Failure(ExitStatus::kFindings,
                  "{} and {} are both {} files: only one can be the pair of {}", files[0]->path,
                  files[1]->path, files[0]->form, other.path);
  }

  void Pair(FileRecord& meta, FileRecord& debug_meta) const {
    ExpectPair(paths_.at(meta.path), paths_.at(debug_meta.path));
    meta.pair = debug_meta.path;
    debug_meta.pair = meta.path;
  }

  static std::string StemOf(const std::string& name) {
    return fs::path(name).replace_extension().string();
  }

  static void ExpectPair(const std::string& meta, const std::string& debug_meta) {
    const diff::Pairing pairing = diff::PairingOf(meta, debug_meta, {});
    if (pairing.belongs()) return;
    throw Failure(ExitStatus::kFindings, "{}; 'rux match' shows the first",
                  diff::ResultText(pairing));
  }

  const Contents& contents_;
  const fs::path folder_;
  const std::string whole_folder_;
  std::map<std::string, FileRecord> files_;
  std::map<std::string, std::string> paths_;  // of the files, from the working folder
  std::map<std::string, FileRecord> sources_;
};

}  // namespace

Manifest ManifestOf(const Contents& contents) { return Maker(contents).Make(); }

}  // namespace rux::release
