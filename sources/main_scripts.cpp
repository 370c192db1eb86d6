#include "sources/main_scripts.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include "ruxcomp/language/paths.h"
#include "ruxcomp/language/sections.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/failure.h"
#include "support/folders.h"
#include "support/text_file.h"

namespace rux::sources {
namespace {

namespace fs = std::filesystem;
namespace language = ruxcomp::language;

constexpr const char* kMainSection = language::KindOf(language::SECTION_MORVRUX).keyword;
constexpr const char* kInclude = language::KindOf(language::SECTION_INCLUDE).keyword;

// Whoever keeps more scripts in one folder has the machines elsewhere.
constexpr std::size_t kMostScripts = 1000;

bool IsRegular(const fs::path& path) {
  std::error_code ignored;
  return fs::is_regular_file(path, ignored);
}

bool AreOneFile(const std::string& one, const std::string& other) {
  std::error_code ignored;
  return fs::equivalent(one, other, ignored);
}

// Whether the text has a word; saves the look at most files.
bool Mentions(const fs::path& path, const char* word) {
  std::ifstream file(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  return text.find(word) != std::string::npos;
}

// Whether a line begins like the header of the section, which spares most main scripts from being
// loaded twice.
bool HasMainHeader(const fs::path& path) {
  const std::string header = std::string("[") + kMainSection;
  std::ifstream file(path, std::ios::binary);
  for (std::string line; std::getline(file, line);) {
    const std::size_t begin = line.find_first_not_of(" \t");
    if (begin != std::string::npos && line.compare(begin, header.size(), header) == 0) return true;
  }
  return false;
}

bool HasMainSection(const SourceSet& sources) {
  const std::vector<SourceSection>& sections = sources.sections();
  return std::any_of(sections.begin(), sections.end(), [](const SourceSection& section) {
    return section.section->name == kMainSection;
  });
}

SourceSet LoadFile(const std::string& path) { return Load(language::ToLibraryPath(path)); }

// With all that it includes; nothing when it cannot be a main script.
SourceSet LoadIfMain(const std::string& script) {
  const bool may_be = Mentions(script, kMainSection) || Mentions(script, kInclude);
  return may_be ? LoadFile(script) : SourceSet();
}

bool IsMainOf(const std::string& script, const std::string& part) {
  if (AreOneFile(script, part) || !Mentions(script, kInclude)) return false;
  const SourceSet sources = LoadFile(script);
  return FindFile(sources, part) != nullptr && HasMainSection(sources);
}

bool IsScript(const fs::path& path) { return path.extension() == ".rux" && IsRegular(path); }

std::vector<std::string> ScriptsIn(const fs::path& folder) {
  std::vector<std::string> scripts;
  std::error_code error;
  fs::directory_iterator entry(folder.empty() ? "." : folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    if (IsScript(entry->path())) scripts.push_back((folder / entry->path().filename()).string());
  }
  std::sort(scripts.begin(), scripts.end());
  if (scripts.size() > kMostScripts) scripts.clear();
  return scripts;
}

}  // namespace

bool IsPart(const std::string& path) {
  return IsRegular(path) && !HasMainHeader(path) && !HasMainSection(LoadIfMain(path));
}

std::vector<std::string> MainScriptsOf(const std::string& part, std::vector<std::string> scripts) {
  scripts.erase(std::remove_if(scripts.begin(), scripts.end(),
                               [&](const std::string& each) { return !IsMainOf(each, part); }),
                scripts.end());
  return scripts;
}

std::vector<std::string> FindMainScripts(const std::string& part) {
  for (fs::path folder = fs::path(part).parent_path();; folder = support::FolderAbove(folder)) {
    std::vector<std::string> scripts = MainScriptsOf(part, ScriptsIn(folder));
    if (!scripts.empty() || support::IsTopFolder(folder)) return scripts;
  }
}

FolderScripts ScriptsBelow(const std::string& folder) {
  std::vector<fs::path> paths;
  std::error_code error;
  fs::recursive_directory_iterator entry(folder, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    const fs::path& path = entry->path();
    const bool is_hidden = path.filename().string().front() == '.';
    if (is_hidden) entry.disable_recursion_pending();
    if (!is_hidden && IsScript(path)) paths.push_back(path);
  }
  if (error) throw support::SystemFailure("cannot read", folder, error.value());
  std::sort(paths.begin(), paths.end());
  FolderScripts scripts;
  std::set<fs::path> included;
  for (const fs::path& path : paths) {
    const std::string script = (folder == "." ? path.lexically_relative(folder) : path).string();
    const SourceSet sources = LoadIfMain(script);
    const bool is_main = HasMainSection(sources);
    (is_main ? scripts.mains : scripts.others).push_back(script);
    if (!is_main) continue;
    for (const Opening& opening : sources.openings()) {
      included.insert(fs::weakly_canonical(opening.file->path(), error));
    }
  }
  const auto is_included = [&](const std::string& script) {
    return included.count(fs::weakly_canonical(script, error)) != 0;
  };
  std::copy_if(scripts.others.begin(), scripts.others.end(), std::back_inserter(scripts.unused),
               [&](const std::string& script) { return !is_included(script); });
  return scripts;
}

const support::TextFile* FindFile(const SourceSet& sources, const std::string& path) {
  for (const Opening& opening : sources.openings()) {
    if (AreOneFile(opening.file->path(), path)) return opening.file;
  }
  return nullptr;
}

}  // namespace rux::sources
