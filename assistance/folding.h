// The lines that an editor can hide.
#ifndef ASSISTANCE_FOLDING_H_
#define ASSISTANCE_FOLDING_H_

#include <cstdint>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"

namespace rux::assistance {

// From 1; the first one stays.
struct Fold {
  enum class Kind : std::uint8_t { kSection, kItem, kComment };

  Kind kind;
  std::uint32_t first_line;
  std::uint32_t last_line;
};

// Sections, items of several lines, and comments of several lines, in the order of their first
// lines.
std::vector<Fold> FoldsOf(const index::Index& index, Id file);

}  // namespace rux::assistance

#endif  // ASSISTANCE_FOLDING_H_
