// The payload types: which entry class and which payload an entry identifier asks for.
#ifndef FRONTEND_PAYLOAD_TYPES_H_
#define FRONTEND_PAYLOAD_TYPES_H_

#include <cstdint>
#include <memory>

#include "frontend/entry_data.h"
#include "frontend/identifiers.h"

class CRUXEntry;

struct PayloadRow {
  PayloadType type;
  CRuxEntryData::Payload (*make_payload)();
  std::unique_ptr<CRUXEntry> (*make_entry)(std::uint32_t identifier, tagNOTATION notation);
};

// The row for an entry identifier; null when its payload type is unknown.
const PayloadRow* FindPayload(std::uint32_t identifier);

// A new, empty entry of the class that the identifier asks for; null when there is none.
std::unique_ptr<CRUXEntry> MakeEntry(std::uint32_t identifier, tagNOTATION notation);

#endif  // FRONTEND_PAYLOAD_TYPES_H_
