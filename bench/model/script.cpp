#include <cstddef>
#include <cstdint>
#include <fstream>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "bench/model/machine.h"
#include "bench/model/script_words.h"
#include "bench/model/source_file.h"
#include "bench/model/writers.h"

namespace {

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
  ScriptWriter(const Machine& machine, const std::string& path)
      : machine_(machine),
        path_(path),
        out_(CreateFile(path)),
        real_(machine.style == Style::kAsReal) {}

  void Write() {
    for (const std::string& comment : machine_.comments) out_ << "# " << comment << '\n';
    Open("MORVRUX");
    Item("VERSION", "1.0");
    Part("words.rux", &ScriptWriter::Words);
    System();
    for (const Group& group : machine_.groups) Section(group);
    for (const Action& action : machine_.actions) Section(action);
    if (!machine_.tables.empty()) Part("tables.rux", &ScriptWriter::Tables);
    Entries("GLOBAL", "G_", machine_.globals);
    Entries("PROPERTY", "", machine_.properties);
    for (const Sensor& sensor : machine_.sensors) Section(sensor);
    for (const Device& device : machine_.devices) Section(device);
    Entries("REPEATER", "", machine_.repeaters);
    for (std::uint32_t i = 0; i < machine_.events.size(); ++i) Section(i + 1, machine_.events[i]);
    out_.flush();
  }

 private:
  // A part of the script, in a file of its own where the style says so.
  void Part(const char* name, void (ScriptWriter::*write)()) {
    if (!real_) return (this->*write)();
    Open("INCLUDE");
    Item("FILE", name);
    std::ofstream part = CreateFile(Beside(path_, name));
    std::swap(part, out_);
    (this->*write)();
    out_.flush();
    std::swap(part, out_);
  }

  void Words() {
    Define("value types", kValueTypes);
    Define("bus types", kBusTypes);
    if (!real_) return;
    Define("sensor types", kSensorTypes);
    Define("power states in which a sensor is read", kInitFlags);
    Define("limits that are watched", kWatchedLimits);
    Define("kinds of machine", kMachineTypes);
    Open("IFDEF");
    Item("DEFINEWORD", kBusTypes[0].word);
    Item("HAVE_IOPORT", 1);
  }

  template <std::size_t size>
  void Define(const char* what, const Word (&words)[size]) {
    if (real_) out_ << "\n; " << what;
    Open("DEFINE");
    for (const Word& word : words) Item(word.word, word.number);
  }

  void System() {
    Open("SYSTEM");
    Code("TYPE", kMachineTypes, 2u);
    Item("MODEL", machine_.model);
    Item("FLAG", 0);
    Item("RUXLOOP", 1000);
    Properties(machine_.system_properties);
  }

  void Tables() {
    for (const Table& table : machine_.tables) Section(table);
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
    if (!sensor.comment.empty()) out_ << "\n# " << sensor.comment;
    Open("SENSOR");
    Item("NAME", sensor.name);
    Item("ID", Hex{sensor.id});
    Item("PARENT", machine_.groups[sensor.group].name);
    Code("TYPE", kSensorTypes, Hex{sensor.type});
    Properties(sensor.properties);
    Code("INITFLAG", kInitFlags, sensor.init_flag);
    Item("CONTROLMASK", Hex{sensor.control_mask});
    for (const Threshold& threshold : sensor.thresholds) {
      out_ << "THRESHOLD_" << threshold.name << " = " << threshold.limit;
      if (!threshold.comment.empty()) out_ << "    # " << threshold.comment;
      out_ << '\n';
    }
    Values(sensor.values);
  }

  void Section(const Device& device) {
    Open("DEVICE");
    Item("NAME", device.name);
    Item("ID", Hex{device.id});
    Code("INITFLAG", kInitFlags, device.init_flag);
    Item("CONTROLMASK", Hex{device.control_mask});
    Properties(device.properties);
    Values(device.values);
  }

  void Section(std::uint32_t id, const EventList& events) {
    Open("PELMGROUP");
    Item("NAME", events.name);
    Item("ID", id);
    Item("PID", events.parent);
    out_ << "SENSORS = ";
    std::size_t count = 0;
    for (const std::uint32_t sensor : events.sensors) {
      if (count) out_ << (count % 12 ? ", " : ", \\\n          ");
      out_ << Hex{machine_.sensors[sensor].id};
      ++count;
    }
    out_ << '\n';
  }

  template <typename Entry>
  void Entries(const char* section, const char* prefix, const std::vector<Entry>& entries) {
    if (entries.empty()) return;
    Open(section);
    for (const Entry& entry : entries) Item(prefix, entry);
  }

  void Open(const char* section) { out_ << "\n[" << section << "]\n"; }

  template <typename Value>
  void Item(const char* key, const Value& value) {
    out_ << key << " = " << value << '\n';
  }

  // A code, by its word where the style says so.
  template <std::size_t size, typename Number>
  void Code(const char* key, const Word (&words)[size], Number number) {
    real_ ? Item(key, WordOf(words, NumberOf(number))) : Item(key, number);
  }
  static std::uint32_t NumberOf(std::uint32_t number) { return number; }
  static std::uint32_t NumberOf(Hex hex) { return hex.number; }

  void Item(const char* prefix, const Property& property) {
    const bool bare = real_ && property.text.find_first_of(",#;") == std::string::npos;
    const char* quote = bare ? "" : "\"";
    out_ << prefix << property.name << " = " << quote << property.text << quote << '\n';
  }

  void Item(const char* prefix, const ::Value& value) {
    out_ << prefix << value.name << " = "
         << WordOf(kValueTypes, static_cast<std::uint32_t>(value.type));
    Operands(value.operands);
  }

  void Item(const char* prefix, const Repeater& repeater) {
    out_ << prefix << repeater.name << " = " << repeater.count << ", "
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
  const std::string path_;
  std::ofstream out_;
  const bool real_;
};

}  // namespace

void WriteScript(const Machine& machine, const std::string& path) {
  ScriptWriter(machine, path).Write();
}
