// A machine with a place that is marked in it: ^ stands before the byte that is meant.
#ifndef TESTS_ASSISTANCE_MARKED_H_
#define TESTS_ASSISTANCE_MARKED_H_

#include <string>
#include <vector>

#include "assistance/edit.h"
#include "assistance/place.h"
#include "tests/generators/source_files.h"
#include "tests/index/machine.h"

class Marked {
 public:
  // The mark is in one of the files; the first one is the main script.
  explicit Marked(SourceFiles files);
  explicit Marked(const std::string& script) : Marked(SourceFiles{{"main.rux", script}}) {}

  rux::assistance::Place place() const { return {machine_.index(), file_, offset_}; }
  const Machine& machine() const { return machine_; }

  // "3: BOARD", or with the file before it when that is another one than the main script.
  std::string Shown(const rux::assistance::Location& at) const;
  std::vector<std::string> Shown(const std::vector<rux::assistance::Location>& places) const;

 private:
  static SourceFiles WithoutMark(SourceFiles files, std::string& path, std::uint32_t& offset);

  std::string path_;
  std::uint32_t offset_ = 0;
  Machine machine_;
  rux::index::Id file_;
};

// The text of a file of the machine after those of the edits that are in it.
std::string Edited(const rux::index::Index& index, rux::index::Id file,
                   const std::vector<rux::assistance::Edit>& edits);

#endif  // TESTS_ASSISTANCE_MARKED_H_
