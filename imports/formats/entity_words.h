// The words of OpenBMC configurations that show what is measured.
#ifndef IMPORTS_FORMATS_ENTITY_WORDS_H_
#define IMPORTS_FORMATS_ENTITY_WORDS_H_

#include <cstddef>
#include <optional>
#include <string_view>

#include "imports/board.h"
#include "losses/ledger.h"

namespace rux::imports {

// Of an entry, by its Type or else by its Units; of what is read by IPMB, by its SensorType. None:
// they are not known.
std::optional<Quantity> QuantityOfEntry(std::string_view type, std::string_view units,
                                        std::string_view sensor_type);

// Of a channel: "in0", "temp1". None: its label is not known.
std::optional<Quantity> QuantityOfLabel(std::string_view label);
// What numbers it: 2 of "temp2" or "vout2"; 0: nothing does.
std::size_t NumberOfLabel(std::string_view label);

// Which channel a key names, from 1 on: "Name" the first, "Name1" the second; 0: none.
std::size_t NumberOfName(std::string_view key);

// Notes that the running machine replaces a part of the text, "$bus" or another property.
void NoteTemplate(const Text& text, losses::Ledger& ledger);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_ENTITY_WORDS_H_
