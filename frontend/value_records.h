// The typed records behind a parsed value.
//
// Each shape lists its members once, in record order, in Fields; whatever copies, fills, checks,
// compiles, stores or prints a record walks that list with VisitFields. A member is a text or a
// list of texts.
#ifndef FRONTEND_VALUE_RECORDS_H_
#define FRONTEND_VALUE_RECORDS_H_

#include <string>
#include <tuple>
#include <type_traits>
#include <variant>
#include <vector>

using TextList = std::vector<std::string>;

struct EmptyRecord {
  static constexpr auto Fields() { return std::make_tuple(); }
};

struct TextRecord {
  std::string Text;
  static constexpr auto Fields() { return std::make_tuple(&TextRecord::Text); }
};

struct CalculationRecord {
  std::string Operator, Operand1, Operand2, Operand3, Operand4;
  static constexpr auto Fields() {
    using R = CalculationRecord;
    return std::make_tuple(&R::Operator, &R::Operand1, &R::Operand2, &R::Operand3, &R::Operand4);
  }
};

struct CallRecord {
  std::string Name;  // of an ACTION section
  TextList Args;
  static constexpr auto Fields() { return std::make_tuple(&CallRecord::Name, &CallRecord::Args); }
};

struct BusRecord {
  std::string Operand, Number, BusType, BaseAddress;
  static constexpr auto Fields() {
    using R = BusRecord;
    return std::make_tuple(&R::Operand, &R::Number, &R::BusType, &R::BaseAddress);
  }
};

struct BusArgsRecord {
  std::string Operand, Number, BusType, BaseAddress;
  TextList Args;
  static constexpr auto Fields() {
    using R = BusArgsRecord;
    return std::make_tuple(&R::Operand, &R::Number, &R::BusType, &R::BaseAddress, &R::Args);
  }
};

struct PairRecord {
  std::string First, Second;
  TextList Args;
  static constexpr auto Fields() {
    return std::make_tuple(&PairRecord::First, &PairRecord::Second, &PairRecord::Args);
  }
};

struct ListRecord {
  TextList Args;
  static constexpr auto Fields() { return std::make_tuple(&ListRecord::Args); }
};

struct CellRecord {
  std::string Table;  // the name of a TABLE section
  std::string Index;
  static constexpr auto Fields() { return std::make_tuple(&CellRecord::Table, &CellRecord::Index); }
};

// The payload of a REPEATER entry.
struct RepeaterRecord {
  std::string Count;   // how often
  std::string Action;  // the name of an ACTION section
  TextList Args;
  static constexpr auto Fields() {
    using R = RepeaterRecord;
    return std::make_tuple(&R::Count, &R::Action, &R::Args);
  }
};

// The record of a value; std::monostate where a type has none.
using ValueRecord =
    std::variant<std::monostate, EmptyRecord, TextRecord, CalculationRecord, CallRecord, BusRecord,
                 BusArgsRecord, PairRecord, ListRecord, CellRecord>;

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
  std::apply([&](auto... member) { (visit(record.*member), ...); }, Record::Fields());
}

// The same for whichever record a value holds; none for a value without a record.
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

#endif  // FRONTEND_VALUE_RECORDS_H_
