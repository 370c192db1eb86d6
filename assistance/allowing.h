// Comments that allow a warning, written where they count.
#ifndef ASSISTANCE_ALLOWING_H_
#define ASSISTANCE_ALLOWING_H_

#include <cstdint>
#include <optional>
#include <string>

#include "assistance/place.h"
#include "sources/allow_comments.h"
#include "sources/source_file.h"

namespace rux::assistance {

struct AllowEdit {
  std::uint32_t offset;  // where to insert
  std::string text;
};

// What allows the warnings with the id that are at an offset; none where no such comment can be.
std::optional<AllowEdit> AllowAt(const sources::SourceFile& file, std::uint32_t offset,
                                 const std::string& id, sources::AllowScope scope);

}  // namespace rux::assistance

#endif  // ASSISTANCE_ALLOWING_H_
