// What is at a place in a file, also where the text is only half there.
#ifndef INDEX_SPOT_H_
#define INDEX_SPOT_H_

#include <cstdint>
#include <string_view>
#include <vector>

#include "index/index.h"
#include "index/part_use.h"
#include "index/records.h"
#include "support/text_file.h"

namespace rux::index {

struct Spot {
  enum class Kind : std::uint8_t {
    kNothing,  // a comment, or an item's line after what it has
    kHeader,   // of a section: the text between the brackets
    kKey,      // of an item, or where one may begin
    kPart,     // of an item's value
  };

  Kind kind = Kind::kNothing;
  Id section = kNone;  // kNone: before the first one
  Id item = kNone;     // of a key that is not there: kNone
  std::uint32_t part = 0;
  PartUse use = {};              // of a part
  support::ByteRange text = {};  // the name, key or part; empty where one may begin
};

// `offset` may be that of the byte after a text, where one writes on.
Spot SpotAt(const Index& index, Id file, std::uint32_t offset);

// The definitions and references whose names have the byte before or after the place.
struct NamesAt {
  std::vector<Id> definitions;
  std::vector<Id> references;
};
NamesAt FindNames(const Index& index, Id file, std::uint32_t offset);

// The parts of an item, as views of its value.
std::vector<std::string_view> PartsOf(const Index& index, Id item);

}  // namespace rux::index

#endif  // INDEX_SPOT_H_
