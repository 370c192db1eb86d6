// What the files of a machine define, as trees and as lists.
#ifndef ASSISTANCE_OUTLINE_H_
#define ASSISTANCE_OUTLINE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"
#include "index/records.h"

namespace rux::assistance {

struct OutlineEntry {
  std::string name;
  std::string detail;
  std::optional<index::Space> space;  // of an entry; none: a section
  language::SectionId section;        // the kind
  ByteRange range;                    // all of it
  ByteRange name_range;
  std::vector<OutlineEntry> children;
  bool is_named = false;  // a section with a name or an ID
  Id id = kNone;          // of a section
};

// The sections of a file, with the entries whose keys are names of the script's own.
std::vector<OutlineEntry> OutlineOf(const index::Index& index, Id file);

struct FoundSymbol {
  std::string name;
  index::Space space;
  std::string container;  // "[GLOBAL]"
  Location at;
};

// The names of all files in which the characters of the query are found in their order, whatever
// their case; those that begin with it first. At most `most`.
std::vector<FoundSymbol> FindSymbols(const index::Index& index, std::string_view query,
                                     std::size_t most);

}  // namespace rux::assistance

#endif  // ASSISTANCE_OUTLINE_H_
