// A script and the files that it includes, as the reader met them in one run.
#ifndef SOURCES_SOURCE_SET_H_
#define SOURCES_SOURCE_SET_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "findings/origin.h"
#include "reader/archive.h"
#include "sources/source_file.h"

namespace rux::sources {

// One reading of a file. A file that is included twice has two openings.
struct Opening {
  const SourceFile* file;
  ruxcomp::reader::Includer includer;  // its script is the place of an opening; none: the script
  std::vector<ruxcomp::reader::Problem> problems;  // in the order in which they were reported
};

struct SourceSection {
  const SourceFile* file;
  const ruxcomp::reader::Section* section;
};

// A line of a source.
struct SourcePlace {
  const SourceFile* file;
  std::uint32_t line;
};

// What an origin names: an opening, and as much of the rest as it says.
struct OriginSpot {
  const Opening* opening = nullptr;
  const ruxcomp::reader::Section* section = nullptr;
  const ruxcomp::reader::Item* item = nullptr;
};

// What a script was read from.
struct SourceFiles {
  // Of all files that there were to read, as they can be opened, in the order in which they were
  // first met, missing ones included.
  std::vector<std::string> paths;
  // Whether these are all. What an included pipe includes is not known after the run.
  bool complete = true;
};

class SourceSet {
 public:
  SourceSet() = default;
  // Keeps the texts of the archive, which need not live as long.
  explicit SourceSet(const ruxcomp::reader::Archive& archive);
  SourceSet(SourceSet&&) = default;
  SourceSet& operator=(SourceSet&&) = default;

  // In the order in which they were opened: those of an origin.
  const std::vector<Opening>& openings() const { return openings_; }
  const std::vector<ruxcomp::reader::RefusedScript>& refused() const { return refused_; }
  const SourceFiles& files() const { return files_; }
  void MarkIncomplete() { files_.complete = false; }

  // In the order in which the library met them, unknown ones included. A file that is included
  // twice gives its sections twice.
  const std::vector<SourceSection>& sections() const { return sections_; }

  // Gives up the memory that they take. Single files are scanned again when they are asked for what
  // is in them.
  void DropSections();

  bool has_repeated_includes() const { return distinct_.size() < openings_.size(); }

  OriginSpot At(const ruxcomp::findings::Origin& origin) const;
  // The first one of a file; null for any other file.
  const Opening* FirstOpeningOf(const support::TextFile* file) const;
  // The INCLUDE item that an opening is for; none for the script itself.
  OriginSpot IncluderOf(const Opening& opening) const;

 private:
  void AddOpenings(const ruxcomp::reader::Archive& archive);
  void AddPaths(const ruxcomp::reader::Archive& archive);
  std::size_t AddSections(std::size_t opening);

  std::vector<std::unique_ptr<const SourceFile>> distinct_;
  std::vector<Opening> openings_;
  std::unordered_map<const support::TextFile*, std::size_t> first_openings_;
  std::vector<ruxcomp::reader::RefusedScript> refused_;
  std::vector<SourceSection> sections_;
  SourceFiles files_;
};

// Why the reader did not open a script, as a phrase for a message.
std::string ReasonOf(const ruxcomp::reader::RefusedScript& refused);

// Reads the script, by the library's path of it, and follows its INCLUDE items as the library does.
// Nothing is reported. Pipes and devices are passed over: their texts are for the library. No
// archive may live, and no script be open.
SourceSet Load(const std::string& library_path);

}  // namespace rux::sources

#endif  // SOURCES_SOURCE_SET_H_
