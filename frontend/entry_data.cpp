#include "frontend/entry_data.h"

#include <cstdint>

#include "frontend/entry.h"
#include "frontend/identifiers.h"
#include "frontend/obj.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/entries.h"
#include "ruxcomp/language/rows.h"

namespace ruxcomp::core {

namespace {

template <class Record>
const void* MakeRecord() {
  return &CRUXObj::m_arena.Make<Record>();
}

template <class Entry>
CRUXEntry* MakeEntryOf(std::uint32_t identifier, tagNOTATION notation) {
  return &CRUXObj::m_arena.Make<Entry>(identifier, notation);
}

// What an entry with a payload is made of: its class and, for a payload that is larger than a few
// words, what makes the record.
struct PayloadRow {
  PayloadType type;
  CRUXEntry* (*make_entry)(std::uint32_t identifier, tagNOTATION notation);
  const void* (*make_record)();
};
constexpr PayloadRow kPayloads[] = {
    {PAYLOAD_DWORD, MakeEntryOf<CGEDWORD>, nullptr},
    {PAYLOAD_STRING, MakeEntryOf<CGESTRING>, nullptr},
    {PAYLOAD_STRINGLIST, MakeEntryOf<CGESTRINGLIST>, nullptr},
    {PAYLOAD_VALUE, MakeEntryOf<CGEVALUE>, MakeRecord<CGeValue>},
    {PAYLOAD_REPEATER, MakeEntryOf<CGEREPEATER>, MakeRecord<RepeaterRecord>},
};

// The row for an entry identifier; null when its payload type is unknown.
const PayloadRow* FindPayload(std::uint32_t identifier) {
  return FindRow(kPayloads,
                 [&](const PayloadRow& row) { return row.type == PayloadOf(identifier); });
}

}  // namespace

void CRuxEntryData::Create(std::uint32_t type) {
  const PayloadRow* row = FindPayload(type);
  type_ = type;
  size_ = 0;
  data_ = nullptr;
  if (row) data_ = row->make_record ? row->make_record() : kNothing;
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
