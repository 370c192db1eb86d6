// What may be written at a place.
#ifndef ASSISTANCE_COMPLETION_H_
#define ASSISTANCE_COMPLETION_H_

#include <cstdint>
#include <string>
#include <vector>

#include "assistance/place.h"

namespace rux::assistance {

struct Proposal {
  enum class Kind : std::uint8_t {
    kSection,
    kKey,
    kWord,
    kType,
    kName,  // of a section
    kId,
    kGlobal,
    kValue,
    kArgument,
    kOperator,
    kFile,
    kFolder,
  };

  Kind kind;
  std::string label;
  std::string detail;
  std::string text;         // to be put in the place of the range
  bool is_snippet = false;  // the text has places to fill in: ${1:name}
  Id symbol = kNone;        // of a name of the script's own
};

struct Proposals {
  ByteRange range = {};             // what they replace: the text before and after the place
  std::vector<Proposal> proposals;  // the likeliest first
};

// Whatever begins otherwise than what is written is there, too: editors filter.
Proposals ProposalsAt(const Place& at);

}  // namespace rux::assistance

#endif  // ASSISTANCE_COMPLETION_H_
