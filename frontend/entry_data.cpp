#include "frontend/entry_data.h"

#include <cstdint>
#include <variant>

#include "frontend/boxed.h"
#include "frontend/payload_types.h"

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

}  // namespace

void CRuxEntryData::Create(std::uint32_t type) {
  type_ = type;
  const PayloadRow* row = FindPayload(type);
  payload_ = row ? row->make_payload() : Payload();
}

void* CRuxEntryData::GetData() { return std::visit(Address{}, payload_); }

void CRuxEntryData::Destory() { *this = CRuxEntryData(); }
