#include <algorithm>

#include "bench/model/writers.h"

namespace {

// Names of nodes and properties are written small, with dashes.
std::string Dashed(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(), [](char c) {
    if (c == '_') return '-';
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return name;
}

class DeviceTreeWriter {
 public:
  DeviceTreeWriter(const Machine& machine, std::ostream& out)
      : machine_(machine),
        out_(out),
        groups_of_(machine.groups.size()),
        sensors_of_(machine.groups.size()) {
    for (std::size_t i = 0; i < machine.groups.size(); ++i) {
      if (machine.groups[i].parent != kRoot) groups_of_[machine.groups[i].parent].push_back(i);
    }
    for (std::size_t i = 0; i < machine.sensors.size(); ++i) {
      sensors_of_[machine.sensors[i].group].push_back(i);
    }
  }

  void Write() {
    out_ << "/dts-v1/;\n\n/ {\n";
    Text("model", machine_.model);
    Cell("type", 2);
    Cell("flag", 0);
    Cell("loop-ms", 1000);
    List("actions", machine_.actions);
    List("tables", machine_.tables);
    List("globals", machine_.globals);
    Open("", "properties");
    for (const Property& property : machine_.properties) Text(Dashed(property.name), property.text);
    Close();
    for (std::size_t i = 0; i < machine_.groups.size(); ++i) {
      if (machine_.groups[i].parent == kRoot) Group(i);
    }
    List("devices", machine_.devices);
    List("repeaters", machine_.repeaters);
    EventList();
    out_ << "};\n";
  }

 private:
  // A group holds its groups and its sensors.
  void Group(std::size_t index) {
    const ::Group& group = machine_.groups[index];
    Open("", group.name);
    Text("label", group.name);
    Cell("child-groups", group.children);
    for (const std::size_t sensor : sensors_of_[index]) Node(machine_.sensors[sensor]);
    for (const std::size_t child : groups_of_[index]) Group(child);
    Close();
  }

  void Node(const Sensor& sensor) {
    Open("", sensor.name);
    Text("label", sensor.name);
    Cell("id", sensor.id);
    Cell("type", sensor.type);
    Cell("init-flag", sensor.init_flag);
    Cell("control-mask", sensor.control_mask);
    for (const Threshold& threshold : sensor.thresholds) {
      Cell("threshold-" + Dashed(threshold.name), threshold.limit);
    }
    Properties(sensor.properties);
    Values(sensor.values);
    Close();
  }

  void Node(std::size_t, const Device& device) {
    Open("", device.name);
    Text("label", device.name);
    Cell("id", device.id);
    Cell("init-flag", device.init_flag);
    Cell("control-mask", device.control_mask);
    Properties(device.properties);
    Values(device.values);
    Close();
  }

  void Node(std::size_t index, const Action& action) {
    Open("a" + std::to_string(index), action.name);
    Text("label", action.name);
    Cell("arguments", action.arguments);
    Values(action.steps);
    Close();
  }

  void Node(std::size_t index, const Table& table) {
    Open("t" + std::to_string(index), table.name);
    Text("label", table.name);
    Cell("type", table.type);
    out_ << "rows =";
    const char* separator = " ";
    for (const Table::Row& row : table.rows) {
      out_ << separator << '<' << row.first << ' ' << row.last << ' ' << row.cell << '>';
      separator = ", ";
    }
    out_ << ";\n";
    Close();
  }

  void Node(std::size_t index, const Value& global) {
    Open("g" + std::to_string(index), global.name);
    Text("label", global.name);
    Cells("value", global);
    Close();
  }

  void Node(std::size_t, const Repeater& repeater) {
    Open("", repeater.name);
    Text("label", repeater.name);
    Cell("count", repeater.count);
    out_ << "action = <&a" << repeater.action;
    Operands(repeater.arguments);
    Close();
  }

  void EventList() {
    Open("", "events");
    Text("label", "MACHINE");
    Cell("id", 1);
    Cell("parent-id", 0);
    out_ << "sensors = <";
    std::size_t count = 0;
    for (const Sensor& sensor : machine_.sensors) {
      if (count) out_ << (count % 12 ? " " : "\n           ");
      out_ << sensor.id;
      ++count;
    }
    out_ << ">;\n";
    Close();
  }

  template <typename Element>
  void List(const char* name, const std::vector<Element>& elements) {
    Open("", name);
    for (std::size_t i = 0; i < elements.size(); ++i) Node(i, elements[i]);
    Close();
  }

  void Open(const std::string& label, const std::string& name) {
    out_ << '\n' << label << (label.empty() ? "" : ": ") << Dashed(name) << " {\n";
  }
  void Close() { out_ << "};\n"; }

  void Text(const std::string& name, const std::string& text) {
    out_ << name << " = \"" << text << "\";\n";
  }
  void Cell(const std::string& name, std::uint32_t number) {
    out_ << name << " = <" << number << ">;\n";
  }

  void Properties(const std::vector<Property>& properties) {
    for (const Property& property : properties) Text("p-" + Dashed(property.name), property.text);
  }

  void Values(const std::vector<Value>& values) {
    for (const Value& value : values) {
      Cells(value.name.empty() ? "value" : "value-" + Dashed(value.name), value);
    }
  }

  void Cells(const std::string& name, const Value& value) {
    out_ << name << " = <" << static_cast<std::uint32_t>(value.type);
    Operands(value.operands);
  }

  // A cell each; arguments and steps are told from numbers by bits that no number here has.
  void Operands(const std::vector<Operand>& operands) {
    for (const Operand& operand : operands) {
      out_ << ' ';
      switch (operand.kind) {
        case Operand::kGlobal:
          out_ << "&g";
          break;
        case Operand::kAction:
          out_ << "&a";
          break;
        case Operand::kTable:
          out_ << "&t";
          break;
        case Operand::kArgument:
          out_ << 0x1D000000 + operand.number;
          continue;
        case Operand::kStep:
          out_ << 0x1E000000 + operand.number;
          continue;
        default:
          break;
      }
      out_ << operand.number;
    }
    out_ << ">;\n";
  }

  const Machine& machine_;
  std::ostream& out_;
  std::vector<std::vector<std::size_t>> groups_of_;
  std::vector<std::vector<std::size_t>> sensors_of_;
};

}  // namespace

void WriteDeviceTree(const Machine& machine, std::ostream& out) {
  DeviceTreeWriter(machine, out).Write();
}

void WriteNames(const Machine& machine, std::ostream& out) {
  std::vector<std::string> paths;
  for (const Group& group : machine.groups) {
    paths.push_back((group.parent == kRoot ? "" : paths[group.parent]) + '/' + Dashed(group.name));
  }
  for (const Sensor& sensor : machine.sensors) {
    out << sensor.id << ' ' << sensor.name << ' ' << paths[sensor.group] << '/'
        << Dashed(sensor.name) << '\n';
  }
}
