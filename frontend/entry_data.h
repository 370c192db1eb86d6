// The typed payload of an entry.
#ifndef FRONTEND_ENTRY_DATA_H_
#define FRONTEND_ENTRY_DATA_H_

#include <cstdint>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "frontend/boxed.h"
#include "frontend/gevalue.h"
#include "frontend/value_records.h"

struct RecordView;  // debugmeta/bytes.h

class CRuxEntryData {
 public:
  // Most entries hold a text or nothing: the larger payloads stay out of them.
  using Payload = std::variant<std::monostate, std::uint32_t, std::string, TextList,
                               Boxed<CGeValue>, Boxed<RepeaterRecord>>;

  // Empty: type 0, no payload. Copies are independent of their source.
  CRuxEntryData() = default;
  explicit CRuxEntryData(std::uint32_t type) { Create(type); }

  // Makes the empty payload that an entry identifier asks for; none for an unknown payload type.
  void Create(std::uint32_t type);

  // Back to empty.
  void Destory();

  // The entry identifier that the payload was made for; 0 when empty.
  std::uint32_t GetType() const { return type_; }

  // The payload, owned by this object; null when there is none.
  void* GetData();
  bool HasData() const { return payload_.index() != 0; }

  // The payload as a T; null when it is of another type or there is none.
  template <class T>
  T* Get() {
    return Held<T>(payload_);
  }
  template <class T>
  const T* Get() const {
    return Held<T>(payload_);
  }

  const Payload& payload() const { return payload_; }
  Payload& payload() { return payload_; }

  // Appends the byte record; and back from it (debugmeta/payload_bytes.cpp).
  void GetBuffer(std::vector<std::uint8_t>& out) const;
  void SetBuffer(const RecordView& in);

 private:
  template <class T, class Variant>
  static auto Held(Variant& payload) {
    if constexpr (IsAlternative<T, Payload>::value) {
      return std::get_if<T>(&payload);
    } else {
      auto* box = std::get_if<Boxed<T>>(&payload);
      return box ? box->get() : nullptr;
    }
  }

  template <class T, class Variant>
  struct IsAlternative;
  template <class T, class... Alternatives>
  struct IsAlternative<T, std::variant<Alternatives...>>
      : std::disjunction<std::is_same<T, Alternatives>...> {};

  std::uint32_t type_ = 0;
  Payload payload_;
};

#endif  // FRONTEND_ENTRY_DATA_H_
