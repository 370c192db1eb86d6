// The parts from which machines are built.
#ifndef BENCH_MODEL_PARTS_H_
#define BENCH_MODEL_PARTS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "bench/model/machine.h"

// Codes of operators.def.
enum OperatorCode : std::uint32_t {
  kPlus = 1,
  kTimes = 3,
  kDivided = 4,
  kAnd = 6,
  kShiftRight = 9,
  kGreater = 102,
};

inline std::string Numbered(const std::string& name, std::uint32_t number) {
  return name + std::to_string(number);
}

inline Operand Number(std::uint32_t number) { return {Operand::kNumber, number}; }
inline Operand Bus(BusType bus) { return {Operand::kBus, static_cast<std::uint32_t>(bus)}; }
inline Operand Operator(OperatorCode code) { return {Operand::kOperator, code}; }
inline Operand Argument(std::uint32_t number) { return {Operand::kArgument, number}; }
inline Operand Step(std::uint32_t number) { return {Operand::kStep, number}; }

// Users of a list share its elements: the i-th user refers to the (i mod size)-th.
template <typename List>
Operand Shared(Operand::Kind kind, const List& list, std::uint32_t i) {
  return {kind, i % static_cast<std::uint32_t>(list.size())};
}

inline Operand SmbusRegister(std::uint32_t i) {
  const std::uint32_t segment = i / 112 % 16, device = 8 + i % 112, index = i % 32;
  return Number((segment << 16) + (device << 8) + index);
}

inline Value SmbusRead(const std::string& name, std::uint32_t i) {
  return {
      name, ValueType::kSmbusRead, {SmbusRegister(i), Number(1), Bus(BusType::kSmbus), Number(0)}};
}

inline Value SmbusWrite(const std::string& name, std::uint32_t i, std::uint32_t byte) {
  return {name,
          ValueType::kSmbusWrite,
          {SmbusRegister(i), Number(1), Bus(BusType::kSmbus), Number(0), Number(byte)}};
}

// A table in steps of 16 cells.
inline Table Curve(const std::string& name, std::uint32_t i) {
  Table table{name, i % 3 + 1, {}};
  for (std::uint32_t first = 0; first < 256; first += 16) {
    table.rows.push_back({first, first + 15, (first / 16 * 6 + i) % 256});
  }
  return table;
}

// The list of all sensors.
inline EventList AllSensors(const std::string& name, const Machine& machine) {
  EventList list{name, 0, {}};
  for (std::uint32_t i = 0; i < machine.sensors.size(); ++i) list.sensors.push_back(i);
  return list;
}

#endif  // BENCH_MODEL_PARTS_H_
