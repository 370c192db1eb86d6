#include <algorithm>
#include <iterator>

#include "bench/model/writers.h"

namespace {

struct Word {
  const char* word;
  std::uint32_t number;
};

const Word kValueTypes[] = {
#define VALUE_TYPE(name, word, number) {word, number},
#define BUS_TYPE(name, word, number)
#include "bench/model/value_words.def"
};
const Word kBusTypes[] = {
#define VALUE_TYPE(name, word, number)
#define BUS_TYPE(name, word, number) {word, number},
#include "bench/model/value_words.def"
};
const Word kOperators[] = {
#define OPERATOR(text, code) {text, code},
#include "ruxcomp/language/operators.def"
};

template <std::size_t size>
const char* WordOf(const Word (&words)[size], std::uint32_t number) {
  return std::find_if(words, std::end(words), [&](const Word& w) { return w.number == number; })
      ->word;
}

// Two digits at least: the base address of the SMBus is checked to be 0x00, letter by letter.
struct Hex {
  std::uint32_t number;
};
std::ostream& operator<<(std::ostream& out, Hex hex) {
  char digits[8];
  std::size_t count = 0;
  for (std::uint32_t rest = hex.number; rest || count < 2; rest >>= 4) {
    digits[count++] = "0123456789ABCDEF"[rest & 0xF];
  }
  out << "0x";
  while (count) out << digits[--count];
  return out;
}

class ScriptWriter {
 public:
  ScriptWriter(const Machine& machine, std::ostream& out) : machine_(machine), out_(out) {}

  void Write() {
    Header();
    for (const Group& group : machine_.groups) Section(group);
    for (const Action& action : machine_.actions) Section(action);
    for (const Table& table : machine_.tables) Section(table);
    Open("GLOBAL");
    for (const ::Value& global : machine_.globals) Item("G_", global);
    Open("PROPERTY");
    for (const Property& property : machine_.properties) Item("", property);
    for (const Sensor& sensor : machine_.sensors) Section(sensor);
    for (const Device& device : machine_.devices) Section(device);
    Open("REPEATER");
    for (const Repeater& repeater : machine_.repeaters) Item(repeater);
    EventList();
  }

 private:
  void Header() {
    Open("MORVRUX");
    Item("VERSION", "1.0");
    Open("DEFINE");
    for (const Word& type : kValueTypes) Item(type.word, type.number);
    Open("DEFINE");
    for (const Word& bus : kBusTypes) Item(bus.word, bus.number);
    Open("SYSTEM");
    Item("TYPE", 2);
    Item("MODEL", machine_.model);
    Item("FLAG", 0);
    Item("RUXLOOP", 1000);
  }

  void Section(const Group& group) {
    Open("GROUP");
    Item("PARENT", group.parent == kRoot ? "0" : machine_.groups[group.parent].name);
    Item("NAME", group.name);
    Item("CHILDGROUP", group.children);
  }

  void Section(const Action& action) {
    Open("ACTION");
    Item("NAME", action.name);
    Item("ARGNUMBER", action.arguments);
    Values(action.steps);
  }

  void Section(const Table& table) {
    Open("TABLE");
    Item("NAME", table.name);
    Item("TYPE", table.type);
    for (const Table::Row& row : table.rows) {
      out_ << row.first << '.' << row.last << " = " << row.cell << '\n';
    }
  }

  void Section(const Sensor& sensor) {
    Open("SENSOR");
    Item("NAME", sensor.name);
    Item("ID", Hex{sensor.id});
    Item("PARENT", machine_.groups[sensor.group].name);
    Item("TYPE", Hex{sensor.type});
    Properties(sensor.properties);
    Item("INITFLAG", sensor.init_flag);
    Item("CONTROLMASK", Hex{sensor.control_mask});
    for (const Threshold& threshold : sensor.thresholds) {
      out_ << "THRESHOLD_" << threshold.name << " = " << threshold.limit << '\n';
    }
    Values(sensor.values);
  }

  void Section(const Device& device) {
    Open("DEVICE");
    Item("NAME", device.name);
    Item("ID", Hex{device.id});
    Item("INITFLAG", device.init_flag);
    Item("CONTROLMASK", Hex{device.control_mask});
    Properties(device.properties);
    Values(device.values);
  }

  // Every sensor reports events.
  void EventList() {
    Open("PELMGROUP");
    Item("NAME", "MACHINE");
    Item("ID", 1);
    Item("PID", 0);
    out_ << "SENSORS = ";
    std::size_t count = 0;
    for (const Sensor& sensor : machine_.sensors) {
      if (count) out_ << (count % 12 ? ", " : ", \\\n          ");
      out_ << Hex{sensor.id};
      ++count;
    }
    out_ << '\n';
  }

  void Open(const char* section) { out_ << "\n[" << section << "]\n"; }

  template <typename Value>
  void Item(const char* key, const Value& value) {
    out_ << key << " = " << value << '\n';
  }

  void Item(const char* prefix, const Property& property) {
    out_ << prefix << property.name << " = \"" << property.text << "\"\n";
  }

  void Item(const char* prefix, const ::Value& value) {
    out_ << prefix << value.name << " = "
         << WordOf(kValueTypes, static_cast<std::uint32_t>(value.type));
    Operands(value.operands);
  }

  void Item(const Repeater& repeater) {
    out_ << repeater.name << " = " << repeater.count << ", "
         << machine_.actions[repeater.action].name;
    Operands(repeater.arguments);
  }

  void Properties(const std::vector<Property>& properties) {
    for (const Property& property : properties) Item("P_", property);
  }

  void Values(const std::vector<::Value>& values) {
    for (const ::Value& value : values) Item(value.name.empty() ? "VALUE" : "VALUE_", value);
  }

  void Operands(const std::vector<Operand>& operands) {
    for (const Operand& operand : operands) {
      out_ << ", ";
      Write(operand);
    }
    out_ << '\n';
  }

  void Write(Operand operand) {
    switch (operand.kind) {
      case Operand::kNumber:
        out_ << Hex{operand.number};
        break;
      case Operand::kBus:
        out_ << WordOf(kBusTypes, operand.number);
        break;
      case Operand::kOperator:
        out_ << WordOf(kOperators, operand.number);
        break;
      case Operand::kArgument:
        out_ << "ARG" << operand.number;
        break;
      case Operand::kStep:
        out_ << "VALUE_" << operand.number;
        break;
      case Operand::kGlobal:
        out_ << "G_" << machine_.globals[operand.number].name;
        break;
      case Operand::kAction:
        out_ << machine_.actions[operand.number].name;
        break;
      case Operand::kTable:
        out_ << machine_.tables[operand.number].name;
        break;
    }
  }

  const Machine& machine_;
  std::ostream& out_;
};

}  // namespace

void WriteScript(const Machine& machine, std::ostream& out) { ScriptWriter(machine, out).Write(); }
