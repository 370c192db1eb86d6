// Descriptions that a generator makes of a large inventory: hardly a text or a number comes twice.
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "bench/model/contents.h"
#include "bench/model/machine.h"
#include "bench/model/parts.h"

namespace {

constexpr std::uint32_t kSensorsOfGroup = 25;
constexpr std::uint32_t kFirstId = 0x100;

// Numbers without a pattern, the same everywhere: each from another `seed`.
std::uint32_t Scattered(std::uint32_t seed) {
  std::uint64_t bits = seed * 0x9E3779B97F4A7C15ull + 0x632BE59BD9B4E019ull;
  bits = (bits ^ (bits >> 31)) * 0xBF58476D1CE4E5B9ull;
  return static_cast<std::uint32_t>(bits >> 32);
}

template <typename Element, std::size_t size>
const Element& Picked(const Element (&list)[size], std::uint32_t seed) {
  return list[Scattered(seed) % size];
}

const char* const kPlaces[] = {"AIR",  "CPU",   "DIMM",  "DRIVE", "EXIT",   "FABRIC",
                               "FUSE", "INLET", "PHASE", "REAR",  "SOCKET", "TRAY"};
const char* const kKinds[] = {"AMPS", "FLOW", "LEVEL", "LOAD", "SPEED", "TEMP", "VOLT", "WATT"};

// 8 to 20 characters.
std::string NameOf(std::uint32_t i) {
  std::string name = std::string(Picked(kPlaces, 3 * i)) + '_' + Picked(kKinds, 3 * i + 1);
  const std::string number = std::to_string(i);
  if (name.size() + 1 + number.size() < 8) name += "_MON";
  return name + '_' + number;
}

// 60 to 140 characters.
std::string CommentOf(std::uint32_t i) {
  const char* const reasons[] = {
      "limits agreed with the thermal team for an inlet of up to 45 degrees",
      "reads through the second mux, which needs 3 ms after it is switched",
      "the part of the second source reads low by up to 2 per cent when cold",
      "shared with the service processor: not to be read while it is in reset"};
  const char* const ends[] = {"", "; see the note of the board's revision C",
                              "; to be measured again with the next lot of boards"};
  return "part " + std::to_string(1000000 + Scattered(i) % 9000000) + ": " +
         Picked(reasons, 5 * i + 1) + Picked(ends, 5 * i + 2);
}

Operand Any(std::uint32_t i) { return Number(Scattered(i) % 65536); }

Operand GlobalOf(const Machine& machine, std::uint32_t i) {
  return Shared(Operand::kGlobal, machine.globals, Scattered(i));
}
Operand ActionOf(const Machine& machine, std::uint32_t i) {
  return Shared(Operand::kAction, machine.actions, Scattered(i));
}

// An access to memory, with data where the type has any.
Value OfBus(ValueType type, std::uint32_t i) {
  Value value{"", type, {Any(i), Number(1 + i % 4), Bus(BusType::kMmio), Number(Scattered(i + 7))}};
  if (type == ValueType::kWrite || type == ValueType::kWriteBlock) {
    value.operands.push_back(Any(i + 1));
  }
  return value;
}

// Every type that a sensor's value may have, in turn.
Value ReadingOf(const Machine& machine, std::uint32_t i) {
  switch (i % 15) {
    case 0:
      return {"", ValueType::kLoad, {Any(i)}};
    case 1:
      return {"", ValueType::kCalc, {Operator(kTimes), GlobalOf(machine, i), Any(i)}};
    case 2:
      return {"",
              ValueType::kCalc,
              {Operator(kGreater), GlobalOf(machine, i), Any(i), Number(1), Number(0)}};
    case 3:
      return {"", ValueType::kCall, {ActionOf(machine, i), Any(i), Number(i % 16)}};
    case 4:
      return OfBus(ValueType::kRead, i);
    case 5:
      return OfBus(ValueType::kWrite, i);
    case 6:
      return {"", ValueType::kField, {Number(i % 8), Number(1), GlobalOf(machine, i)}};
    case 7:
      return {"", ValueType::kList, {Any(i), Any(i + 1), Any(i + 2), Any(i + 3)}};
    case 8:
      return OfBus(ValueType::kReadBlock, i);
    case 9:
      return OfBus(ValueType::kWriteBlock, i);
    case 10:
      return {"",
              ValueType::kTable,
              {Shared(Operand::kTable, machine.tables, i), GlobalOf(machine, i)}};
    case 11:
      return SmbusWrite("", Scattered(i), i % 256);
    case 12:
      return SmbusRead("", Scattered(i));
    case 13:
      return {"", ValueType::kIf, {GlobalOf(machine, i)}};
    default:
      return {"",
              ValueType::kCallIf,
              {GlobalOf(machine, i), ActionOf(machine, i), Any(i), Number(i % 16)}};
  }
}

// 21 of 100 sensors have a limit below zero.
std::vector<Threshold> LimitsOf(std::uint32_t i) {
  std::vector<Threshold> limits;
  const auto add = [&](const char* name, std::uint32_t limit) {
    limits.push_back({name, static_cast<std::int32_t>(limit)});
  };
  add("FH", 500000 + Scattered(4 * i) % 9500000);
  if (i % 2) add("WH", 100000 + Scattered(4 * i + 1) % 400000);
  if (i % 100 < 21) {
    limits.push_back({"WL", -2 - static_cast<std::int32_t>(Scattered(4 * i + 2) % 40000)});
  } else if (i % 3 == 0) {
    add("WL", Scattered(4 * i + 2) % 100000);
  }
  return limits;
}

void AddGlobals(Machine& machine, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    machine.globals.push_back({Numbered("RAIL_", i), ValueType::kLoad, {Any(i)}});
  }
}

