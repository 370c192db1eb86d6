// What a machine's description holds: groups in trees, sensors, the actions, tables and
// globals that their readings go through, devices, and the lists of what reports events. It is
// independent of any language: writers.h writes it for each compiler in the comparison, and
// contents.h lists the machines.
#ifndef BENCH_MODEL_MACHINE_H_
#define BENCH_MODEL_MACHINE_H_

#include <cstdint>
#include <string>
#include <vector>

// Value types and bus types as numbers; scripts define words for them, value_words.def.
enum class ValueType : std::uint32_t {
#define VALUE_TYPE(name, word, number) name = number,
#define BUS_TYPE(name, word, number)
#include "bench/model/value_words.def"
};
enum class BusType : std::uint32_t {
#define VALUE_TYPE(name, word, number)
#define BUS_TYPE(name, word, number) name = number,
#include "bench/model/value_words.def"
};

// One operand of a value: a number, or what it refers to, as an index into the machine's lists.
struct Operand {
  enum Kind : std::uint32_t {
    kNumber,    // itself
    kBus,       // a BusType
    kOperator,  // a code of an operator
    kArgument,  // the number of an argument of the action, from 1
    kStep,      // the number of an earlier value of the action, from 1
    kGlobal,
    kAction,
    kTable,
  };
  Kind kind;
  std::uint32_t number;
};

struct Value {
  std::string name;  // "" for the main one
  ValueType type;
  std::vector<Operand> operands;
};

struct Property {
  std::string name;
  std::string text;
};

struct Threshold {
  std::string name;  // FH, WH, WL or FL
  std::int32_t limit;
  std::string comment = {};  // after it
};

struct Group {
  std::string name;
  std::uint32_t parent;    // an index into groups, or kRoot
  std::uint32_t children;  // how many groups are directly below it
};
constexpr std::uint32_t kRoot = 0xFFFFFFFF;

struct Sensor {
  std::string name;
  std::uint32_t id;
  std::uint32_t group;  // an index into groups
  std::uint32_t type;
  std::uint32_t init_flag;
  std::uint32_t control_mask;
  std::vector<Threshold> thresholds;
  std::vector<Property> properties;
  std::vector<Value> values;  // the main one first
  std::string comment = {};   // above it
};

struct Device {
  std::string name;
  std::uint32_t id;
  std::uint32_t init_flag;
  std::uint32_t control_mask;
  std::vector<Property> properties;
  std::vector<Value> values;
};

struct Action {
  std::string name;
  std::uint32_t arguments;
  std::vector<Value> steps;  // named "1", "2", ...; the last one is the result, named ""
};

struct Table {
  struct Row {
    std::uint32_t first, last, cell;
  };
  std::string name;
  std::uint32_t type;
  std::vector<Row> rows;
};

struct Repeater {
  std::string name;
  std::uint32_t count;
  std::uint32_t action;  // an index into actions
  std::vector<Operand> arguments;
};

// Sensors whose events are reported together.
struct EventList {
  std::string name;
  std::uint32_t parent;                // the number of a list, from 1, or 0
  std::vector<std::uint32_t> sensors;  // indices
};

// How it is written, where a script leaves a choice.
enum class Style {
  kOneFile,  // types of values and buses by words, other codes as numbers; texts in quotes
  kAsReal,   // words and tables in files of their own; all codes by words, quotes where needed
};

struct Machine {
  Style style = Style::kOneFile;
  std::vector<std::string> comments;  // at the head
  std::string model;
  std::vector<Property> system_properties;
  std::vector<Group> groups;
  std::vector<Sensor> sensors;
  std::vector<Device> devices;
  std::vector<Action> actions;
  std::vector<Table> tables;
  std::vector<Value> globals;
  std::vector<Property> properties;
  std::vector<Repeater> repeaters;
  std::vector<EventList> events;
};

#endif  // BENCH_MODEL_MACHINE_H_
