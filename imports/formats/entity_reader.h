// One entry of Exposes in an OpenBMC configuration.
#ifndef IMPORTS_FORMATS_ENTITY_READER_H_
#define IMPORTS_FORMATS_ENTITY_READER_H_

#include <cstddef>
#include <cstdint>

#include "imports/board.h"
#include "imports/formats/json_items.h"
#include "losses/ledger.h"
#include "settings/json_file.h"

namespace rux::imports {

// Where the sensors of an entry go, and what its items are noted in.
struct EntityPlace {
  std::size_t area;    // in Board::areas
  std::uint32_t file;  // in Ledger::files()
  JsonItems& items;
  Board& board;
  losses::Ledger& ledger;
};

// Adds its channels as sensors, with their limits, and what they are read from as a device. Decides
// about each of its items.
void ReadEntity(const settings::JsonValue& entry, const EntityPlace& place);

}  // namespace rux::imports

#endif  // IMPORTS_FORMATS_ENTITY_READER_H_
