// The words of OpenBMC configurations that show what is measured.
#ifndef IMPORTS_FORMATS_ENTITY_WORDS_H_
#define IMPORTS_FORMATS_ENTITY_WORDS_H_

#include <optional>
#include <string_view>

#include "imports/board.h"

namespace rux::imports {

// Of an entry without labels, by its Type or else by its Units. None: neither is known.
std::optional<Quantity> QuantityOfEntry(std::string_view type, std::string_view units);

// Of a channel: "in0", "temp1".
Quantity QuantityOfLabel(std::string_view label);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_ENTITY_WORDS_H_
