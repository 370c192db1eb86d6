#include "release/making.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "compiled/compiled_file.h"
#include "diff/pairing.h"
#include "driver/meta_files.h"
#include "release/manifest.h"
#include "support/failure.h"
#include "support/sha256.h"
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
        folder_(fs::absolute(contents.folder.empty() ? "." : contents.folder).lexically_normal()) {}

  Manifest Make() {
    Manifest manifest{contents_.tool, contents_.created, contents_.revision};
    ReadDepfiles();
    for (const std::string& file : contents_.files) AddFile(file);
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
    return fs::absolute(path).lexically_normal().lexically_relative(folder_).generic_string();
  }

  FileRecord RecordOf(const std::string& path) const {
    support::FileDigest digest = support::DigestOf(path);
    return {NameOf(path), digest.bytes, std::move(digest.sha256)};
  }

  void ReadDepfiles() {
    for (const std::string& path : contents_.depfiles) {
      const driver::DepfileRule rule = driver::ReadDepfile(path);
      std::vector<std::string> names;
      for (const std::string& source : rule.prerequisites) {
        names.push_back(NameOf(source));
        if (sources_.count(names.back()) == 0) sources_.emplace(names.back(), RecordOf(source));
      }
      std::sort(names.begin(), names.end());
      for (const std::string& target : rule.targets) sources_of_[NameOf(target)] = names;
    }
  }

  void AddFile(const std::string& path) {
    FileRecord record = RecordOf(path);
    record.form = FormOf(path);
    if (!record.form.empty()) record.created = compiled::CompiledFile(path).summary().creation_time;
    const auto sources = sources_of_.find(record.path);
    if (sources != sources_of_.end()) record.sources = sources->second;
    paths_[record.path] = path;
    files_.insert_or_assign(record.path, std::move(record));
  }

  void FindPairs() {
    std::map<std::string, FileRecord*> meta_files;
    for (auto& [name, record] : files_) {
      if (record.form == kMetaForm) meta_files[StemOf(name)] = &record;
    }
    for (auto& [name, record] : files_) {
      const auto meta = meta_files.find(StemOf(name));
      if (record.form != kDebugMetaForm || meta == meta_files.end()) continue;
      ExpectPair(paths_.at(meta->second->path), paths_.at(name));
      meta->second->pair = name;
      record.pair = meta->second->path;
    }
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
  std::map<std::string, FileRecord> files_;
  std::map<std::string, std::string> paths_;  // of the files, from the working folder
  std::map<std::string, FileRecord> sources_;
  std::map<std::string, std::vector<std::string>> sources_of_;
};

}  // namespace

Manifest ManifestOf(const Contents& contents) { return Maker(contents).Make(); }

}  // namespace rux::release
