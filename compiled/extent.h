// Places in a compiled file.
#ifndef COMPILED_EXTENT_H_
#define COMPILED_EXTENT_H_

#include <cstddef>

namespace rux::compiled {

// Some bytes of the file.
struct Extent {
  std::size_t offset = 0;
  std::size_t size = 0;
};

// One thing that a record is made of, as it stands there: a word, or a text or list with the words
// that tell its length.
struct Piece {
  const char* name;
  Extent extent;
};

}  // namespace rux::compiled

#endif  // COMPILED_EXTENT_H_
