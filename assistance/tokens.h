// What the pieces of a script are, by their meaning.
#ifndef ASSISTANCE_TOKENS_H_
#define ASSISTANCE_TOKENS_H_

#include <cstdint>
#include <vector>

#include "assistance/place.h"
#include "index/index.h"

namespace rux::assistance {

struct Token {
  enum class Kind : std::uint8_t {
    kSection,  // the kind in a header
    kKey,      // of the language
    kWord,
    kType,  // of a value
    kName,  // of a section that is neither an action nor a table
    kAction,
    kTable,
    kGlobal,
    kValue,  // of a section
    kProperty,
    kArgument,
    kOperator,
    kNumber,
    kText,
  };

  ByteRange range;
  Kind kind;
  bool is_definition;
};

// In the order of the file; what has no meaning, such as a dropped part, is left out.
std::vector<Token> TokensOf(const index::Index& index, Id file);

}  // namespace rux::assistance

#endif  // ASSISTANCE_TOKENS_H_
