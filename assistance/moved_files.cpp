#include "assistance/moved_files.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "assistance/edit.h"
#include "assistance/place.h"
#include "index/index.h"
#include "index/records.h"
#include "ruxcomp/language/paths.h"
#include "sources/source_file.h"

namespace rux::assistance {
namespace {

namespace fs = std::filesystem;

fs::path Normal(const fs::path& path) { return path.lexically_normal(); }

bool EndsWith(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// An INCLUDE, with the files as paths of the system.
struct Inclusion {
  std::string written;
  std::string by;  // the file that has the line
  std::string of;
};

fs::path WrittenPath(const Inclusion& inclusion) {
  return language::WithSlashes(inclusion.written);
}

bool IsFromOwnFolder(const Inclusion& inclusion) {
  return Normal(fs::path(inclusion.by).parent_path() / WrittenPath(inclusion)) == inclusion.of;
}

// What the written path is relative to when the files have moved: the folder of the file, or one
// that is searched. None when it cannot be found out.
std::optional<fs::path> NewBase(const Inclusion& inclusion, const NewPath& new_path) {
  if (WrittenPath(inclusion).is_absolute()) return fs::path("/");
  if (IsFromOwnFolder(inclusion)) return fs::path(new_path(inclusion.by)).parent_path();
  const std::string end = '/' + Normal(WrittenPath(inclusion)).string();
  if (!EndsWith(inclusion.of, end)) return std::nullopt;
  return fs::path(new_path(inclusion.of.substr(0, inclusion.of.size() - end.size())));
}

// With the separators that are there.
std::string Written(const fs::path& path, const std::string& before) {
  std::string text = path.string();
  const bool has_slashes = before.find('/') != std::string::npos &&
                           before.find(language::kFolderSeparator) == std::string::npos;
  if (!has_slashes) std::replace(text.begin(), text.end(), '/', language::kFolderSeparator);
  return text;
}

// None when the line stays as it is.
std::optional<std::string> NewText(const Inclusion& inclusion, const NewPath& new_path) {
  const fs::path target = new_path(inclusion.of);
  const auto base = NewBase(inclusion, new_path);
  if (!base || Normal(*base / WrittenPath(inclusion)) == target) return std::nullopt;
  const bool is_whole = WrittenPath(inclusion).is_absolute();
  std::string text =
      Written(is_whole ? target : target.lexically_relative(*base), inclusion.written);
  if (text.empty() || text.find('"') != std::string::npos) return std::nullopt;
  return text;
}

}  // namespace

std::vector<Edit> EditsForMoves(const index::Index& index, const NewPath& new_path) {
  std::vector<Edit> edits;
  const auto path_of = [&](Id file) { return Normal(index.files()[file]->path()).string(); };
  for (const index::Reference& each : index.references()) {
    if (each.space != index::kFiles || each.definition == kNone) continue;
    const Location at = LocationOf(each);
    const Inclusion inclusion{std::string(TextAt(index, at)), path_of(each.file),
                              path_of(index.definitions()[each.definition].file)};
    const auto text = NewText(inclusion, new_path);
    if (text) edits.push_back(NewPart(index, at, each.item, *text));
  }
  return edits;
}

}  // namespace rux::assistance
