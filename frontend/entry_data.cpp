#include "frontend/entry_data.h"

#include <cstdint>
#include <memory>
#include <string>
#include <variant>

#include "frontend/entry.h"
#include "frontend/identifiers.h"
#include "frontend/value_records.h"
#include "ruxcomp/language/entries.h"

namespace ruxcomp::core {

namespace {

struct Address {
  void* operator()(std::monostate&) const { return nullptr; }
  template <class T>
  void* operator()(T& payload) const {
    return &payload;
  }
  template <class T>
  void* operator()(Boxed<T>& payload) const {
    return payload.get();
  }
};

template <class Payload>
CRuxEntryData::Payload MakePayload() {
  return Payload{};
}

template <class Entry>
std::unique_ptr<CRUXEntry> MakeEntryOf(std::uint32_t identifier, tagNOTATION notation) {
  return std::make_unique<Entry>(identifier, notation);
}

constexpr PayloadRow kPayloads[] = {
    {PAYLOAD_DWORD, MakePayload<std::uint32_t>, MakeEntryOf<CGEDWORD>},
    {PAYLOAD_STRING, MakePayload<std::string>, MakeEntryOf<CGESTRING>},
    {PAYLOAD_STRINGLIST, MakePayload<TextList>, MakeEntryOf<CGESTRINGLIST>},
    {PAYLOAD_VALUE, MakePayload<Boxed<CGeValue>>, MakeEntryOf<CGEVALUE>},
    {PAYLOAD_REPEATER, MakePayload<Boxed<RepeaterRecord>>, MakeEntryOf<CGEREPEATER>},
};

}  // namespace

void CRuxEntryData::Create(std::uint32_t type) {
  type_ = type;
  const PayloadRow* row = FindPayload(type);
  payload_ = row ? row->make_payload() : Payload();
}

void* CRuxEntryData::GetData() { return std::visit(Address{}, payload_); }

void CRuxEntryData::Destory() { *this = CRuxEntryData(); }

const PayloadRow* FindPayload(std::uint32_t identifier) {
  for (const PayloadRow& row : kPayloads) {
    if (row.type == PayloadOf(identifier)) return &row;
  }
  return nullptr;
}

std::unique_ptr<CRUXEntry> MakeEntry(std::uint32_t identifier, tagNOTATION notation) {
  const PayloadRow* row = FindPayload(identifier);
  return row ? row->make_entry(identifier, notation) : nullptr;
}

}  // namespace ruxcomp::core
