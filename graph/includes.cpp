#include "graph/includes.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "browse/relations.h"
#include "compiled/debug_meta.h"
#include "machine/load.h"
#include "machine/place.h"
#include "machine/source.h"
#include "reader/include_folders.h"
#include "ruxcomp/file/header.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/paths.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/failure.h"

namespace rux::graph {
namespace {

namespace language = ruxcomp::language;

// Files by their paths, with the links between them.
class Files {
 public:
  // That are in the revision of git; empty: in the file system.
  explicit Files(std::string revision) : revision_(std::move(revision)) {}

  std::size_t Add(const std::string& path) {
    const auto [place, is_new] = numbers_.emplace(path, relations.things().size());
    if (is_new) {
      browse::Thing file{&language::KindOf(language::SECTION_INCLUDE)};
      file.name = machine::Place{path, 0, revision_}.File();
      relations.Add(file);
    }
    return place->second;
  }
  void AddInclude(const std::string& includer, std::uint32_t line, const std::string& included) {
    const std::string key(language::KeywordOf(language::ENTRY_FILE));
    const std::size_t from = Add(includer);
    relations.Add({from, Add(included), key, false, machine::Place{includer, line, revision_}});
  }

  browse::Relations relations;

 private:
  const std::string revision_;
  std::map<std::string, std::size_t> numbers_;
};

browse::Relations OfScript(const machine::Source& source, const machine::LoadOptions& options) {
  const std::vector<std::string> folders = machine::IncludeFoldersFor(source, options);
  const ruxcomp::reader::IncludeFolders include_folders(folders);
  machine::ReadScriptsOf(source);
  const sources::SourceSet sources = sources::Load(language::ToLibraryPath(source.path));
  Files files(source.revision);
  for (const sources::Opening& opening : sources.openings()) {
    const sources::OriginSpot includer = sources.IncluderOf(opening);
    if (includer.item == nullptr) {
      files.Add(opening.file->path());
    } else {
      files.AddInclude(includer.opening->file->path(), includer.item->line, opening.file->path());
    }
  }
  return std::move(files.relations);
}

// A debug meta file has the name of an included file as the script gives it: that of a file in the
// folder of the includer or, failing that, in an include folder.
class IncludedFiles {
 public:
  explicit IncludedFiles(const std::vector<std::string>& paths)
      : paths_(paths.begin(), paths.end()) {
    for (const std::string& path : paths) by_name_.emplace(language::BaseNameOf(path), path);
  }

  std::string Find(const std::string& includer, const std::string& name) const {
    const std::string beside = std::string(language::FolderOf(includer)) + name;
    const auto named = by_name_.find(language::BaseNameOf(name));
    const bool is_beside = paths_.count(beside) > 0 || named == by_name_.end();
    return is_beside ? beside : std::string(named->second);
  }

 private:
  const std::set<std::string> paths_;
  std::map<std::string_view, std::string_view> by_name_;
};

browse::Relations OfDebugMeta(const machine::Source& source) {
  const compiled::DebugMeta meta = compiled::SoundDebugMeta(source.name, source.bytes->view());
  const IncludedFiles included(meta.files);
  Files files(source.revision);
  if (!meta.files.empty()) files.Add(sources::ToOpenablePath(meta.files.front()));
  for (const std::vector<compiled::DebugSection>& kind : meta.kinds) {
    for (const compiled::DebugSection& section : kind) {
      if (section.identifier != language::SECTION_INCLUDE) continue;
      for (const compiled::DebugEntry& entry : section.entries) {
        if (entry.fields.empty() || entry.file_index >= meta.files.size()) continue;
        const std::string& includer = meta.files[entry.file_index];
        const std::string& name = entry.fields.front().texts.front();
        files.AddInclude(sources::ToOpenablePath(includer), entry.line,
                         sources::ToOpenablePath(included.Find(includer, name)));
      }
    }
  }
  return std::move(files.relations);
}

}  // namespace

browse::Relations ReadIncludes(const std::string& name, const machine::LoadOptions& options) {
  const machine::Source source = machine::ReadSource(name);
  switch (source.form) {
    case ruxcomp::file::Form::kMeta:
      throw support::Failure(support::ExitStatus::kTrouble,
                             "{} is a meta file, which does not say what its script included: give "
                             "the script or its debug meta file",
                             name);
    case ruxcomp::file::Form::kDebugMeta:
      return OfDebugMeta(source);
    default:
      return OfScript(source, options);
  }
}

}  // namespace rux::graph
