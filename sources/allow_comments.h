// Comments that allow warnings:
//
//   THRESHOLD_WL = -20   # rux: allow negative-number,surplus-values  the inlet is outside
//
// Which texts are comments, the reader decides: they follow what it took from a line.
#ifndef SOURCES_ALLOW_COMMENTS_H_
#define SOURCES_ALLOW_COMMENTS_H_

#include <cstdint>
#include <string_view>
#include <vector>

#include "sources/source_file.h"
#include "support/text_file.h"

namespace rux::sources {

// What all such comments have in them.
inline constexpr std::string_view kAllowMarker = "rux: allow";

enum class AllowScope {
  kLine,     // at the end of a line
  kSection,  // by itself, in the comment directly above or below the header
  kFile,     // by itself, above the first section
  kNowhere,  // by itself, anywhere else
};

struct AllowComment {
  support::ByteRange range;  // of the marker
  std::string_view instead;  // of the marker, what is there: it allows nothing; empty: the marker
  AllowScope scope;
  support::ByteRange allowed;         // the bytes of the line with those joined to it, the section
                                      // or the file
  std::vector<std::string_view> ids;  // in the text of the file
};

// In the order of the file.
std::vector<AllowComment> AllowCommentsOf(const SourceFile& file);

}  // namespace rux::sources

#endif  // SOURCES_ALLOW_COMMENTS_H_
