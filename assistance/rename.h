// A name changed wherever it is written.
#ifndef ASSISTANCE_RENAME_H_
#define ASSISTANCE_RENAME_H_

#include <string>
#include <string_view>
#include <vector>

#include "assistance/edit.h"
#include "assistance/place.h"

namespace rux::assistance {

// The name at the place, when it can be changed.
struct Renamable {
  ByteRange range = {};
  std::string name;
  std::string refusal;  // why it cannot; empty when it can
};
Renamable RenamableAt(const Place& at);

struct Renaming {
  std::vector<Edit> edits;  // of all files, those of one in any order
  std::string refusal;      // why there are none; empty when there are
};

// Refused where the new name is none, is taken, or would not mean the same everywhere.
Renaming Rename(const Place& at, std::string_view name);

}  // namespace rux::assistance

#endif  // ASSISTANCE_RENAME_H_
