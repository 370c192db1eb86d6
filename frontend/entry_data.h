// The typed payload of an entry.
#ifndef FRONTEND_ENTRY_DATA_H_
#define FRONTEND_ENTRY_DATA_H_

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "frontend/identifiers.h"
#include "frontend/text.h"
#include "frontend/value_records.h"

namespace ruxcomp::core {

struct RecordView;  // debugmeta/bytes.h

// A number, a text, a list of texts, a value or a repeater, as the type says. All but the number
// are in the arena of the model.
class CRuxEntryData {
 public:
  // Empty: type 0, no payload.
  CRuxEntryData() = default;
  explicit CRuxEntryData(std::uint32_t type) { Create(type); }
  CRuxEntryData(const CRuxEntryData&) = delete;
  CRuxEntryData& operator=(const CRuxEntryData&) = delete;

  // Makes the empty payload that an entry identifier asks for; none for an unknown payload type.
  void Create(std::uint32_t type);

  // Makes it empty again.
  void Destory();

  // The entry identifier that the payload was made for; 0 when empty.
  std::uint32_t GetType() const { return type_; }
  bool HasData() const { return data_ != nullptr; }

  // The payload, if it is of that type.
  std::optional<std::uint32_t> number() const {
    return Holds(PAYLOAD_DWORD) ? std::optional(size_) : std::nullopt;
  }
  std::optional<Text> text() const {
    return Holds(PAYLOAD_STRING) ? std::optional(AsText()) : std::nullopt;
  }
  std::optional<TextList> list() const {
    return Holds(PAYLOAD_STRINGLIST) ? std::optional(AsList()) : std::nullopt;
  }
  const CGeValue* value() const { return Holds(PAYLOAD_VALUE) ? &AsValue() : nullptr; }
  const RepeaterRecord* repeater() const {
    return Holds(PAYLOAD_REPEATER) ? &AsRepeater() : nullptr;
  }

  // Replaces the number, text, list, value or repeater of a payload of that type.
  void Set(std::uint32_t number) { size_ = number; }
  void Set(Text text) {
    data_ = text.c_str();
    size_ = text.size();
  }
  void Set(TextList list) {
    data_ = list.empty() ? kNothing : static_cast<const void*>(list.begin());
    size_ = static_cast<std::uint32_t>(list.size());
  }
  void Set(const CGeValue& value) { data_ = &value; }
  void Set(const RepeaterRecord& repeater) { data_ = &repeater; }

  // Calls visit(payload) with a number, a Text, a TextList, a CGeValue or a RepeaterRecord;
  // std::monostate when there is no payload.
  template <class Visitor>
  void Visit(Visitor&& visit) const {
    if (!HasData()) return visit(std::monostate());
    switch (static_cast<PayloadType>(PayloadOf(type_))) {
      case PAYLOAD_DWORD:
        return visit(size_);
      case PAYLOAD_STRING:
        return visit(AsText());
      case PAYLOAD_STRINGLIST:
        return visit(AsList());
      case PAYLOAD_VALUE:
        return visit(AsValue());
      case PAYLOAD_REPEATER:
        return visit(AsRepeater());
    }
  }

  // Appends the payload as a byte record, and restores it from one (debugmeta/model_bytes.cpp).
  void GetBuffer(std::vector<std::uint8_t>& out) const;
  void SetBuffer(const RecordView& in);

 private:
  static constexpr char kNothing[] = "";  // an empty payload points there

  bool Holds(PayloadType type) const { return HasData() && PayloadOf(type_) == type; }
  Text AsText() const { return {static_cast<const char*>(data_), size_}; }
  TextList AsList() const { return {static_cast<const std::string_view*>(data_), size_}; }
  // A script may have millions of values that say nothing: these take no memory.
  const CGeValue& AsValue() const {
    return data_ == kNothing ? kEmptyValue : *static_cast<const CGeValue*>(data_);
  }
  const RepeaterRecord& AsRepeater() const {
    return data_ == kNothing ? kEmptyRepeater : *static_cast<const RepeaterRecord*>(data_);
  }

  static constexpr CGeValue kEmptyValue{};
  static constexpr RepeaterRecord kEmptyRepeater{};

  std::uint32_t type_ = 0;
  std::uint32_t size_ = 0;      // of a text or list; of a number, the number itself
  const void* data_ = nullptr;  // null: no payload
};

class CRUXEntry;

// A new, empty entry of the class that the identifier asks for, in the arena of the model; null
// when there is none.
CRUXEntry* MakeEntry(std::uint32_t identifier, tagNOTATION notation);

}  // namespace ruxcomp::core

#endif  // FRONTEND_ENTRY_DATA_H_
