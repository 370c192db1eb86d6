// A script and its included files, seen once more.
//
// The library's messages name a file by its base name only, and some name no line. To tell people
// where to look, the files are read a second time, in the order in which the library read them.
// That is done only when there is something to tell.
#ifndef SOURCES_SOURCE_VIEW_H_
#define SOURCES_SOURCE_VIEW_H_

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reader/script.h"

namespace rux::sources {

// What stands on a line: an item of a section, or the section's header.
struct SourceSpot {
  const reader::Section* section;
  const reader::Item* item;  // null: the header
};

class SourceFile {
 public:
  // Null when the file cannot be read. `read_from`: where its text is; empty: under its own path.
  static std::unique_ptr<SourceFile> Read(const std::string& library_path,
                                          const std::string& read_from);

  const std::string& library_path() const { return library_path_; }  // as the library was given it
  const std::string& path() const { return path_; }                  // as it can be opened
  const std::vector<reader::Section>& sections() const { return script_->sections(); }

  // The item or header that begins on the line, from 1.
  std::optional<SourceSpot> At(std::uint32_t line) const;

  // A line of the file as it stands there, without its end; empty for lines that it does not have.
  std::string_view Line(std::uint32_t line) const;
  std::uint32_t line_count() const { return script_->line_count(); }
  // The line that holds that byte of the text.
  std::uint32_t LineAt(std::size_t at) const { return script_->LineAt(at); }
  const std::string& text() const { return script_->text(); }

  bool IsSameFile(const SourceFile& other) const;

 private:
  SourceFile() = default;

  std::string library_path_;
  std::string path_;
  dev_t device_ = 0;
  ino_t inode_ = 0;
  std::unique_ptr<const reader::Script> script_;
};

struct SourceSection {
  const SourceFile* file;
  const reader::Section* section;
};

// A line of a source.
struct SourcePlace {
  const SourceFile* file;
  std::uint32_t line;
};

// What a script was read from.
struct SourceFiles {
  // Of all files that there were to read, as they can be opened, in the order in which they were
  // first met; of those that are missing, too.
  std::vector<std::string> paths;
  // Whether all of them could be read again. What a pipe has included, nobody knows.
  bool complete = true;
};

class SourceView {
 public:
  // Reads the script and follows its INCLUDE items as the library does: missing files are passed
  // over, as are those that are open already further up the chain. `read_from`: where the text of
  // the script is; empty: under its own path.
  SourceView(const std::string& library_path, const std::string& read_from);

  // In the order in which the library met them; unknown ones included. A file that is included
  // twice gives its sections twice.
  const std::vector<SourceSection>& sections() const { return sections_; }

  const SourceFiles& files() const { return files_read_; }

  // The files with a base name, in the order in which they were first met.
  const std::vector<const SourceFile*>& FilesNamed(const std::string& base_name) const;

  // The INCLUDE item that a file was first read for; null for the script itself.
  const SourcePlace* IncludedAt(const SourceFile& file) const;
  // The second one; null when there is none. And whether any file has one.
  const SourcePlace* IncludedAgainAt(const SourceFile& file) const;
  bool includes_again() const { return !included_again_at_.empty(); }

  // Whether the INCLUDE item on that line names a file that is open already further up the chain.
  bool ClosesLoop(const SourceFile& file, std::uint32_t line) const;

 private:
  // False: the file is open already.
  bool Follow(const std::string& library_path, const SourcePlace* included_at);
  void FollowIncludes(const SourceFile& file, const reader::Section& section);
  const SourceFile* Open(const std::string& library_path, const std::string& read_from = {});

  std::map<std::string, std::unique_ptr<SourceFile>>
      files_;  // by library path; null: cannot be read
  std::map<std::string, std::vector<const SourceFile*>> by_base_name_;
  SourceFiles files_read_;
  std::map<const SourceFile*, SourcePlace> included_at_;
  std::map<const SourceFile*, SourcePlace> included_again_at_;
  std::vector<SourceSection> sections_;
  std::vector<const SourceFile*> chain_;  // of the files that are being followed
  std::size_t opened_ = 0;                // files that were followed, each time counted
  std::size_t opened_text_ = 0;           // and their text
  std::set<std::pair<const SourceFile*, std::uint32_t>> loops_;
};

}  // namespace rux::sources

#endif  // SOURCES_SOURCE_VIEW_H_