// The steps include the types that only actions use.
void AddActions(Machine& machine, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    machine.actions.push_back(
        {Numbered("SETTLE_", i),
         2,
         {{"1", ValueType::kRead, {Argument(1), Number(2), Bus(BusType::kIoPort), Number(0)}},
          {"2", ValueType::kNone, {}},
          {"3", ValueType::kWait, {Any(i)}},
          {"4", ValueType::kGoto, {Step(1)}},
          {"", ValueType::kCalc, {Operator(kPlus), Step(1), Argument(2)}}}});
  }
}

void AddSensors(Machine& machine, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t type = 1 + Scattered(i) % 13;
    Sensor sensor{NameOf(i),   kFirstId + i, i / kSensorsOfGroup,     type,        i % 4, i % 16,
                  LimitsOf(i), {},           {ReadingOf(machine, i)}, CommentOf(i)};
    if (i % 2) sensor.properties.push_back({"SERIAL", "SN-" + std::to_string(Scattered(i))});
    if (i % 4 == 0) sensor.values.push_back(SmbusWrite("INIT", Scattered(i + 1), i % 256));
    machine.sensors.push_back(std::move(sensor));
  }
}

}  // namespace

Machine MakeRichMachine(std::uint32_t sensors) {
  Machine machine;
  machine.model = "Inventory of " + std::to_string(sensors) + " sensors";
  for (std::uint32_t i = 0; i <= (sensors - 1) / kSensorsOfGroup; ++i) {
    machine.groups.push_back({Numbered("ENCLOSURE_", i), kRoot, 0});
  }
  AddGlobals(machine, sensors / 100 + 1);
  AddActions(machine, sensors / 500 + 1);
  for (std::uint32_t i = 0; i < sensors / 1000 + 1; ++i) {
    machine.tables.push_back(Curve(Numbered("CURVE_", i), i));
  }
  AddSensors(machine, sensors);
  machine.events.push_back(AllSensors("INVENTORY", machine));
  return machine;
}
