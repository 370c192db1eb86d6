#include "frontend/entry_data.h"

#include <cstdint>

#include "frontend/entry.h"
#include "frontend/identifiers.h"
#include "frontend/obj.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"

namespace ruxcomp::core {

namespace {

template <class Entry>
CRUXEntry* MakeEntryOf(std::uint32_t identifier, tagNOTATION notation) {
  return &CRUXObj::m_arena.Make<Entry>(identifier, notation);
}

struct PayloadRow {
  PayloadType type;
  CRUXEntry* (*make_entry)(std::uint32_t identifier, tagNOTATION notation);
};
constexpr PayloadRow kPayloads[] = {
    {PAYLOAD_DWORD, MakeEntryOf<CGEDWORD>},           {PAYLOAD_STRING, MakeEntryOf<CGESTRING>},
    {PAYLOAD_STRINGLIST, MakeEntryOf<CGESTRINGLIST>}, {PAYLOAD_VALUE, MakeEntryOf<CGEVALUE>},
    {PAYLOAD_REPEATER, MakeEntryOf<CGEREPEATER>},
};

// The row for an entry identifier; null when its payload type is unknown.
const PayloadRow* FindPayload(std::uint32_t identifier) {
  return FindRow(kPayloads,
                 [&](const PayloadRow& row) { return row.type == PayloadOf(identifier); });
}

}  // namespace

void CRuxEntryData::Create(std::uint32_t type) {
  type_ = type;
  size_ = 0;
  data_ = FindPayload(type) ? kNothing : nullptr;
}

void CRuxEntryData::Destory() {
  type_ = size_ = 0;
  data_ = nullptr;
}

CRUXEntry* MakeEntry(std::uint32_t identifier, tagNOTATION notation) {
  const PayloadRow* row = FindPayload(identifier);
  return row ? row->make_entry(identifier, notation) : nullptr;
}

}  // namespace ruxcomp::core
