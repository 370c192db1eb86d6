// A machine whose files are texts of a test, and its index.
#ifndef TESTS_INDEX_MACHINE_H_
#define TESTS_INDEX_MACHINE_H_

#include <memory>
#include <string>
#include <vector>

#include "index/index.h"
#include "sources/source_set.h"
#include "tests/generators/source_files.h"

class Machine {
 public:
  // The first file is the main script.
  explicit Machine(const SourceFiles& files);
  explicit Machine(const std::string& script);

  const rux::index::Index& index() const { return *index_; }
  const rux::sources::SourceSet& sources() const { return sources_; }

  // Each symbol with the places of its definitions and of the references to it, which are lines;
  // those in other files than the main script begin with the file: "GROUP.NAME BOARD: 2 <- 5 a:3".
  // `space`: only those whose text begins so.
  std::vector<std::string> Symbols(const std::string& space = "") const;
  // Each reference that leads nowhere: "5: GROUP.NAME BOARD".
  std::vector<std::string> Missing() const;
  // The same for those to names that need no definition.
  std::vector<std::string> Exempt() const;

  std::string TextAt(rux::index::Id file, rux::support::ByteRange range) const;

 private:
  std::string PlaceOf(rux::index::Id file, std::uint32_t offset) const;
  std::vector<std::string> References(rux::index::Resolution resolution) const;

  rux::sources::SourceSet sources_;
  std::unique_ptr<rux::index::Index> index_;
};

#endif  // TESTS_INDEX_MACHINE_H_
