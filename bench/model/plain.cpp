// A tree of areas, about twenty sensors in each.
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "bench/model/contents.h"
#include "bench/model/machine.h"
#include "bench/model/parts.h"

namespace {

constexpr std::uint32_t kSensorsOfGroup = 20;
constexpr std::uint32_t kGroupsOfGroup = 8;
constexpr std::uint32_t kFirstId = 0x101;

// What is measured, and how: the sensors of a group take turns.
struct Role {
  const char* name;
  std::uint32_t type;
  const char* unit;
  std::vector<Threshold> thresholds;
  Value (*value)(const Machine& machine, std::uint32_t i);
};

const Role kRoles[] = {
    {"TEMP",
     0x01,
     "degrees C",
     {{"FH", 95}, {"WH", 85}, {"WL", 8}, {"FL", 4}},
     [](const Machine&, std::uint32_t i) { return SmbusRead("", i); }},
    {"VOLT",
     0x02,
     "mV",
     {{"FH", 13200}, {"WH", 12900}, {"WL", 11100}, {"FL", 10800}},
     [](const Machine& machine, std::uint32_t i) -> Value {
       return {"",
               ValueType::kCalc,
               {Operator(kTimes), Shared(Operand::kGlobal, machine.globals, i), Number(12)}};
     }},
    {"CURRENT",
     0x03,
     "mA",
     {{"FH", 300000}, {"WH", 265000}},
     [](const Machine& machine, std::uint32_t i) -> Value {
       return {"",
               ValueType::kCall,
               {Shared(Operand::kAction, machine.actions, i), SmbusRegister(i), Number(i % 16)}};
     }},
    {"FAN",
     0x04,
     "rpm",
     {{"WL", 2400}, {"FL", 1600}},
     [](const Machine&, std::uint32_t i) -> Value {
       return {"",
               ValueType::kRead,
               {Number(i % 64 * 4), Number(2), Bus(BusType::kMmio), Number(0xFE800000)}};
     }},
    {"PRESENT",
     0x0D,
     "state",
     {{"WL", 1}},
     [](const Machine& machine, std::uint32_t i) -> Value {
       return {"",
               ValueType::kField,
               {Number(i % 8), Number(1), Shared(Operand::kGlobal, machine.globals, i)}};
     }},
    {"WEAR",
     0x0B,
     "level",
     {{"FH", 2}, {"WH", 1}},
     [](const Machine& machine, std::uint32_t i) -> Value {
       return {"",
               ValueType::kTable,
               {Shared(Operand::kTable, machine.tables, i),
                Shared(Operand::kGlobal, machine.globals, i)}};
     }},
    {"DUTY",
     0x04,
     "percent",
     {{"WH", 95}},
     [](const Machine& machine, std::uint32_t i) -> Value {
       return {"", ValueType::kLoad, {Shared(Operand::kGlobal, machine.globals, i)}};
     }},
    {"ALARM",
     0x07,
     "state",
     {{"FH", 0}},
     [](const Machine& machine, std::uint32_t i) -> Value {
       return {"",
               ValueType::kCalc,
               {Operator(kGreater), Shared(Operand::kGlobal, machine.globals, i), Number(90),
                Number(1), Number(0)}};
     }},
};
const std::uint32_t kRoleCount = std::size(kRoles);

const char* const kAreas[] = {"CPU", "MEMORY", "FANS", "PSU", "RAILS", "DRIVES", "RISER", "BOARD"};

void AddGroups(Machine& machine, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t parent = i ? (i - 1) / kGroupsOfGroup : kRoot;
    machine.groups.push_back({Numbered(kAreas[i % std::size(kAreas)], i), parent, 0});
    if (parent != kRoot) ++machine.groups[parent].children;
  }
}

// Readings of the board's converters.
void AddGlobals(Machine& machine, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::string name = Numbered("ADC", i);
    machine.globals.push_back(i % 2 ? SmbusRead(name, i)
                                    : Value{name, ValueType::kLoad, {Number(i % 4096)}});
  }
}

// Reads a register of a chip (the arguments) and scales what it says.
void AddActions(Machine& machine, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    const Operand port = Bus(BusType::kIoPort);
    machine.actions.push_back(
        {Numbered("READ_CHIP", i),
         2,
         {{"1", ValueType::kRead, {Argument(1), Number(2), port, Number(0)}},
          {"2", ValueType::kCalc, {Operator(kShiftRight), Step(1), Argument(2)}},
          {"3", ValueType::kCalc, {Operator(kAnd), Step(2), Number(0xFFF)}},
          {"", ValueType::kCalc, {Operator(kTimes), Step(3), Number(i % 100 + 1)}}}});
  }
}

void AddTables(Machine& machine, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    machine.tables.push_back(Curve(Numbered("CURVE", i), i));
  }
}

void AddSensors(Machine& machine, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::uint32_t group = i / kSensorsOfGroup;
    const Role& role = kRoles[i % kRoleCount];
    const std::string name = machine.groups[group].name + "_" + role.name;
    Sensor sensor{Numbered(name, i % kSensorsOfGroup / kRoleCount),
                  kFirstId + i,
                  group,
                  role.type,
                  3,
                  i % 4 * 5,
                  role.thresholds,
                  {{"UNIT", role.unit}},
                  {role.value(machine, i)}};
    if (i % 4 == 0) sensor.values.push_back(SmbusWrite("INIT", i, 0x60));
    if (i % 8 == 0) {
      sensor.values.push_back({"IPMI", ValueType::kList, {Number(i % 256), Number(1)}});
    }
    machine.sensors.push_back(std::move(sensor));
  }
}

// Outputs that the firmware switches.
void AddDevices(Machine& machine, std::uint32_t count) {
  const auto first = kFirstId + static_cast<std::uint32_t>(machine.sensors.size());
  for (std::uint32_t i = 0; i < count; ++i) {
    machine.devices.push_back({Numbered("OUTPUT", i),
                               first + i,
                               1,
                               0,
                               {{"COLOUR", i % 2 ? "green" : "blue"}},
                               {SmbusWrite("ON", i, 0x80), SmbusWrite("OFF", i, 0x40)}});
  }
}

void AddProperties(Machine& machine, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    machine.properties.push_back({Numbered("Slot", i), Numbered("Card of kind ", i % 17)});
  }
}

void AddRepeaters(Machine& machine, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    machine.repeaters.push_back({Numbered("Refresh", i),
                                 i % 8 + 1,
                                 i % static_cast<std::uint32_t>(machine.actions.size()),
                                 {Number(i % 256), Shared(Operand::kGlobal, machine.globals, i)}});
  }
}

}  // namespace

Machine MakePlainMachine(std::uint32_t sensors) {
  Machine machine;
  machine.model = "Machine of " + std::to_string(sensors) + " sensors";
  AddGroups(machine, (sensors + kSensorsOfGroup - 1) / kSensorsOfGroup);
  AddGlobals(machine, sensors / 200 + 1);
  AddActions(machine, sensors / 1000 + 1);
  AddTables(machine, sensors / 1000 + 1);
  AddSensors(machine, sensors);
  AddDevices(machine, sensors / 50 + 1);
  AddProperties(machine, sensors / 100 + 1);
  AddRepeaters(machine, sensors / 200 + 1);
  machine.events.push_back(AllSensors("MACHINE", machine));  // every sensor reports events
  return machine;
}
