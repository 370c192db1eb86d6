// The payload types, and the typed payload of an entry.
#ifndef FRONTEND_ENTRY_DATA_H_
#define FRONTEND_ENTRY_DATA_H_

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "frontend/identifiers.h"
#include "frontend/value_records.h"

namespace ruxcomp::core {

// A value on the heap, for alternatives of a variant that would make the others large. Has value
// semantics; empty only when moved from.
template <class T>
class Boxed {
 public:
  Boxed() : value_(std::make_unique<T>()) {}
  Boxed(const Boxed& other) : value_(std::make_unique<T>(*other.value_)) {}
  Boxed& operator=(const Boxed& other) {
    if (this != &other) value_ = std::make_unique<T>(*other.value_);
    return *this;
  }
  Boxed(Boxed&&) noexcept = default;
  Boxed& operator=(Boxed&&) noexcept = default;
  ~Boxed() = default;

  operator T&() { return *value_; }              // NOLINT: visitors of the variant take a T
  operator const T&() const { return *value_; }  // NOLINT

  T* get() { return value_.get(); }
  const T* get() const { return value_.get(); }

 private:
  std::unique_ptr<T> value_;
};

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

  // Appends the byte record; and back from it (debugmeta/model_bytes.cpp).
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

}  // namespace ruxcomp::core

#endif  // FRONTEND_ENTRY_DATA_H_
