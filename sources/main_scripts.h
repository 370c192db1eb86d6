// The machines that a file is a part of.
#ifndef SOURCES_MAIN_SCRIPTS_H_
#define SOURCES_MAIN_SCRIPTS_H_

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sources/source_set.h"
#include "support/text_file.h"

namespace rux::sources {

// Paths are as they can be opened.

// Whether a file that can be read is not a main script, which has a MORVRUX section, of its own or
// in a file that it includes.
bool IsPart(const std::string& path);

// Whether a line begins like the header of that section, which spares most main scripts from being
// loaded twice, and says what can be said of one that cannot be loaded.
bool HasMainHeader(const std::string& text);

// Whether a file that can be read has the text.
bool Mentions(const std::string& path, std::string_view text);

// Finds the machines of parts. Remembers which files the main scripts read: as long as it lives,
// they must stay as they are, and so must the include folders.
class MachineFinder {
 public:
  MachineFinder();
  ~MachineFinder();
  MachineFinder(const MachineFinder&) = delete;
  MachineFinder& operator=(const MachineFinder&) = delete;

  // Of these scripts, the main scripts that include the part.
  std::vector<std::string> MainScriptsOf(const std::string& part, std::vector<std::string> scripts);

  // The main scripts that include the part, from the nearest folder, upwards from its own, that
  // holds one. When none does, up to the top of the repository, all those in the repository;
  // outside of a repository, all those below the working folder, if the part is there. None when
  // there are too many files to look at.
  std::vector<std::string> FindMainScripts(const std::string& part);

 private:
  class Memory;
  const std::unique_ptr<Memory> memory_;
};

// The main scripts below a folder that read a file which is wanted, themselves included; none when
// there are too many files to look at.
std::vector<std::string> FindMainScriptsBelow(
    const std::string& folder, const std::function<bool(const std::string& path)>& is_wanted);

// The scripts below a folder, whose names end in .rux, each list in the order of the paths; what is
// in folders whose names begin with a dot is not among them. Throws a Failure when a folder cannot
// be read.
struct FolderScripts {
  std::vector<std::string> mains;
  std::vector<std::string> others;
  // Of each of the others, the main scripts that include it.
  std::map<std::string, std::vector<std::string>> mains_of;
};
FolderScripts ScriptsBelow(const std::string& folder);

// The compiled files below a folder, by their suffixes, in the same way.
std::vector<std::string> CompiledFilesBelow(const std::string& folder);

// What of the files decides which machines they belong to: while it stays the same for all scripts,
// so do the answers above.
std::string ShapeOf(const SourceSet& sources);

// The file of the set that is at the path, under whatever name; null when there is none.
const support::TextFile* FindFile(const SourceSet& sources, const std::string& path);

}  // namespace rux::sources

#endif  // SOURCES_MAIN_SCRIPTS_H_
