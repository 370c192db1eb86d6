// Machines with the content of real descriptions; README.md has the figures. A large one consists
// of many boards.
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include "bench/model/contents.h"
#include "bench/model/machine.h"
#include "bench/model/parts.h"

namespace {

constexpr std::uint32_t kSensorsOfBoard = 50;
constexpr std::uint32_t kFirstId = 1;

struct Kind {
  const char* name;
  const char* sensor;  // the name of a sensor begins with it
  std::uint32_t type;
  const char* unit;
  std::uint32_t scale;
  const char* chip;
  BusType bus;
};
const Kind kKinds[] = {
    {"Voltage", "P3V3_AUX_RAIL_VOLT_V_", 0x02, "mV", 1000, "ADC", BusType::kAdc},
    {"Temperature", "Ambient Air Temp ", 0x01, "mC", 1000, "TMP75", BusType::kMmio},
    {"Current", "P12V_HSC_OUT_CURR_A_", 0x03, "mA", 1000, "INA230", BusType::kMmio},
    {"Fan", "FAN_TACH_IL_SPEED_RPM_", 0x04, "RPM", 1, "I2CFan", BusType::kTach},
};
constexpr std::uint32_t kKindCount = std::size(kKinds);

// Of ten sensors.
std::uint32_t KindOf(std::uint32_t sensor) {
  const std::uint32_t kinds[] = {0, 1, 0, 2, 1, 0, 3, 1, 2, 0};
  return kinds[sensor % std::size(kinds)];
}

std::uint32_t BoardOf(std::uint32_t sensor) { return sensor / kSensorsOfBoard; }

// A limit, and in a comment what the data sheet says.
Threshold Limit(const char* name, std::int32_t limit, std::uint32_t scale) {
  std::string comment = std::to_string(limit / static_cast<std::int32_t>(scale));
  if (limit < 0) {
    comment = "-0.05";
  } else if (scale == 1000 && limit % 1000) {
    comment += '.' + std::to_string(limit % 1000 / 100);
  }
  return {name, limit, comment};
}

std::vector<Threshold> LimitsOf(std::uint32_t i, const Kind& kind) {
  const auto step = static_cast<std::int32_t>(i % 37) * 100;
  const auto limit = [&](const char* name, std::int32_t from) {
    return Limit(name, from + step, kind.scale);
  };
  if (i % 80 == 0) return {Limit("FL", -50, kind.scale), limit("WH", 12900)};
  switch (KindOf(i)) {
    case 0:
      return {limit("WH", 3500), limit("WL", 3100)};
    case 1:
      return {limit("FH", 95000), limit("WH", 85000)};
    case 2:
      return {limit("WH", 50000)};
    default:
      return {limit("WL", 1200)};
  }
}

// Of twenty readings eight refer to something.
Value ReadingOf(const Machine& machine, std::uint32_t i, const Kind& kind) {
  const std::uint32_t turn = i % 20;
  const Operand global = Shared(Operand::kGlobal, machine.globals, i);
  if (turn < 11) {
    const Operand place = turn % 2 ? global : Number(i % 16);
    return {"", ValueType::kRead, {place, Number(i % 4), Bus(kind.bus), Number(i % 256)}};
  }
  if (turn < 15) return SmbusRead("", i);
  switch (turn) {
    case 15:
    case 16:
      return {"",
              ValueType::kCall,
              {Shared(Operand::kAction, machine.actions, i), global, Number(16), Number(1)}};
    case 17:
      return {"", ValueType::kCalc, {Operator(kTimes), global, Number(4)}};
    case 18:
      return {"", ValueType::kProbe, {Number(i)}};
    default:
      return {"", ValueType::kLoad, {Number(i % 100)}};
  }
}

// What the firmware's own programs want to know.
std::vector<Property> PropertiesOf(std::uint32_t i, const Kind& kind) {
  std::vector<Property> properties = {{"SCALE", std::to_string(kind.scale)},
                                      {"UNIT", kind.unit},
                                      {"HW", kind.chip},
                                      {"Index", std::to_string(i % 16)},
                                      {"CHANNEL", Numbered("in", i % 8 + 1) + "_input"}};
  if (i % 3) properties.push_back({"ScaleFactor", "0.3333"});
  if (i % 2) properties.push_back({"HYST_WH", "0." + std::to_string(i % 40 + 100)});
  if (i % 4) properties.push_back({"PowerState", "ChassisOn"});
  if (i % 5 == 0) properties.push_back({"PollRate", "1"});
  return properties;
}

std::string BoardName(std::uint32_t board) { return Numbered("Compute Board ", board); }

// One group for the board, and one in it for each kind of sensors.
void AddBoard(Machine& machine, std::uint32_t board) {
  const std::string name = BoardName(board);
  const auto top = static_cast<std::uint32_t>(machine.groups.size());
  machine.groups.push_back({name, kRoot, kKindCount});
  for (const Kind& kind : kKinds) machine.groups.push_back({name + " / " + kind.name, top, 0});

  const std::string prefix = Numbered("E", board) + '.';
  machine.properties.push_back({prefix + "Name", name});
  machine.properties.push_back(
      {prefix + "Probe", Numbered("FruDevice(PRODUCT_NAME: Compute ", board)});
  machine.properties.push_back({prefix + "Type", "Board"});
}

// One list for the board, and one below it for each kind of sensors that it has.
void AddLists(Machine& machine, std::uint32_t board) {
  EventList all{"ALL " + BoardName(board), 0, {}};
  const auto parent = static_cast<std::uint32_t>(machine.events.size() + 1);
  std::vector<EventList> of_kinds;
  for (const Kind& kind : kKinds) {
    of_kinds.push_back({"SET " + BoardName(board) + " / " + kind.name, parent, {}});
  }
  for (std::uint32_t i = board * kSensorsOfBoard; i < machine.sensors.size() && BoardOf(i) == board;
       ++i) {
    all.sensors.push_back(i);
    of_kinds[KindOf(i)].sensors.push_back(i);
  }
  machine.events.push_back(all);
  for (const EventList& of_kind : of_kinds) {
    if (!of_kind.sensors.empty()) machine.events.push_back(of_kind);
  }
}

// What scales a raw reading.
Action Scale(std::uint32_t i) {
  return {Numbered("SCALE", i),
          3,
          {{"1", ValueType::kCalc, {Operator(kTimes), Argument(1), Argument(2)}},
           {"", ValueType::kCalc, {Operator(kDivided), Step(1), Argument(3)}}}};
}

Sensor SensorOf(const Machine& machine, std::uint32_t i) {
  const Kind& kind = kKinds[KindOf(i)];
  Sensor sensor{kind.sensor + std::to_string(i),
                kFirstId + i,
                BoardOf(i) * (1 + kKindCount) + 1 + KindOf(i),
                kind.type,
                i % 25 ? 1u : 0u,
                0,
                LimitsOf(i, kind),
                PropertiesOf(i, kind),
                {ReadingOf(machine, i, kind)}};
  if (i % 8 == 6) {
    sensor.values.push_back({"PWM",
                             ValueType::kWrite,
                             {Number(i % 8), Number(0), Bus(BusType::kPwm), Number(0), Number(i)}});
  }
  return sensor;
}

Device DeviceOf(std::uint32_t i) {
  Device device{Numbered("Controller Zone ", i), 1 + i, 1, 0, {}, {}};
  device.properties = {{"HW", "Pid"},
                       {"Class", i % 2 ? "temp" : "fan"},
                       {"OutLimitMax", "90"},
                       {"ICoefficient", "-0.0035"},
                       {"FFGainCoefficient", "1.0"},
                       {"Inputs", Numbered("FAN_TACH_IL_SPEED_RPM_", i) + ",Ambient Air Temp 1"}};
  if (i % 2) device.values.push_back({"SETPOINT", ValueType::kLoad, {Number(90000 + i % 8 * 500)}});
  return device;
}

}  // namespace

