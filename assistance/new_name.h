// Whether a text can be the new name of something.
#ifndef ASSISTANCE_NEW_NAME_H_
#define ASSISTANCE_NEW_NAME_H_

#include <string>
#include <string_view>

#include "assistance/place.h"
#include "index/index.h"

namespace rux::assistance {

// Whether a part with that text has to be written in quotes.
bool NeedsQuotes(std::string_view name);

// Why not; empty when it can.
std::string WhyNoName(const index::Index& index, Id symbol, std::string_view name);
// The same of a word that is to be defined.
std::string WhyNoNewWord(const index::Index& index, std::string_view name);

}  // namespace rux::assistance

#endif  // ASSISTANCE_NEW_NAME_H_
