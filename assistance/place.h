// Where an editor asks, and what it is answered with: bytes of the files of an index.
#ifndef ASSISTANCE_PLACE_H_
#define ASSISTANCE_PLACE_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "index/index.h"
#include "index/records.h"
#include "support/text_file.h"

namespace rux::assistance {

namespace language = ruxcomp::language;
using index::Id;
using index::kNone;
using support::ByteRange;

// A cursor.
struct Place {
  const index::Index& index;
  Id file;
  std::uint32_t offset;
};

struct Location {
  Id file;
  ByteRange range;

  bool operator==(const Location& other) const {
    return file == other.file && range.begin == other.range.begin && range.end == other.range.end;
  }
};

Location LocationOf(const index::Definition& definition);
Location LocationOf(const index::Reference& reference);

// What the bytes are.
std::string_view TextAt(const index::Index& index, const Location& at);
// "fans.rux:12"
std::string PlaceText(const index::Index& index, const Location& at);

// Adds a location that is not there.
void AddOnce(std::vector<Location>& locations, const Location& location);

}  // namespace rux::assistance

#endif  // ASSISTANCE_PLACE_H_
