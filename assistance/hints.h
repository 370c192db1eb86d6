// What a script does not say itself, to be shown in it.
#ifndef ASSISTANCE_HINTS_H_
#define ASSISTANCE_HINTS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"

namespace rux::assistance {

struct Hint {
  std::uint32_t offset;
  std::string text;
  bool is_before;  // the text that it is about: else, it is after that
};

// After an ID, the name of its section; after a word in the place of a number, its value; before a
// number in a value, what it is there. Of the items that touch the range, in their order.
std::vector<Hint> HintsIn(const index::Index& index, Id file, ByteRange range);

}  // namespace rux::assistance

#endif  // ASSISTANCE_HINTS_H_
