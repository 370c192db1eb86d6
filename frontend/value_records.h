// The typed records of parsed values, one for each shape of value_types.def.
//
// The members and their order come from its rows; whatever fills, checks, compiles, stores or
// prints a record walks them with VisitFields. A member is a text or a list of texts in the arena
// of the model, so that a copy of a record refers to the same texts.
#ifndef FRONTEND_VALUE_RECORDS_H_
#define FRONTEND_VALUE_RECORDS_H_

#include <cstdint>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <variant>
#include <vector>

#include "frontend/interned_string.h"
#include "frontend/text.h"
#include "ruxcomp/language/values.h"

namespace ruxcomp::core {

namespace value_records {

template <ruxcomp::language::FieldKind Kind>
using Member =
    std::conditional_t<Kind == ruxcomp::language::FieldKind::kList, TextList, std::string_view>;

}  // namespace value_records

// TextRecord, BusRecord and so on, and RepeaterRecord, the payload of a REPEATER entry.
// clang-format off
#define SHAPE(shape) struct shape##Record {
#define FIELD(shape, name, kind, role) \
  value_records::Member<ruxcomp::language::FieldKind::kind> name;
#define END_SHAPE(shape) };
#include "ruxcomp/language/value_types.def"
// clang-format on

// The members of a record, in order.
template <class Record>
inline constexpr bool kMembersOf = false;  // no record
// clang-format off
#define SHAPE(shape) \
  template <> inline constexpr auto kMembersOf<shape##Record> = std::tuple_cat(
#define FIELD(shape, name, kind, role) std::make_tuple(&shape##Record::name),
#define END_SHAPE(shape) std::tuple<>());
#include "ruxcomp/language/value_types.def"
// clang-format on

// The record of a value; std::monostate where a type has none. In the order of Shape.
using ValueRecord = std::variant<std::monostate
#define SHAPE(shape) , shape##Record
#define ENTRY_SHAPE(shape)
#include "ruxcomp/language/value_types.def"
                                 >;

// An empty record of that shape.
ValueRecord MakeValueRecord(ruxcomp::language::Shape shape);

// The address of what a variant holds; null while it holds nothing.
template <class Variant>
void* LiveAddress(Variant& variant) {
  return std::visit(
      [](auto& live) -> void* {
        using Live = std::decay_t<decltype(live)>;
        return std::is_same_v<Live, std::monostate> ? nullptr : &live;
      },
      variant);
}

// Calls visit(member) for every member of the record, in order.
template <class Record, class Visitor>
void VisitFields(Record& record, Visitor&& visit) {
  std::apply([&](auto... member) { (visit(record.*member), ...); },
             kMembersOf<std::remove_const_t<Record>>);
}

// The same for whichever record a value holds; does nothing for a value without one.
template <class Variant, class Visitor>
void VisitValueFields(Variant& record, Visitor&& visit) {
  std::visit(
      [&](auto& live) {
        if constexpr (!std::is_same_v<std::decay_t<decltype(live)>, std::monostate>) {
          VisitFields(live, visit);
        }
      },
      record);
}

struct RecordView;  // debugmeta/bytes.h

// The parsed form of a value description: type code, the text that named the type, typed record.
class CGeValue {
 public:
  // Empty: type 0, no record, no type string.
  CGeValue() = default;
  CGeValue(std::uint32_t type, std::string_view text) { Create(type, text); }

  // Sets type and type string and makes the type's empty record; types without one get none.
  void Create(std::uint32_t type, std::string_view text);

  // Makes it empty again.
  void Destory();

  std::uint32_t GetType() const { return type_; }
  Text GetStrType() const { return str_type_.text(); }

  // The record, which is part of this object; null when there is none.
  void* GetData() { return LiveAddress(record_); }

  const ValueRecord& record() const { return record_; }
  ValueRecord& record() { return record_; }

  // Appends the value as a byte record, and restores it from one (debugmeta/model_bytes.cpp).
  void GetBuffer(std::vector<std::uint8_t>& out) const;
  void SetBuffer(const RecordView& in);

 private:
  std::uint32_t type_ = 0;
  ValueRecord record_;
  InternedString str_type_;
};

}  // namespace ruxcomp::core

#endif  // FRONTEND_VALUE_RECORDS_H_
