#include "frontend/entry_data.h"

#include "frontend/payload_types.h"

void CRuxEntryData::Create(std::uint32_t type) {
  type_ = type;
  const PayloadRow* row = FindPayload(type);
  payload_ = row ? row->makePayload() : Payload();
}

void CRuxEntryData::Destory() { *this = CRuxEntryData(); }