Machine MakeRealMachine(std::uint32_t sensors) {
  const std::uint32_t boards = BoardOf(sensors - 1) + 1;
  Machine machine;
  machine.style = Style::kAsReal;
  machine.model = Numbered("compute_", sensors);
  machine.comments = {machine.model, "made from configurations/compute/board.json"};
  machine.system_properties = {{"FILE", "configurations/compute/board.json"}};
  for (std::uint32_t board = 0; board < boards; ++board) {
    AddBoard(machine, board);
    machine.actions.push_back(Scale(board));
  }
  for (std::uint32_t i = 0; i < sensors / 50; ++i) {
    machine.tables.push_back(Curve(Numbered("STEP Stepwise Compute Zone ", i), i));
  }
  for (std::uint32_t i = 0; i < sensors / 6 + 1; ++i) {
    machine.globals.push_back(
        {Numbered("RAW_in", i),
         ValueType::kRead,
         {Number(0x290), Number(0x200 + i % 16), Bus(BusType::kIoPort), Number(0)}});
  }
  for (std::uint32_t i = 0; i < sensors; ++i) machine.sensors.push_back(SensorOf(machine, i));
  for (std::uint32_t i = 0; i < sensors / 6 + 1; ++i) machine.devices.push_back(DeviceOf(i));
  for (std::uint32_t i = 0; i < sensors / 160; ++i) {
    machine.repeaters.push_back(
        {Numbered("SCAN.in", i), 8, i % boards, {Number(8), Number(0x1D), Number(1)}});
  }
  for (std::uint32_t board = 0; board < boards; ++board) AddLists(machine, board);
  return machine;
}
