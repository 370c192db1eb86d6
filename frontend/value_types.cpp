#include "frontend/value_types.h"

namespace {

template <class Record>
ValueRecord Make() {
  return Record{};
}

constexpr Role O = Role::kOperand;
constexpr Role N = Role::kNumber;

constexpr std::array<Role, kMaxFields> kCalculationRoles = {Role::kOperator, O, O, O, O};

// Flags of a row, by name.
constexpr bool kKeepsSurplus = true;
constexpr bool kCountsArguments = true;
constexpr bool kOnlySmbus = true;

const ValueType kValueTypes[] = {
    {0, Make<EmptyRecord>, 1, 1, {}},
    {1, Make<TextRecord>, 2, 2, {O}},
    {kCalculation, Make<CalculationRecord>, 4, 4, kCalculationRoles},
    {kActionCall, Make<CallRecord>, 2, kAnyNumber, {Role::kAction, O}, false, kCountsArguments},
    {4, Make<BusRecord>, 5, 5, {O, N, N, O}},
    {5, Make<BusArgsRecord>, 6, 6, {O, N, N, O, O}, kKeepsSurplus},
    {6, Make<PairRecord>, 3, kAnyNumber, {N, N, O}},
    {7, Make<ListRecord>, 1, 5, {O}},
    {8, Make<BusRecord>, 5, 5, {O, N, N, O}},
    {9, Make<BusArgsRecord>, 6, 6, {O, N, N, O, O}, kKeepsSurplus},
    {10, Make<CellRecord>, 3, 3, {Role::kTable, O}},
    {11, Make<BusArgsRecord>, 6, 6, {O, N, N, O, O}, kKeepsSurplus, false, kOnlySmbus},
    {12, Make<BusRecord>, 5, 5, {O, N, N, O}, false, false, kOnlySmbus},
    {101, Make<TextRecord>, 2, 2, {O}},
    {102, Make<PairRecord>, 3, kAnyNumber, {O, Role::kAction, O}, false, kCountsArguments},
    {103, Make<TextRecord>, 2, 2, {O}},
    {104, Make<TextRecord>, 2, 2, {Role::kLocalValue}},
};

const ValueType kNoRecord = {kAnyNumber, Make<std::monostate>, 1, kAnyNumber, {}};

}  // namespace

const ValueType kComparison = {kCalculation, Make<CalculationRecord>, 6, 6, kCalculationRoles};

const ValueType& FindValueType(std::uint32_t code) {
  for (const ValueType& type : kValueTypes) {
    if (type.code == code) return type;
  }
  return kNoRecord;
}
