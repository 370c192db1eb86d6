// What is shown of the text under a pointer.
#ifndef ASSISTANCE_HOVER_H_
#define ASSISTANCE_HOVER_H_

#include <optional>
#include <string>

#include "assistance/place.h"

namespace rux::assistance {

struct Hover {
  ByteRange range;
  std::string markdown;
};

// What a section kind or key is; a number in both bases and with its sign; the value of a word and
// where it comes from; the type of a value; of what is referred to, its section or entry, and of
// sensors their lists.
std::optional<Hover> HoverAt(const Place& at);

}  // namespace rux::assistance

#endif  // ASSISTANCE_HOVER_H_
