#include "sources/main_scripts.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "reader/script.h"
#include "reader/source.h"
#include "reader/texts.h"
#include "ruxcomp/language/paths.h"
#include "ruxcomp/language/sections.h"
#include "sources/machine_files.h"
#include "sources/source_file.h"
#include "sources/source_set.h"
#include "support/failure.h"
#include "support/folders.h"
#include "support/text_file.h"

namespace rux::sources {
namespace {

namespace fs = std::filesystem;
namespace language = ruxcomp::language;
using ruxcomp::reader::Source;
using ruxcomp::reader::SourceIdentity;

constexpr const char* kMainSection = language::KindOf(language::SECTION_MORVRUX).keyword;
constexpr const char* kIncludeKeyword = language::KindOf(language::SECTION_INCLUDE).keyword;

// Whoever keeps more scripts in one folder has the machines elsewhere; a search below a folder with
// more in it would take longer than people wait for findings.
constexpr std::size_t kMostScripts = 1000;
constexpr std::size_t kMostEntries = 20000;

// Files are what the reader takes for them: texts in memory replace them.

bool IsRegular(const fs::path& path) {
  std::error_code ignored;
  return ruxcomp::reader::Texts::Find(path) != nullptr || fs::is_regular_file(path, ignored);
}

bool AreOneFile(const std::string& one, const std::string& other) {
  const std::optional<Source> first = ruxcomp::reader::FindSource(one);
  const std::optional<Source> second = ruxcomp::reader::FindSource(other);
  return first && second && first->identity == second->identity;
}

// Empty when it cannot be read.
std::string TextOf(const fs::path& path) {
  const std::optional<Source> source = ruxcomp::reader::FindSource(path);
  if (!source) return {};
  return ruxcomp::reader::ReadSource(*source, ruxcomp::reader::kLargestScript).value_or("");
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
  const bool may_be = Mentions(script, kMainSection) || Mentions(script, kIncludeKeyword);
  return may_be ? LoadFile(script) : SourceSet();
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

// The files below a folder that are wanted, in the order of their paths; what is in folders whose
// names begin with a dot is not among them. Nothing when the folder holds more than `most_entries`.
std::vector<fs::path> FindFiles(const fs::path& folder, bool (*is_wanted)(const fs::path&),
                                std::size_t most_entries, fs::directory_options options,
                                std::error_code& error) {
  std::vector<fs::path> paths;
  std::size_t count = 0;
  fs::recursive_directory_iterator entry(folder, options, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    if (++count > most_entries) return {};
    const fs::path& path = entry->path();
    const bool is_hidden = path.filename().string().front() == '.';
    if (is_hidden) entry.disable_recursion_pending();
    if (!is_hidden && is_wanted(path)) paths.push_back(path);
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::vector<fs::path> FindAllFiles(const std::string& folder, bool (*is_wanted)(const fs::path&)) {
  std::error_code error;
  std::vector<fs::path> paths =
      FindFiles(folder, is_wanted, std::numeric_limits<std::size_t>::max(), {}, error);
  if (error) throw support::SystemFailure("cannot read", folder, error.value());
  return paths;
}

bool IsCompiledFile(const fs::path& path) {
  const FileForm form = FormByName(path);
  return (form == FileForm::kDebugMeta || form == FileForm::kMeta) && IsRegular(path);
}

// Of a path below the working folder, without the folder.
std::string ShortName(const fs::path& path, const fs::path& folder) {
  return (folder == "." ? path.lexically_relative(folder) : path).string();
}

// None when there are too many.
std::vector<std::string> FewScriptsBelow(const fs::path& folder) {
  std::error_code ignored;
  const std::vector<fs::path> paths = FindFiles(
      folder, IsScript, kMostEntries, fs::directory_options::skip_permission_denied, ignored);
  if (paths.size() > kMostScripts) return {};
  std::vector<std::string> scripts;
  scripts.reserve(paths.size());
  for (const fs::path& path : paths) scripts.push_back(ShortName(path, folder));
  return scripts;
}

// Whether it is a relative path that stays there.
bool IsInWorkingFolder(const fs::path& path) {
  return path.is_relative() && path.lexically_normal().begin()->string() != "..";
}

}  // namespace

bool IsPart(const std::string& path) {
  return IsRegular(path) && !HasMainHeader(TextOf(path)) && !HasMainSection(LoadIfMain(path));
}

// Saves the look at most files.
bool Mentions(const std::string& path, std::string_view text) {
  return TextOf(path).find(text) != std::string::npos;
}

// What the searches have found so far.
class MachineFinder::Memory {
 public:
  bool IsMainOf(const std::string& script, const SourceIdentity& part) {
    const std::vector<SourceIdentity>& parts = PartsOf(script);
    return std::binary_search(parts.begin(), parts.end(), part);
  }

  // The main scripts that include the part: of those in the folder, or of all below it.
  enum class Where { kIn, kBelow };
  std::vector<std::string> MainsOf(const SourceIdentity& part, Where where,
                                   const fs::path& folder) {
    const auto [known, is_new] = mains_.try_emplace({where, folder.string()});
    if (is_new) {
      for (const std::string& script :
           where == Where::kIn ? ScriptsIn(folder) : FewScriptsBelow(folder)) {
        for (const SourceIdentity& each : PartsOf(script)) known->second[each].push_back(script);
      }
    }
    const auto mains = known->second.find(part);
    return mains == known->second.end() ? std::vector<std::string>() : mains->second;
  }

 private:
  // What a main script includes, sorted; nothing of another script.
  const std::vector<SourceIdentity>& PartsOf(const std::string& script) {
    const auto [known, is_new] = parts_of_.try_emplace(script);
    if (is_new) known->second = ReadPartsOf(script);
    return known->second;
  }

  static std::vector<SourceIdentity> ReadPartsOf(const std::string& script) {
    const std::optional<Source> self = ruxcomp::reader::FindSource(script);
    if (!self || !Mentions(script, kIncludeKeyword)) return {};
    const SourceSet sources = LoadFile(script);
    if (!HasMainSection(sources)) return {};
    std::set<SourceIdentity> parts;
    for (const Opening& opening : sources.openings()) {
      if (const std::optional<Source> file = ruxcomp::reader::FindSource(opening.file->path()))
        parts.insert(file->identity);
    }
    parts.erase(self->identity);
    return {parts.begin(), parts.end()};
  }

  std::map<std::string, std::vector<SourceIdentity>> parts_of_;
  std::map<std::pair<Where, std::string>, std::map<SourceIdentity, std::vector<std::string>>>
      mains_;
};

MachineFinder::MachineFinder() : memory_(std::make_unique<Memory>()) {}
MachineFinder::~MachineFinder() = default;

std::vector<std::string> MachineFinder::MainScriptsOf(const std::string& part,
                                                      std::vector<std::string> scripts) {
  const std::optional<Source> source = ruxcomp::reader::FindSource(part);
  if (!source) return {};
  scripts.erase(std::remove_if(scripts.begin(), scripts.end(),
                               [&](const std::string& each) {
                                 return !memory_->IsMainOf(each, source->identity);
                               }),
                scripts.end());
  return scripts;
}

std::vector<std::string> MachineFinder::FindMainScripts(const std::string& part) {
  const std::optional<Source> source = ruxcomp::reader::FindSource(part);
  if (!source) return {};
  fs::path folder = fs::path(part).parent_path();
  for (;; folder = support::FolderAbove(folder)) {
    std::vector<std::string> mains = memory_->MainsOf(source->identity, Memory::Where::kIn, folder);
    if (!mains.empty()) return mains;
    if (support::IsTopFolder(folder)) break;
  }
  if (!support::IsTopOfRepository(folder)) {
    if (!IsInWorkingFolder(part)) return {};
    folder = ".";
  }
  return memory_->MainsOf(source->identity, Memory::Where::kBelow, folder.empty() ? "." : folder);
}

std::vector<std::string> FindMainScriptsBelow(
    const std::string& folder, const std::function<bool(const std::string& path)>& is_wanted) {
  std::vector<std::string> mains;
  for (const std::string& script : FewScriptsBelow(folder)) {
    const SourceSet sources = LoadIfMain(script);
    const std::vector<Opening>& openings = sources.openings();
    const bool is_wanted_one =
        std::any_of(openings.begin(), openings.end(),
                    [&](const Opening& opening) { return is_wanted(opening.file->path()); });
    if (is_wanted_one && HasMainSection(sources)) mains.push_back(script);
  }
  return mains;
}

FolderScripts ScriptsBelow(const std::string& folder) {
  FolderScripts scripts;
  std::error_code error;
  std::map<fs::path, std::set<std::string>> mains_of;
  for (const fs::path& path : FindAllFiles(folder, IsScript)) {
    const std::string script = ShortName(path, folder);
    const SourceSet sources = LoadIfMain(script);
    const bool is_main = HasMainSection(sources);
    (is_main ? scripts.mains : scripts.others).push_back(script);
    if (!is_main) continue;
    for (const Opening& opening : sources.openings()) {
      mains_of[fs::weakly_canonical(opening.file->path(), error)].insert(script);
    }
  }
  for (const std::string& other : scripts.others) {
    const std::set<std::string>& mains = mains_of[fs::weakly_canonical(other, error)];
    scripts.mains_of.emplace(other, std::vector<std::string>(mains.begin(), mains.end()));
  }
  return scripts;
}

std::vector<std::string> CompiledFilesBelow(const std::string& folder) {
  std::vector<std::string> files;
  for (const fs::path& path : FindAllFiles(folder, IsCompiledFile))
    files.push_back(ShortName(path, folder));
  return files;
}

bool HasMainHeader(const std::string& text) {
  const std::string header = std::string("[") + kMainSection;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t begin = line.find_first_not_of(" \t");
    if (begin != std::string::npos && line.compare(begin, header.size(), header) == 0) return true;
  }
  return false;
}

std::string ShapeOf(const SourceSet& sources) {
  std::string shape;
  for (const Opening& opening : sources.openings()) {
    const std::vector<ruxcomp::reader::Section>& sections = opening.file->sections();
    const bool has_main = HasMainHeader(opening.file->text()) ||
                          std::any_of(sections.begin(), sections.end(), [](const auto& section) {
                            return section.name == kMainSection;
                          });
    shape.append(opening.file->path()).append(has_main ? "\n+" : "\n");
  }
  return shape;
}

const support::TextFile* FindFile(const SourceSet& sources, const std::string& path) {
  for (const Opening& opening : sources.openings()) {
    if (AreOneFile(opening.file->path(), path)) return opening.file;
  }
  return nullptr;
}

}  // namespace rux::sources
