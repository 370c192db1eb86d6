#include "bench/model/device_tree.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "bench/model/machine.h"
#include "bench/model/source_file.h"
#include "bench/model/writers.h"

namespace {

class DeviceTreeWriter {
 public:
  DeviceTreeWriter(const Machine& machine, const std::string& path)
      : machine_(machine),
        path_(path),
        out_(CreateFile(path)),
        labels_(LabelsOf(machine)),
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
    for (const std::string& comment : machine_.comments) Comment(comment);
    out_ << "/dts-v1/;\n\n/ {\n";
    Text("model", machine_.model);
    Cell("type", 2);
    Cell("flag", 0);
    Cell("loop-ms", 1000);
    Properties(machine_.system_properties);
    List("actions", machine_.actions);
    Tables();
    List("globals", machine_.globals);
    Open("", "properties");
    for (const Property& property : machine_.properties) Text(Dashed(property.name), property.text);
    Close();
    for (std::size_t i = 0; i < machine_.groups.size(); ++i) {
      if (machine_.groups[i].parent == kRoot) Group(i);
    }
    List("devices", machine_.devices);
    List("repeaters", machine_.repeaters);
    List("events", machine_.events);
    out_ << "};\n";
    out_.flush();
  }

 private:
  // In a file of their own where the style says so.
  void Tables() {
    if (machine_.style != Style::kAsReal) return List("tables", machine_.tables);
    if (machine_.tables.empty()) return;
    out_ << "/include/ \"tables.dtsi\"\n";
    std::ofstream part = CreateFile(Beside(path_, "tables.dtsi"));
    std::swap(part, out_);
    List("tables", machine_.tables);
    out_.flush();
    std::swap(part, out_);
  }

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
    if (!sensor.comment.empty()) Comment(sensor.comment);
    Open("", sensor.name);
    Text("label", sensor.name);
    Cell("id", sensor.id);
    Cell("type", sensor.type);
    Cell("init-flag", sensor.init_flag);
    Cell("control-mask", sensor.control_mask);
    for (const Threshold& threshold : sensor.thresholds) {
      out_ << "threshold-" << Dashed(threshold.name) << " = <";
      threshold.limit < 0 ? out_ << '(' << threshold.limit << ')' : out_ << threshold.limit;
      out_ << ">;";
      threshold.comment.empty() ? out_ << '\n' : out_ << " // " << threshold.comment << '\n';
    }
    Properties(sensor.properties);
    Values(sensor.values);
    Close();
  }

  void Node(std::uint32_t, const Device& device) {
    Open("", device.name);
    Text("label", device.name);
    Cell("id", device.id);
    Cell("init-flag", device.init_flag);
    Cell("control-mask", device.control_mask);
    Properties(device.properties);
    Values(device.values);
    Close();
  }

  void Node(std::uint32_t index, const Action& action) {
    Open(LabelOf({Operand::kAction, index}), action.name);
    Text("label", action.name);
    Cell("arguments", action.arguments);
    Values(action.steps);
    Close();
  }

  void Node(std::uint32_t index, const Table& table) {
    Open(LabelOf({Operand::kTable, index}), table.name);
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

  void Node(std::uint32_t index, const Value& global) {
    Open(LabelOf({Operand::kGlobal, index}), global.name);
    Text("label", global.name);
    Cells("value", global);
    Close();
  }

  void Node(std::uint32_t, const Repeater& repeater) {
    Open("", repeater.name);
    Text("label", repeater.name);
    Cell("count", repeater.count);
    out_ << "action = <&" << LabelOf({Operand::kAction, repeater.action});
    Operands(repeater.arguments);
    Close();
  }

  void Node(std::uint32_t index, const EventList& events) {
    Open("", events.name);
    Text("label", events.name);
    Cell("id", index + 1);
    Cell("parent-id", events.parent);
    out_ << "sensors = <";
    std::size_t count = 0;
    for (const std::uint32_t sensor : events.sensors) {
      if (count) out_ << (count % 12 ? " " : "\n           ");
      out_ << machine_.sensors[sensor].id;
      ++count;
    }
    out_ << ">;\n";
    Close();
  }

  template <typename Element>
  void List(const char* name, const std::vector<Element>& elements) {
    Open("", name);
    for (std::uint32_t i = 0; i < elements.size(); ++i) Node(i, elements[i]);
    Close();
  }

  void Open(const std::string& label, const std::string& name) {
    out_ << '\n';
    if (!label.empty() && labels_.count(label)) out_ << label << ": ";
    out_ << Dashed(name) << " {\n";
  }
  void Close() { out_ << "};\n"; }

  void Comment(const std::string& text) { out_ << "// " << text << '\n'; }

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

  // A cell each; bits that no number here has distinguish arguments and steps from numbers.
  void Operands(const std::vector<Operand>& operands) {
    for (const Operand& operand : operands) {
      out_ << ' ';
      switch (operand.kind) {
        case Operand::kGlobal:
        case Operand::kAction:
        case Operand::kTable:
          out_ << '&' << LabelOf(operand);
          break;
        case Operand::kArgument:
          out_ << 0x1D000000 + operand.number;
          break;
        case Operand::kStep:
          out_ << 0x1E000000 + operand.number;
          break;
        default:
          out_ << operand.number;
      }
    }
    out_ << ">;\n";
  }

  const Machine& machine_;
  const std::string path_;
  std::ofstream out_;
  const std::set<std::string> labels_;
  std::vector<std::vector<std::size_t>> groups_of_;
  std::vector<std::vector<std::size_t>> sensors_of_;
};

}  // namespace

void WriteDeviceTree(const Machine& machine, const std::string& path) {
  DeviceTreeWriter(machine, path).Write();
}
