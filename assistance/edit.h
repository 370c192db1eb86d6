// Changes of the files of a machine.
#ifndef ASSISTANCE_EDIT_H_
#define ASSISTANCE_EDIT_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"
#include "sources/source_file.h"

namespace rux::assistance {

struct Edit {
  Location at;
  std::string text;  // what is to be there instead
};

// "\n", or "\r\n" in a file that has any.
std::string_view LineEndOf(const sources::SourceFile& file);

// The first byte after the mark that may begin a file.
std::uint32_t BeginOf(const sources::SourceFile& file);

// Another text for a part of an item, in quotes where it needs them and has none.
Edit NewPart(const index::Index& index, const Location& at, Id item, std::string_view text);

// Lines after the last item of a section, or after its header when it has none. Each has its line
// end before it.
Edit LinesAfter(const index::Index& index, Id section, const std::vector<std::string>& lines);

}  // namespace rux::assistance

#endif  // ASSISTANCE_EDIT_H_
